#pragma once
#include <cstddef>
#include <cstdint>

namespace fuzz {

// Opens the bytes as an image file through the raster importer: a bad file must be refused with
// IoError; an image that imports must save and load back equal (aborts otherwise).
void checkRasterImport(const uint8_t* data, size_t size);

}  // namespace fuzz
