#include "fuzz/RandomValues.h"

#include <cstdint>
#include <limits>

#include "settings/ActionKeys.h"
#include "settings/StoredKeys.h"

namespace fuzz {

namespace {

using refhost::ActionValue;
using refhost::Dictionary;

constexpr int32_t kIntegers[] = {0, 1, -1, 2, 3, 4, 7, 8, 11, 12, 16, 72, 150, 300, 2400, 9600, 65535, 1 << 20,
                                 std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min()};
constexpr double kReals[] = {0.0, 1.0, -1.0, 0.5, 36.0, 72.0, 300.0, 1e-300, 1e6, 1e300, -1e300,
                             std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()};

const char* const kSettingsKeys[] = {dw::keys::Type, dw::keys::Resolution, dw::keys::AntiAlias, dw::keys::Mask,
                                     dw::keys::Padding, dw::keys::Options, dw::keys::Spot};

const uint32_t kActionKeys[] = {dw::actions::KeyColorModel, dw::actions::KeyEffectsResolution,
                                dw::actions::KeyResolution, dw::actions::KeyBackground,
                                dw::actions::KeyTypeQuality, dw::actions::KeyAntiAliasing,
                                dw::actions::KeyAntiAlias,  dw::actions::KeyMask,
                                dw::actions::KeyPreserveSpot, dw::actions::KeyPadding};

}  // namespace

int32_t anyInteger(FuzzedDataProvider& in) {
  if (in.ConsumeBool()) return in.PickValueInArray(kIntegers);
  return in.ConsumeIntegral<int32_t>();
}

double anyReal(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0: return in.PickValueInArray(kReals);
    case 1: return in.ConsumeFloatingPointInRange(-1000.0, 3000.0);
    case 2: return double(anyInteger(in));
    default: return in.ConsumeFloatingPoint<double>();
  }
}

RasterizeSettings anySettings(FuzzedDataProvider& in) {
  RasterizeSettings s = {};
  s.type = in.ConsumeBool() ? in.ConsumeIntegralInRange(0, 11) : anyInteger(in);
  s.resolution = in.ConsumeBool() ? in.PickValueInArray({0.0, 36.0, 72.0, 150.0, 300.0}) : anyReal(in);
  s.antialiasing = in.ConsumeIntegral<int16_t>();
  s.options = in.ConsumeIntegral<uint32_t>();
  s.reserved = in.ConsumeBool() ? 0 : anyInteger(in);
  s.preserveSpotColors = in.ConsumeIntegralInRange(-1, 2);
  s.createClippingMask = in.ConsumeIntegralInRange(-1, 2);
  s.padding = in.ConsumeBool() ? in.ConsumeFloatingPointInRange(0.0, 72.0) : anyReal(in);
  s.forEffect = in.ConsumeIntegralInRange(-1, 2);
  return s;
}

Dictionary::Value anyDictionaryValue(FuzzedDataProvider& in, int depth) {
  switch (in.ConsumeIntegralInRange(0, depth < 2 ? 4 : 3)) {
    case 0: return anyInteger(in);
    case 1: return in.ConsumeBool();
    case 2: return anyReal(in);
    case 3: return in.ConsumeRandomLengthString(16);
    default: return anySettingsDictionary(in, depth + 1);
  }
}

refhost::DictionaryPtr anySettingsDictionary(FuzzedDataProvider& in, int depth) {
  auto dictionary = Dictionary::create();
  for (const char* key : kSettingsKeys)
    if (in.ConsumeBool()) dictionary->set(key, anyDictionaryValue(in, depth));
  if (in.ConsumeBool()) dictionary->set(in.ConsumeRandomLengthString(8), anyDictionaryValue(in, depth));
  return dictionary;
}

refhost::RecordedAction anyRecordedAction(FuzzedDataProvider& in) {
  refhost::RecordedAction action;
  action.eventName = in.ConsumeBool() ? dw::actions::RasterizeEvent : dw::actions::DocumentSettingsEvent;
  action.dialogState = anyInteger(in);
  for (uint32_t key : kActionKeys) {
    if (!in.ConsumeBool()) continue;
    ActionValue value;
    value.type = static_cast<ActionValue::Type>(in.ConsumeIntegralInRange(0, 3));
    value.integer = anyInteger(in);
    value.real = anyReal(in);
    value.unit = in.ConsumeBool() ? dw::actions::UnitPixels : in.ConsumeIntegral<uint32_t>();
    value.name = in.ConsumeRandomLengthString(12);
    action.parameters.values[key] = value;
  }
  return action;
}

}  // namespace fuzz
