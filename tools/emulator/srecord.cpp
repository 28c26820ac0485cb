#include "srecord.h"

namespace {

int hexdigit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// One record "Stcc<address><data>ss": its bytes after the type, or false.
bool recordbytes(const std::string& line, std::vector<uint8_t>& bytes)
{
    if (line.size() < 4 || line[0] != 'S' || line[1] < '0' || line[1] > '9' || line.size() % 2) return false;
    bytes.clear();
    for (size_t i = 2; i < line.size(); i += 2) {
        int h = hexdigit(line[i]), l = hexdigit(line[i + 1]);
        if (h < 0 || l < 0) return false;
        bytes.push_back((uint8_t)(h * 16 + l));
    }
    if (bytes[0] + 1u != bytes.size()) return false;
    unsigned sum = 0;
    for (size_t i = 0; i + 1 < bytes.size(); ++i) sum += bytes[i];
    return (uint8_t)~sum == bytes.back();
}

}  // namespace

Image checkimage(const std::vector<uint8_t>& data)
{
    Image img;
    std::string text(data.begin(), data.end());
    size_t at = 0;
    int records = 0;
    while (at < text.size()) {
        size_t end = text.find_first_of("\r\n", at);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(at, end - at);
        at = end + 1;
        if (line.empty()) continue;
        std::vector<uint8_t> bytes;
        if (!recordbytes(line, bytes)) return img;
        ++records;
        if (line[1] == '0' && bytes.size() >= 4) img.header.assign(bytes.begin() + 3, bytes.end() - 1);
    }
    if (!records) return img;
    img.sound = true;
    auto blank = img.header.find(' ');
    img.os = img.header.rfind("OS ", 0) == 0;
    img.version = blank == std::string::npos ? img.header : img.header.substr(blank + 1);
    return img;
}
