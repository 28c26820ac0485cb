#include "pipeline/formats.h"

#include "core/globals.h"
#include "core/logs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/profile.h"
#include "runtime/vb.h"

namespace formats {

std::string storefolder(const std::string& serverip) { return "\\\\" + serverip + "\\tagstore\\"; }

Place saveplace(int savetype, int storedown)
{
    if (savetype == 0 || savetype == 2) return Place::local;
    if (savetype == 1 && storedown == 1) return Place::local;
    return Place::store;
}

Place saveplace() { return saveplace(g().savetype, g().storedown); }

std::string folder(Place place) { return place == Place::local ? localfolder : storefolder(g().serverip); }

namespace {

// BARCODE, BAR001 ... with the extension of the place, in that place's folder.
std::string named(Place place, const std::string& stem)
{
    return folder(place) + stem + (place == Place::local ? ".INI" : "." + g().terminalno);
}

}  // namespace

std::string masterfile(Place place) { return named(place, "BARCODE"); }
std::string barfile(Place place, long n) { return named(place, "BAR" + Format(n, "000")); }
std::string tmpfile(Place place, long n) { return named(place, "TMP" + Format(n, "000")); }
std::string probefile(Place place) { return named(place, "BARTEST"); }
std::string lockfile() { return named(Place::store, "BARLCK"); }
std::string namedfile(Place place, const std::string& stem) { return named(place, stem); }

std::string probesource()
{
    std::string home = g().homedir.empty() ? std::string(platform::installfolder) : g().homedir;
    return home + "BAR999.INI";
}

std::string idnumber(const std::string& scannerid)
{
    // Format of a text that is not a number leaves the text as it stands.
    std::string last = Right(scannerid, 3);
    if (!IsNumeric(last)) return last;
    return Format((long long)CDbl(last), "000");
}

std::string rawfile(const std::string& scannerid) { return std::string(localfolder) + "temp_" + idnumber(scannerid) + ".txt"; }

std::string backupfile(const std::string& scannerid, const QDateTime& when)
{
    return std::string(localfolder) + "backups\\temp_" + idnumber(scannerid) + "_" + Format(when, "YYMMDD") + "_" +
           Format(when, "HHMM") + ".txt";
}

std::string safetycopyfile(const std::string& scannerid, const QDateTime& when)
{
    return std::string(localfolder) + "backups\\csp_" + idnumber(scannerid) + "_" + Format(when, "YYMMDD") + "_" +
           Format(when, "HHMMSS") + ".dat";
}

std::string packetrecord(const std::string& packet)
{
    if (packet.empty()) return {};
    return packet.substr(0, (size_t)(unsigned char)packet[0] + 1);
}

std::string exportfile(const std::string& scannerid, const QDateTime& when)
{
    const QDate d = when.date();
    const QTime t = when.time();
    return std::string(localfolder) + "exports\\export_" + idnumber(scannerid) + "_" + CStr((long long)d.year()) +
           CStr((long long)d.month()) + CStr((long long)d.day()) + CStr((long long)t.hour()) +
           CStr((long long)t.minute()) + CStr((long long)t.second()) + ".txt";
}

void writerawfile(const std::string& scannerid, const FixedArray<std::string, 0, 1000>& lines, long count)
{
    files::TextWriter out(rawfile(scannerid), files::TextWriter::output);
    for (long i = 1; i <= count; ++i) out.print(lines[i]);
    out.close();
}

std::string canonicalline(const std::string& type, const std::string& field, const std::string& year,
                          const std::string& month, const std::string& day, const std::string& time,
                          const std::string& tail)
{
    return type + field + "20" + year + month + day + time + tail;
}

std::string sectionname(const std::string& scannerid) { return "000000" + scannerid; }
std::string sectionline(const std::string& scannerid) { return "[" + sectionname(scannerid) + "]"; }

std::string barheader(long lines, const QDate& saved)
{
    return Format(lines, "000") + Format(QDateTime(saved, QTime(0, 0)), "YYYYMMDD");
}

std::string linekey(long n) { return Format(n, "000"); }

bool faultyid(const std::string& line) { return Len(line) != 11; }

std::string sectionfromline(const std::string& line)
{
    if (!faultyid(line)) return Mid(line, 2, 9);
    long n = Len(line) - 2;
    if (n < 0) raisefault(fault::invalidcall);   // the classic Mid refuses a negative length
    return Mid(line, 2, n);
}

std::string scannerfromline(const std::string& line)
{
    long close = InStr(line, "]");
    if (close == 0) return Mid(line, 8);
    long n = close - 8;
    if (n < 0) raisefault(fault::invalidcall);
    return Mid(line, 8, n);
}

std::string readvalue(const std::string& file, const std::string& section, const std::string& key)
{
    std::string buffer(readbuffer, '\0');
    GetPrivateProfileStringA(section, key, file, buffer, readbuffer, file);
    return buffer;
}

long sectionlines(const std::string& file, const std::string& section)
{
    std::string value = readvalue(file, section, "000");
    std::string first = Left(value, 1);
    if (first < "0" || first > "9") return -1;
    return CInt(Left(value, 3));
}

std::string readheader(const std::string& file, const std::string& section) { return readvalue(file, section, "000"); }

long masterfilecount(const std::string& file) { return CInt(Left(readvalue(file, "FILES", "FILES"), 3)); }

void writemastercount(const std::string& file, long count) { writevalue(file, "FILES", "FILES", Format(count, "000")); }

void writevalue(const std::string& file, const std::string& section, const std::string& key, const std::string& value)
{
    if (WritePrivateProfileStringA(section, key, value, file) != 0) return;
    switch (files::GetLastError()) {
    case 112: raisefault(fault::diskfull);
    case 5: raisefault(fault::permissiondenied);
    case 3:
    case 53: raisefault(fault::pathnotfound);
    default: raisefault(fault::pathfileaccess);
    }
}

std::vector<std::string> datalogblock(const std::string& scannerid, const QDateTime& when, const std::string& header,
                                      long firstkey, const std::vector<std::string>& lines)
{
    std::string id = IsNumeric(scannerid) ? Format((long long)CDbl(scannerid), "000000") : scannerid;
    std::vector<std::string> block;
    block.push_back("ENTRY: Scanner " + id + " " + Format(when, "HHMM") + " " + Format(when, "YYYYMMDD"));
    block.push_back(sectionline(scannerid));
    block.push_back("000=" + header);
    long key = firstkey;
    for (const auto& line : lines) block.push_back(linekey(key++) + "=" + line);
    block.push_back("END");
    return block;
}

void writedatalogblock(const std::vector<std::string>& block)
{
    for (const auto& line : block) addtodatfile(line);
}

}  // namespace formats
