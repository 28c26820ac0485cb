#include "settings/englines.h"

#include <limits>

#include "core/controls.h"
#include "core/globals.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "runtime/vb.h"

namespace {

// The field before the first comma must be there and be digits only; `rest` becomes the
// text after that comma.
bool digitfield(const std::string& text, std::string& rest)
{
    const long comma = InStr(text, ",");
    if (comma <= 1) return false;
    for (long k = 1; k < comma; ++k) {
        const char c = text[k - 1];
        if (c < '0' || c > '9') return false;
    }
    rest = Mid(text, comma + 1);
    return true;
}

}  // namespace

void doenglinetest(const std::string& line)
{
    Globals& s = g();
    s.englinestatus = 0;
    if (Like(line, "Unit*") || Like(line, "VEXAL*")) {
        s.englinestatus = 2;
        return;
    }
    std::string rest, name;
    if (line.empty() || line[0] == ' ' || !digitfield(line, rest) || !digitfield(rest, name)) s.englinestatus = 1;
}

EngRecord engrecord(const std::string& line)
{
    EngRecord r;
    const long first = InStr(line, ",");
    const long second = InStr(first + 1, line, ",");
    r.field1 = Mid(line, 1, first - 1);
    r.field2 = Mid(line, first + 1, second - first - 1);
    r.name = Mid(line, second + 1);
    return r;
}

long long engnumber(const std::string& field)
{
    // An ID too long for the number type (19 digits or more) stands at its limit rather
    // than wrapping: such an ID matches nothing a scanner can hold.
    const double v = Val(field);
    if (!(v > -9.2e18)) return std::numeric_limits<long long>::min();
    if (!(v < 9.2e18)) return std::numeric_limits<long long>::max();
    return (long long)v;
}

std::string englistline(long long id, const std::string& name)
{
    const std::string number = Format(id, "000000");
    return number + "," + number + "," + name;
}

std::string englocalfile() { return std::string(formats::localfolder) + "ENGLST.TXT"; }
std::string englocalbackup() { return std::string(formats::localfolder) + "ENGLST.BAK"; }
std::string engserverfile() { return formats::storefolder(g().serverip) + "ENGLST.TXT"; }
std::string engfile() { return g().fittertype == 1 ? engserverfile() : englocalfile(); }

std::vector<std::string> readenglines(const std::string& file)
{
    std::vector<std::string> lines;
    try {
        if (files::Dir(file).empty()) return lines;
        files::TextReader in(file);
        while (!in.eof()) lines.push_back(in.lineinput());
    } catch (const Fault&) {
        // A list that cannot be read lists what was read of it.
    }
    return lines;
}

std::vector<std::string> englistrecords()
{
    std::vector<std::string> records;
    files::TextReader in(englocalfile());
    while (!in.eof()) {
        std::string line = in.lineinput();
        doenglinetest(line);
        if (g().englinestatus == 0) records.push_back(std::move(line));
    }
    return records;
}

void rewriteenglist(const std::vector<std::string>& records)
{
    {
        files::TextWriter out(englocalbackup(), files::TextWriter::output);
        for (const std::string& line : records) out.print(line);
        out.close();
    }
    files::removefile(englocalfile());
    files::copyfile(englocalbackup(), englocalfile());
}

std::string engineerowner(const std::string& scannerid)
{
    try {
        const long long id = engnumber(scannerid);
        files::TextReader in(engfile());
        while (!in.eof()) {
            const std::string line = in.lineinput();
            doenglinetest(line);
            if (g().englinestatus != 0) continue;
            const EngRecord r = engrecord(line);
            if (engnumber(r.field1) == id) return RTrim(r.name);
        }
    } catch (const Fault&) {
        // No file, or none that can be read: nobody is known.
    }
    return "Unknown";
}

std::string namecase(const std::string& name)
{
    if (Len(name) <= 1) return name;
    std::string out = LCase(name);
    for (size_t k = 0; k < out.size(); ++k)
        if (k == 0 || out[k - 1] == ' ') out[k] = UCase(std::string(1, out[k]))[0];
    if (out[0] == ' ') out.erase(0, 1);
    return out;
}

void fillenglist(ListBox& list, const std::function<std::string(const EngRecord&, const std::string&)>& row)
{
    list.clear();
    for (const std::string& line : readenglines(engfile())) {
        doenglinetest(line);
        if (g().englinestatus == 2) continue;
        if (g().englinestatus == 1) {
            list.additem("Invalid Entry");
            continue;
        }
        const EngRecord r = engrecord(line);
        list.additem(row(r, Format(engnumber(r.field1), "000000")));
    }
}
