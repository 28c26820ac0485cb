#include "pipeline/linetexts.h"

#include "runtime/vb.h"

std::string monthname(const std::string& month)
{
    static const char* names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    double n = Val(month);
    if (n >= 1 && n <= 12 && n == (long)n) return names[(long)n - 1];
    return {};
}

std::string attext(const std::string& time, const std::string& day, const std::string& month,
                   const std::string& year)
{
    return " At " + Left(time, 2) + ":" + Mid(time, 3, 2) + " " + day + "-" + monthname(month) + "-" + year;
}

std::string scantext(const std::string& type, const std::string& field, const std::string* tail,
                     const std::string& time, const std::string& day, const std::string& month,
                     const std::string& year)
{
    std::string text = type + " " + Left(field, 2) + " " + Mid(field, 3, 6);
    if (tail) text += " " + *tail + " ";
    return text + attext(time, day, month, year);
}

std::string canonicaltext(const std::string& line)
{
    return Mid(line, 1, 2) + " " + Mid(line, 3, 2) + " " + Mid(line, 5, 6) + " At " + Mid(line, 19, 2) + ":" +
           Mid(line, 21, 2) + " " + Mid(line, 17, 2) + "-" + monthname(Mid(line, 15, 2)) + "-" + Mid(line, 13, 2);
}

std::string invalidtext(const std::string& what) { return "Invalid Line (" + what + ")"; }
