#include "pipeline/readowner.h"

#include "core/globals.h"
#include "platform/files.h"
#include "runtime/vb.h"
#include "settings/englines.h"

std::string scannerowner(const std::string& scannerid)
{
    const std::string file = engfile();
    if (UCase(files::Dir(file)) != "ENGLST.TXT") return "Unknown";
    const long long id = engnumber(scannerid);
    files::TextReader in(file);
    while (!in.eof()) {
        const std::string line = in.lineinput();
        doenglinetest(line);
        if (g().englinestatus != 0) continue;
        const long comma = InStr(line, ",");
        const std::string rest = Mid(line, comma + 1);
        if (engnumber(Left(line, comma - 1)) != id) continue;
        // The name is what follows the last comma, so a name with a comma of its own keeps
        // only its last part.
        const std::string name = RTrim(rest.substr(rest.rfind(',') + 1));
        return Len(name) > 1 ? namecase(name) : "";
    }
    return "Unknown";
}
