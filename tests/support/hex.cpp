#include "support/hex.h"

#include <cstdio>
#include <sstream>

std::vector<uint8_t> hexbytes(const std::string& text)
{
    std::vector<uint8_t> b;
    std::istringstream in(text);
    std::string h;
    while (in >> h) b.push_back((uint8_t)std::stoi(h, nullptr, 16));
    return b;
}

std::string hexof(const std::vector<uint8_t>& bytes)
{
    std::string s;
    char t[4];
    for (size_t i = 0; i < bytes.size(); ++i) {
        std::snprintf(t, sizeof t, i ? " %02X" : "%02X", bytes[i]);
        s += t;
    }
    return s;
}
