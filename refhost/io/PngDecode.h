#pragma once

#include "refhost/document/ArtData.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace refhost::io {

// Decodes PNG bytes to straight RGBA. On failure returns null and sets `error`. Images beyond
// `maxPixels` are refused before any pixel memory is taken.
std::shared_ptr<Image> decodePng(const std::vector<std::uint8_t>& bytes, std::string& error,
                                 std::uint64_t maxPixels = 1ull << 28);
bool looksLikePng(const std::vector<std::uint8_t>& bytes);

}  // namespace refhost::io
