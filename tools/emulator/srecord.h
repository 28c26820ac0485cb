// Software images as the OPL 972x takes them: Motorola S-records. The S0 header record names
// the image: "OS <version>" for an operating system, "APP <version>" (or any other text)
// for an application.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Image {
    bool sound = false;       // every record well formed with a good checksum
    std::string header;       // text of the S0 record
    bool os = false;          // header starts with "OS "
    std::string version;      // header after its first word, or the whole header
};

Image checkimage(const std::vector<uint8_t>& bytes);
