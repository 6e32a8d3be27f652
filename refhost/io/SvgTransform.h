#pragma once

#include "refhost/document/Geometry.h"

#include <optional>
#include <string_view>

namespace refhost::io::svg {

// Parses an SVG transform list (matrix, translate, scale, rotate, skewX, skewY), composed left to
// right as SVG does. Nothing when malformed.
std::optional<Matrix> parseTransform(std::string_view text);

}  // namespace refhost::io::svg
