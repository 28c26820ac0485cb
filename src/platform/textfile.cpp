// Line input and print on text files. A reader takes the whole file at open; a writer makes
// one write per print, so an injected write fault lands on the line it hits.
#include "platform/files.h"
#include "platform/fsys.h"
#include "runtime/fault.h"

namespace files {

TextReader::TextReader(const std::string& path) : data_(readall(path)) {}

bool TextReader::eof() const { return pos_ >= data_.size(); }

std::string TextReader::lineinput()
{
    if (eof()) raisefault(fault::inputpastend);
    size_t end = data_.find_first_of("\r\n", pos_);
    if (end == std::string::npos) end = data_.size();
    std::string line = data_.substr(pos_, end - pos_);
    bool crlf = end + 1 < data_.size() && data_[end] == '\r' && data_[end + 1] == '\n';
    pos_ = end + (crlf ? 2 : 1);
    return line;
}

namespace {
void check(fsys::err e)
{
    if (e != fsys::err::none) raisefault(fsys::faultof(e));
}
}  // namespace

TextWriter::TextWriter(const std::string& path, Mode mode) : path_(path)
{
    auto how = mode == output ? fsys::writemode::create : fsys::writemode::createappend;
    check(fsys::write(platform::resolve(path_), "", how));
}

void TextWriter::print(const std::string& line) { write(line + "\r\n"); }

void TextWriter::write(const std::string& bytes) { appendbytes(path_, bytes); }

}  // namespace files
