#include "platform/web.h"

#include <curl/curl.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/files.h"
#include "platform/paths.h"
#include "runtime/fault.h"

// The web thread is the interface thread: a fetch holds the screens while it runs. So a
// host that does not take the connection, or stops sending, gives up after [web] timeout
// seconds (10 by default); a fetch that keeps receiving runs to its end.
//
// A fetch is all or nothing: the body is collected in memory and written to the file only
// after the server has sent all of it with a success status, so a failed fetch or write
// leaves the old file in place. Results besides 0: the HTTP status (404 ...) when the server refused,
// the transfer's error number (7 for a refused connection) when it never answered, E_FAIL
// when the file could not be written (the file layer's fault goes to the error output).

namespace {

constexpr long E_FAIL = (long)(int32_t)0x80004005u;

size_t collect(char* data, size_t size, size_t count, void* into)
{
    static_cast<std::string*>(into)->append(data, size * count);
    return size * count;
}

bool curlready()
{
    static bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

// The body goes to a temporary file beside the target first, which then takes the target's
// place: a write that fails (a full disk) leaves the old file whole.
bool writefile(const std::string& winpath, const std::string& bytes)
{
    std::string partial = winpath + ".download";
    try {
        files::writeall(partial, bytes);
        if (files::exists(winpath)) files::removefile(winpath);
        files::renamefile(partial, winpath);
        return true;
    } catch (const std::exception& e) {
        Fault f = Fault::from(e);
        std::fprintf(stderr, "web: cannot write %s: %d %s\n", winpath.c_str(), f.number, f.description.c_str());
        try {
            if (files::exists(partial)) files::removefile(partial);
        } catch (const std::exception&) {
        }
        return false;
    }
}

// The host's base address joined to a path, blanks escaped.
std::string address(const char* key, const std::string& path)
{
    std::string base = platform::setting("web", key);
    if (base.empty()) return "";
    while (!base.empty() && base.back() == '/') base.pop_back();
    std::string out = base;
    if (!path.empty() && path[0] != '/') out += '/';
    for (char c : path) {
        if (c == ' ') out += "%20";
        else out += c;
    }
    return out;
}

}  // namespace

long URLDownloadToFileA(void*, const std::string& url, const std::string& file, long, void*)
{
    if (url.empty()) return CURLE_URL_MALFORMAT;  // a host that is not set: no fetch, no message
    if (!curlready()) return CURLE_FAILED_INIT;
    CURL* curl = curl_easy_init();
    if (!curl) return CURLE_FAILED_INIT;
    std::string body;
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, 10L);
    const long limit = web::timeout();
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, limit);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, limit);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, collect);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    CURLcode code = curl_easy_perform(curl);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_cleanup(curl);
    if (code != CURLE_OK) return code;
    if (status >= 400) return status;
    return writefile(file, body) ? 0 : E_FAIL;
}

namespace web {
long timeout()
{
    const std::string text = platform::setting("web", "timeout");
    char* end = nullptr;
    const long seconds = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || seconds < 1) return defaulttimeout;
    return std::min(seconds, 3600L);
}
std::string updateaddress(const std::string& path) { return address("update", path); }
std::string supportaddress(const std::string& path) { return address("support", path); }
}  // namespace web
