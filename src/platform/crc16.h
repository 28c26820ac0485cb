// CRC-16 of the scanner links (CSP and the OPL link): polynomial 0x8005 reflected (0xA001),
// initial value 0xFFFF, final value inverted. "123456789" gives 0xB4C8.
#pragma once

#include <cstddef>
#include <cstdint>

uint16_t crc16(const uint8_t* data, size_t n);
