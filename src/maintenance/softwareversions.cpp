#include "maintenance/softwareversions.h"

#include "runtime/vb.h"

namespace {

// The text from two characters past the end of the first "version", less a leading blank
// or ": ". With no "version" the count starts from nothing, as InStr's 0 does.
std::string afterversion(const std::string& text)
{
    std::string rest = Mid(text, InStr(text, "version") + Len("version") + 1);
    if (Left(rest, 1) == " ") rest = Mid(rest, 2);
    else if (Left(rest, 2) == ": ") rest = Mid(rest, 3);
    return rest;
}

}  // namespace

void scannerversions(const std::string& statustext, std::string& os, std::string& app)
{
    std::string rest = afterversion(statustext);
    os = Left(rest, InStr(rest, " ") - 1);
    rest = Mid(rest, Len(os) + 1);
    app = afterversion(rest);
}
