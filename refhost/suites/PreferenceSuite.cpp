// "DW Preference Suite": the application preferences (refhost/document/Preferences). A get leaves
// the value untouched when the preference is absent; integers and reals read as each other.
#include "host/suites/preference_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

Preferences& preferences() { return Host::current().preferences(); }

DWErr GetIntegerPreference(const char* prefix, const char* key, int32_t* value) {
  REFHOST_CALL(kDWPreferenceSuite, "GetIntegerPreference");
  if (!prefix || !key || !value) return kHostBadParameter;
  return guarded([&] {
    if (const auto stored = preferences().getInteger(prefix, key))
      *value = *stored;
    else if (const auto real = preferences().getReal(prefix, key); real && *real > -2147483649.0 && *real < 2147483648.0)
      *value = int32_t(*real);  // a real beyond an integer (or NaN) reads as missing
    return kDWNoErr;
  });
}

DWErr SetIntegerPreference(const char* prefix, const char* key, int32_t value) {
  REFHOST_CALL(kDWPreferenceSuite, "SetIntegerPreference");
  if (!prefix || !key) return kHostBadParameter;
  return guarded([&] {
    preferences().setInteger(prefix, key, value);
    return kDWNoErr;
  });
}

DWErr GetBooleanPreference(const char* prefix, const char* key, DWBool* value) {
  REFHOST_CALL(kDWPreferenceSuite, "GetBooleanPreference");
  if (!prefix || !key || !value) return kHostBadParameter;
  return guarded([&] {
    if (const auto stored = preferences().getBoolean(prefix, key)) *value = *stored ? 1 : 0;
    return kDWNoErr;
  });
}

DWErr SetBooleanPreference(const char* prefix, const char* key, DWBool value) {
  REFHOST_CALL(kDWPreferenceSuite, "SetBooleanPreference");
  if (!prefix || !key) return kHostBadParameter;
  return guarded([&] {
    preferences().setBoolean(prefix, key, value != 0);
    return kDWNoErr;
  });
}

DWErr GetRealPreference(const char* prefix, const char* key, double* value) {
  REFHOST_CALL(kDWPreferenceSuite, "GetRealPreference");
  if (!prefix || !key || !value) return kHostBadParameter;
  return guarded([&] {
    if (const auto stored = preferences().getReal(prefix, key))
      *value = *stored;
    else if (const auto integer = preferences().getInteger(prefix, key))
      *value = *integer;
    return kDWNoErr;
  });
}

DWErr SetRealPreference(const char* prefix, const char* key, double value) {
  REFHOST_CALL(kDWPreferenceSuite, "SetRealPreference");
  if (!prefix || !key) return kHostBadParameter;
  return guarded([&] {
    preferences().setReal(prefix, key, value);
    return kDWNoErr;
  });
}

const DWPreferenceSuite kSuite = {GetIntegerPreference, SetIntegerPreference, GetBooleanPreference,
                                  SetBooleanPreference, GetRealPreference,    SetRealPreference};
REFHOST_REGISTER_SUITE(kDWPreferenceSuite, kDWPreferenceSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
