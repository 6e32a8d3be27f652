#pragma once
// Damaged and hostile input files for the tool, written into a folder.
#include <cstddef>
#include <cstdint>
#include <string>

namespace bad_input {

// Writes `bytes` to `path` (binary); throws std::runtime_error when it cannot.
void writeFile(const std::string& path, const std::string& bytes);

// A valid 2 x 2 RGB PNG and a valid 2 x 2 gray TIFF, for truncation.
std::string smallPng();
std::string smallTiff();
// A PNG whose header claims width x height pixels (with correct checksums), then ends.
std::string pngClaiming(uint32_t width, uint32_t height);
// An uncompressed 8-bit gray TIFF whose first directory claims width x height, with one strip
// of one byte.
std::string tiffClaiming(uint32_t width, uint32_t height);

// XML entities that expand to 10^9 copies of a word.
std::string billionLaughsSvg();
// `depth` nested groups around one rectangle.
std::string deeplyNestedSvg(size_t depth);
// A <use> that refers to itself through a group, and a pair that refer to each other.
std::string useCycleSvg();
// One path with `points` line segments (each "h1" or "v1", a few bytes).
std::string giantPathSvg(size_t points);
// The native format nested `depth` arrays deep.
std::string deeplyNestedJson(size_t depth);

}  // namespace bad_input
