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
const Value* entry(const Dictionary* d, const std::string& key, Value::Kind kind) {
  if (!d) return nullptr;
  auto it = d->entries.find(key);
  return it != d->entries.end() && it->second.kind == kind ? &it->second : nullptr;
}
}  // namespace

std::optional<int32_t> integerOf(const Dictionary* d, const std::string& key) {
  const Value* v = entry(d, key, Value::Kind::Integer);
  return v ? std::optional<int32_t>(v->integer) : std::nullopt;
}
std::optional<bool> booleanOf(const Dictionary* d, const std::string& key) {
  const Value* v = entry(d, key, Value::Kind::Boolean);
  return v ? std::optional<bool>(v->boolean) : std::nullopt;
}
std::optional<double> realOf(const Dictionary* d, const std::string& key) {
  const Value* v = entry(d, key, Value::Kind::Real);
  return v ? std::optional<double>(v->real) : std::nullopt;
}

}  // namespace fake
