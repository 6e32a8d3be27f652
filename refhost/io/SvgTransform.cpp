#include "refhost/io/SvgTransform.h"

#include "refhost/io/SvgNumbers.h"

#include <cctype>
#include <cmath>
#include <string>
#include <vector>

namespace refhost::io::svg {

namespace {
double radians(double degrees) { return degrees * M_PI / 180.0; }
}  // namespace

std::optional<Matrix> parseTransform(std::string_view text) {
  Matrix result;
  NumberScanner scan(text);
  while (true) {
    scan.skipSeparator();
    if (scan.atEnd()) break;
    std::string name;
    while (std::isalpha(static_cast<unsigned char>(scan.peek()))) {
      name += scan.peek();
      scan.advance();
    }
    scan.skipSpaces();
    if (name.empty() || scan.peek() != '(') return std::nullopt;
    scan.advance();
    std::vector<double> args;
    while (true) {
      scan.skipSeparator();
      if (scan.peek() == ')') {
        scan.advance();
        break;
      }
      auto v = scan.number();
      if (!v || !std::isfinite(*v) || args.size() >= 6) return std::nullopt;
      args.push_back(*v);
    }
    const std::size_t n = args.size();
    Matrix m;
    if (name == "matrix" && n == 6) {
      m = Matrix{args[0], args[1], args[2], args[3], args[4], args[5]};
    } else if (name == "translate" && (n == 1 || n == 2)) {
      m = Matrix::translation(args[0], n == 2 ? args[1] : 0.0);
    } else if (name == "scale" && (n == 1 || n == 2)) {
      m = Matrix::scaling(args[0], n == 2 ? args[1] : args[0]);
    } else if (name == "rotate" && (n == 1 || n == 3)) {
      m = Matrix::rotation(radians(args[0]));
      if (n == 3) m = Matrix::translation(args[1], args[2]) * m * Matrix::translation(-args[1], -args[2]);
    } else if (name == "skewX" && n == 1) {
      m = Matrix::skewX(radians(args[0]));
    } else if (name == "skewY" && n == 1) {
      m = Matrix::skewY(radians(args[0]));
    } else {
      return std::nullopt;
    }
    result = result * m;
  }
  return result;
}

}  // namespace refhost::io::svg
