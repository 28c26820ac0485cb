// Byte strings written as hex ("01 02 FF"), for the framer tables.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

std::vector<uint8_t> hexbytes(const std::string& text);
std::string hexof(const std::vector<uint8_t>& bytes);
