#include "fakes/SettingsTestSupport.h"

#include <cstdio>

namespace fake {

std::string describe(const RasterizeSettings& s) {
  char text[200];
  std::snprintf(text, sizeof text, "type=%d res=%g aa=%d opt=0x%x reserved=%d spot=%d mask=%d pad=%g effect=%d",
                int(s.type), s.resolution, int(s.antialiasing), unsigned(s.options), int(s.reserved),
                int(s.preserveSpotColors), int(s.createClippingMask), s.padding, int(s.forEffect));
  return text;
}

void setInteger(Dictionary* d, const std::string& key, int32_t value) { d->entries[key] = Value::ofInteger(value); }
void setBoolean(Dictionary* d, const std::string& key, bool value) { d->entries[key] = Value::ofBoolean(value); }
void setReal(Dictionary* d, const std::string& key, double value) { d->entries[key] = Value::ofReal(value); }

namespace {
template <typename T>
std::optional<T> valueOf(const Dictionary* d, const std::string& key, Value::Kind kind, T Value::*field) {
  if (!d) return std::nullopt;
  auto it = d->entries.find(key);
  if (it == d->entries.end() || it->second.kind != kind) return std::nullopt;
  return it->second.*field;
}
}  // namespace

std::optional<int32_t> integerOf(const Dictionary* d, const std::string& k) {
  return valueOf(d, k, Value::Kind::Integer, &Value::integer);
}
std::optional<bool> booleanOf(const Dictionary* d, const std::string& k) {
  return valueOf(d, k, Value::Kind::Boolean, &Value::boolean);
}
std::optional<double> realOf(const Dictionary* d, const std::string& k) {
  return valueOf(d, k, Value::Kind::Real, &Value::real);
}

}  // namespace fake
