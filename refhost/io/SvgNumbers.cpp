#include "refhost/io/SvgNumbers.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <string>

namespace refhost::io::svg {

namespace {
bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

std::string_view trim(std::string_view s) {
  while (!s.empty() && isSpace(s.front())) s.remove_prefix(1);
  while (!s.empty() && isSpace(s.back())) s.remove_suffix(1);
  return s;
}

void NumberScanner::skipSpaces() {
  while (i_ < s_.size() && isSpace(s_[i_])) ++i_;
}

void NumberScanner::skipSeparator() {
  skipSpaces();
  if (i_ < s_.size() && s_[i_] == ',') ++i_;
  skipSpaces();
}

bool NumberScanner::atEnd() {
  skipSpaces();
  return i_ >= s_.size();
}

std::optional<double> NumberScanner::number() {
  skipSpaces();
  const std::size_t start = i_;
  std::size_t j = i_;
  if (j < s_.size() && (s_[j] == '+' || s_[j] == '-')) ++j;
  const std::size_t mantissa = j;
  while (j < s_.size() && isDigit(s_[j])) ++j;
  if (j < s_.size() && s_[j] == '.') {
    ++j;
    while (j < s_.size() && isDigit(s_[j])) ++j;
  }
  if (j == mantissa || (j == mantissa + 1 && s_[mantissa] == '.')) return std::nullopt;
  if (j < s_.size() && (s_[j] == 'e' || s_[j] == 'E')) {
    std::size_t k = j + 1;
    if (k < s_.size() && (s_[k] == '+' || s_[k] == '-')) ++k;
    if (k < s_.size() && isDigit(s_[k])) {
      while (k < s_.size() && isDigit(s_[k])) ++k;
      j = k;
    }
  }
  // from_chars does not take a leading '+'.
  const std::size_t from = (s_[start] == '+') ? start + 1 : start;
  double value = 0.0;
  auto result = std::from_chars(s_.data() + from, s_.data() + j, value);
  if (result.ec == std::errc::result_out_of_range) {
    // Overflow becomes infinity (refused by callers), underflow zero.
    value = 0.0;
    for (std::size_t k = from; k < j && s_[k] != 'e' && s_[k] != 'E'; ++k) {
      if (s_[k] >= '1' && s_[k] <= '9') value = HUGE_VAL;
    }
    if (s_[start] == '-') value = -value;
  } else if (result.ec != std::errc() || result.ptr != s_.data() + j) {
    return std::nullopt;
  }
  i_ = j;
  return value;
}

std::optional<bool> NumberScanner::flag() {
  skipSpaces();
  if (i_ < s_.size() && (s_[i_] == '0' || s_[i_] == '1')) return s_[i_++] == '1';
  return std::nullopt;
}

std::optional<double> parseNumber(std::string_view text) {
  NumberScanner scan(text);
  auto v = scan.number();
  if (!v || !scan.atEnd() || !std::isfinite(*v)) return std::nullopt;
  return v;
}

double LengthContext::percentBase(LengthAxis axis) const {
  switch (axis) {
    case LengthAxis::X: return viewportWidth;
    case LengthAxis::Y: return viewportHeight;
    case LengthAxis::Other: break;
  }
  return std::sqrt((viewportWidth * viewportWidth + viewportHeight * viewportHeight) / 2.0);
}

std::optional<double> parseLength(std::string_view text, const LengthContext& ctx, LengthAxis axis) {
  NumberScanner scan(trim(text));
  auto v = scan.number();
  if (!v || !std::isfinite(*v)) return std::nullopt;
  std::string unit(trim(text).substr(scan.position()));
  for (char& c : unit) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  double factor = 0.0;
  if (unit.empty() || unit == "px") factor = 1.0;
  else if (unit == "pt") factor = 96.0 / 72.0;
  else if (unit == "pc") factor = 16.0;
  else if (unit == "mm") factor = 96.0 / 25.4;
  else if (unit == "cm") factor = 96.0 / 2.54;
  else if (unit == "in") factor = 96.0;
  else if (unit == "q") factor = 96.0 / 101.6;
  else if (unit == "em") factor = ctx.fontSize;
  else if (unit == "ex") factor = ctx.fontSize / 2.0;
  else if (unit == "%") factor = ctx.percentBase(axis) / 100.0;
  else return std::nullopt;
  return *v * factor;
}

std::string lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::size_t firstInvalidUtf8(const std::string& text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char lead = bytes[i];
    std::size_t length = 1;
    unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
    if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else if (lead >= 0x80) {
      return i;
    }
    if (i + length > text.size()) return i;
    for (std::size_t k = 1; k < length; ++k) {
      const unsigned char b = bytes[i + k];
      if (k == 1 ? (b < low || b > high) : (b < 0x80 || b > 0xBF)) return i;
    }
    i += length;
  }
  return std::string::npos;
}

}  // namespace refhost::io::svg
