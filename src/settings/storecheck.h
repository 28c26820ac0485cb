// Store location checks: whether the place data is written to really works, the address
// validation and the ICMP echo behind it, and the recheck when the server address changes.
#pragma once

#include <cstdint>
#include <string>

// Runs the check: sets storestate, storedown and lastgoodip, updates the system check and
// server store check screens and the setup screen's server frame, writes one log line.
void checkstorelocation();
// Sets iperror and ipnormal for an address.
void validateip(const std::string& address);
// One ICMP echo; 0 when the address answered, else the echo status. roundtrip is -1 on
// failure.
int32_t pingaddress(const std::string& address, int16_t ttl, int32_t& roundtrip);
// The address as a 32-bit value with the first octet in the lowest byte; 0 unless it has
// exactly four parts.
int32_t ipstringtolong(const std::string& address);
// On the setup screen: rechecks the store when the address changed.
void checkserverip();
