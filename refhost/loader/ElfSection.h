#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace refhost {

// The bytes of a named section of an ELF file (32 or 64 bit, little-endian), read without loading
// the file; none when the file has no such section. Throws HostError when the file cannot be read
// or is not such an ELF file.
std::optional<std::vector<uint8_t>> readElfSection(const std::string& path, const std::string& section);

}  // namespace refhost
