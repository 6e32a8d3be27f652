#pragma once

#include "refhost/document/Paint.h"

#include <string>

namespace refhost {

// A named colour of the document. Spot colours print on their own plate; global process colours are
// named but print as their CMYK values.
struct CustomColor {
  enum class Kind : std::uint8_t { Spot, Process };

  CustomColorId id = 0;  // 1-based creation order, never reused
  std::string name;
  Kind kind = Kind::Spot;
  double cmyk[4] = {0, 0, 0, 0};  // process alternate, ink 0..1
  // Optional RGB appearance (light 0..1); without it, screens show the CMYK alternate converted.
  bool hasRgb = false;
  double rgb[3] = {0, 0, 0};
};

bool operator==(const CustomColor& a, const CustomColor& b);
inline bool operator!=(const CustomColor& a, const CustomColor& b) { return !(a == b); }

}  // namespace refhost
