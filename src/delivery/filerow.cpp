#include "delivery/filerow.h"

#include "pipeline/formats.h"
#include "platform/files.h"
#include "runtime/vb.h"

std::string filerow(long i, const std::string& file, long& lines)
{
    files::TextReader in(file);
    const std::string line = in.lineinput();
    lines = CInt(Left(formats::readvalue(file, Mid(line, 2, 9), "000"), 3));
    return "BAR" + Format(i, "000") + "   Scanner " + Mid(line, 8, 3) + "   " + Format(lines, "000") +
           (lines == 1 ? " Line" : " Lines");
}
