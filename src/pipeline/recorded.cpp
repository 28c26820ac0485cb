#include "pipeline/recorded.h"

#include <QDir>
#include <fstream>

#include "core/globals.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace recorded {

bool makeworkplace(const std::string& root)
{
    if (!QDir(QString::fromStdString(root)).mkpath("drive_c/tarnbc")) return false;
    std::ofstream ini(root + "/platform.ini", std::ios::binary);
    ini << "[drives]\r\nC=" << root << "/drive_c\r\n";
    ini.close();
    platform::initplatform(root);
    g().homedir = platform::installfolder;
    if (!files::isfolder(g().homedir + "LOGS")) files::makefolder(g().homedir + "LOGS");
    return true;
}

long loadopl(const std::string& bytes)
{
    const std::string raw = formats::rawfile(g().scannerid);
    files::writeall(raw, bytes);
    long count = 0;
    files::TextReader in(raw);
    while (!in.eof()) {
        in.lineinput();
        ++count;
    }
    return count;
}

long loadcsp(const std::string& bytes)
{
    long count = 0;
    size_t pos = 0;
    while (pos < bytes.size()) {
        const size_t n = (unsigned char)bytes[pos] + 1;
        const std::string record = bytes.substr(pos, n);
        pos += n;
        ++count;
        if (count <= g().scanlines.ubound()) g().scanlines[count] = record;
    }
    return count;
}

}  // namespace recorded
