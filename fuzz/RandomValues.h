#pragma once
#include <fuzzer/FuzzedDataProvider.h>

#include <string>

#include "host/rasterize_settings.h"
#include "refhost/document/Dictionary.h"
#include "refhost/loader/ActionStore.h"

namespace fuzz {

// Values the fuzzers hand the plug-in: mostly from tables of edge cases (zero, negatives, huge
// numbers, NaN), sometimes any bit pattern, so that inputs stay meaningful after mutation.
int32_t anyInteger(FuzzedDataProvider& in);
double anyReal(FuzzedDataProvider& in);

// A rasterize record as a dialog or another plug-in might fill it.
RasterizeSettings anySettings(FuzzedDataProvider& in);

// A dictionary with the settings keys (and a stray one) each missing or holding a value of any
// type, nested dictionaries included.
refhost::DictionaryPtr anySettingsDictionary(FuzzedDataProvider& in, int depth = 0);
refhost::Dictionary::Value anyDictionaryValue(FuzzedDataProvider& in, int depth);

// A recorded event of either of the plug-in's actions with every key missing or of any type.
refhost::RecordedAction anyRecordedAction(FuzzedDataProvider& in);

}  // namespace fuzz
