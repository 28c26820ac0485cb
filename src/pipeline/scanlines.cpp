#include "pipeline/scanlines.h"

#include "pipeline/formats.h"
#include "pipeline/linetexts.h"
#include "pipeline/stamps.h"
#include "runtime/vb.h"

namespace {

void deleteat(std::string& line, long pos, long n) { line.erase(pos - 1, n); }

// The parts of an OPL line, by its kind.
struct OplParts {
    std::string type, field, tail, day, month, year, time;
};

OplParts partsof(const std::string& line, int kind)
{
    OplParts p;
    if (kind == 1) {
        p = {Mid(line, 2, 2), Mid(line, 4, 8), Mid(line, 12, 3), Mid(line, 16, 2), Mid(line, 18, 2), Mid(line, 20, 2),
             Mid(line, 23, 4)};
    } else if (kind == 2) {
        p = {"01", "0" + Mid(line, 7, 1) + Mid(line, 7, 6), "0" + Mid(line, 3, 2), Mid(line, 15, 2), Mid(line, 17, 2),
             Mid(line, 19, 2), Mid(line, 22, 4)};
    } else {
        p = {Mid(line, 3, 2), Mid(line, 5, 8), "", Mid(line, 15, 2), Mid(line, 17, 2), Mid(line, 19, 2), Mid(line, 22, 4)};
    }
    return p;
}

}  // namespace

bool correctline(std::string& line)
{
    long at = InStr(line, std::string(1, '\xff'));
    if (at == 0) return false;
    deleteat(line, at, 1);
    if (Mid(line, 17, 1) == "/") deleteat(line, 17, 1);
    if (Mid(line, 19, 1) == "/") deleteat(line, 19, 1);
    if (Mid(line, 19, 2) == "20") deleteat(line, 19, 2);
    if (Mid(line, 24, 1) == ":") deleteat(line, 24, 1);
    return true;
}

int linekindof(const std::string& line)
{
    if (Mid(line, 1, 1) == "1") return 1;
    if (Mid(line, 2, 1) == "1") return 2;
    return 0;
}

bool oplcharok(const std::string& line, int kind, long pos, char c)
{
    if (kind == 1) {
        if (isshortline(line) && (pos == 12 || pos == 19) && c == ',') return true;
        return (pos == 15 || pos == 22) && c == ',';
    }
    return (pos == 14 || pos == 21) && c == ',';
}

bool recordcharok(long pos) { return pos < 3 || pos > 14; }

bool isshortline(const std::string& line)
{
    std::string t = Mid(line, 2, 2);
    return t == "80" || t == "90";
}

bool badlength(const std::string& line, int kind)
{
    if (kind == 0) return Len(line) != 25;
    if (kind == 1) return Len(line) != (isshortline(line) ? 23 : 26);
    return false;
}

std::string makelong(const std::string& line) { return Left(line, 11) + "000" + Mid(line, 12); }

bool istestline(const std::string& line, int kind)
{
    if (kind == 0) return Mid(line, 5, 2) == "99";
    if (kind == 1) return Mid(line, 3, 2) == "99";
    return false;
}

std::string oplcanonical(const std::string& line, int kind)
{
    OplParts p = partsof(line, kind);
    return formats::canonicalline(p.type, p.field, p.year, p.month, p.day, p.time, p.tail);
}

std::string opltext(const std::string& line, int kind)
{
    OplParts p = partsof(line, kind);
    std::string text = scantext(p.type, p.field, kind == 1 ? &p.tail : nullptr, p.time, p.day, p.month, p.year);
    if (kind == 2) text += " FR - " + Mid(line, 3, 2);
    return text;
}

std::string oplreview(const std::string& line, int kind)
{
    if (kind != 1) return oplcanonical(line, kind);
    OplParts p = partsof(line, kind);
    return p.type + p.field + " " + p.tail + " " + "20" + p.year + p.month + p.day + p.time;
}

std::string recordbarcode(const std::string& record)
{
    long n = Asc(record) - 5;
    if (n < 0) raisefault(fault::invalidcall);   // the classic Mid refuses a negative length
    return Mid(record, 3, n);
}

bool shortfield(const std::string& barcode) { return Len(Mid(barcode, 4, 8)) != 8; }

void recorddatecode(const std::string& record, std::string& result)
{
    const long n = Asc(record);
    std::string bits;
    for (long pos = n - 2; pos <= n + 1; ++pos) {
        Int16 value = Asc(Mid(record, pos, 1));
        getbin(value, result);
        bits += result;
    }
    bintodate(bits, result);
}

std::string recordtype(const std::string& barcode)
{
    const std::string code = Left(barcode, 3);
    for (const char* known : {"001", "002", "003", "004", "005", "006"})
        if (code == known) return Right(code, 2);
    return "00";
}

bool istestrecord(const std::string& barcode) { return Mid(barcode, 4, 2) == "99"; }

std::string recordcanonical(const std::string& barcode, const std::string& datecode)
{
    // datecode: SSmmHHDDMMYY
    return formats::canonicalline(recordtype(barcode), Mid(barcode, 4, 8), Mid(datecode, 11, 2), Mid(datecode, 9, 2),
                                  Mid(datecode, 7, 2), Mid(datecode, 5, 2) + Mid(datecode, 3, 2));
}

std::string recordtext(const std::string& barcode, const std::string& datecode)
{
    return scantext(recordtype(barcode), Mid(barcode, 4, 8), nullptr, Mid(datecode, 5, 2) + Mid(datecode, 3, 2),
                    Mid(datecode, 7, 2), Mid(datecode, 9, 2), Mid(datecode, 11, 2));
}
