#pragma once

#include "refhost/document/Paint.h"
#include "refhost/render/ColorConversion.h"
#include "refhost/render/ColorSpace.h"

#include <cstdint>

namespace refhost {
class Document;
}

namespace refhost::render {

// A colour as inks and light before it meets a port: a process colour (or none) plus amounts of
// spot colours that the target keeps in channels of their own.
struct InkColor {
  enum class Model : std::uint8_t { None, Gray, Rgb, Cmyk };
  static constexpr int kMaxSpots = 31;

  Model model = Model::None;
  double v[4] = {0, 0, 0, 0};  // gray ink; RGB light; CMYK ink
  int spotCount = 0;
  CustomColorId spot[kMaxSpots] = {};
  double amount[kMaxSpots] = {};

  static InkColor gray(double ink);
  static InkColor rgb(double r, double g, double b);
  static InkColor cmyk(double c, double m, double y, double k);

  double asGray() const;  // ink; none is white
  Rgb asRgb() const;
  Cmyk asCmyk() const;
  void addSpot(CustomColorId id, double amount);
  // Lays a process colour under the existing one as CMYK ink (spots without their own channel).
  void addProcessInk(const Cmyk& ink);
};

// Resolves a colour paint (gray, RGB, CMYK, spot) for a target: a spot colour goes to its own
// channel when the target has one, otherwise it becomes its CMYK alternate times its amount
// (1 - tint). A global process colour is its CMYK times the amount. Unknown colours are black.
InkColor resolvePaint(const Paint& paint, const Document* document, const ColorSpace& target);

// Channel values for every colour channel of `target` (alpha skipped), 0..255: gray and RGB
// channels hold light, CMYK and spot channels hold ink. Process channels receive the process
// colour converted to their model; spot channels their amount, or 0 (knocked out).
void inkToChannels(const InkColor& color, const ColorSpace& target, double* out);
void inkToBytes(const InkColor& color, const ColorSpace& target, std::uint8_t* out);

}  // namespace refhost::render
