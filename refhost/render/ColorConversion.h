#pragma once

namespace refhost::render {

// Conversions between the process models. Values are 0..1: gray is ink (0 white), RGB is light,
// CMYK is ink.
//   gray ink g -> RGB (1-g, 1-g, 1-g);  gray ink g -> CMYK (0, 0, 0, g)
//   RGB -> gray ink 1 - (0.30 r + 0.59 g + 0.11 b)
//   RGB -> CMYK k = 1 - max(r, g, b); c = (1 - r - k) / (1 - k), m and y alike; (0, 0, 0, 1) for black
//   CMYK -> RGB r = (1 - c)(1 - k), g = (1 - m)(1 - k), b = (1 - y)(1 - k)
//   CMYK -> gray ink: through RGB, so that converting in two steps gives the same answer.
struct Rgb {
  double r = 0, g = 0, b = 0;
};
struct Cmyk {
  double c = 0, m = 0, y = 0, k = 0;
};

Rgb grayToRgb(double grayInk);
Cmyk grayToCmyk(double grayInk);
double rgbToGray(const Rgb& rgb);
Cmyk rgbToCmyk(const Rgb& rgb);
Rgb cmykToRgb(const Cmyk& cmyk);
double cmykToGray(const Cmyk& cmyk);

// Two inks laid over each other: 1 - (1 - a)(1 - b) per component.
Cmyk overprint(const Cmyk& a, const Cmyk& b);

double clamp01(double v);
// 0..1 to a byte, rounded to nearest.
inline unsigned char toByte(double unit) {
  const double v = unit <= 0.0 ? 0.0 : unit >= 1.0 ? 255.0 : unit * 255.0;
  return static_cast<unsigned char>(v + 0.5);
}

}  // namespace refhost::render
