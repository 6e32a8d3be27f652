#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace refhost::io {

std::string base64Encode(const std::uint8_t* data, std::size_t size);
inline std::string base64Encode(const std::vector<std::uint8_t>& bytes) { return base64Encode(bytes.data(), bytes.size()); }
// Standard alphabet with padding; white space is skipped. Nothing on any other character.
std::optional<std::vector<std::uint8_t>> base64Decode(const std::string& text);

}  // namespace refhost::io
