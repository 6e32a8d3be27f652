#include <cmath>

#include "settings/DocumentQueries.h"
#include "settings/EffectParameters.h"
#include "settings/HostDictionary.h"
#include "settings/StoredConversions.h"
#include "settings/StoredKeys.h"

namespace dw {

namespace {

struct BlendSet {
  int32_t type = 0;
  double resolution = 0.0;
  bool antiAlias = false;
  bool mask = false;
  double padding = 0.0;
};

BlendSet readBlendSet(DWDictionaryRef parameters, int32_t missingType) {
  BlendSet set;
  int32_t integer = missingType;
  readInteger(parameters, keys::Type, integer);
  set.type = clampStoredType(integer);
  integer = 0;
  if (readInteger(parameters, keys::Resolution, integer)) set.resolution = double(integer);
  readBoolean(parameters, keys::AntiAlias, set.antiAlias);
  readBoolean(parameters, keys::Mask, set.mask);
  readReal(parameters, keys::Padding, set.padding);
  return set;
}

}  // namespace

DWErr interpolateEffectParameters(DWDictionaryRef start, DWDictionaryRef end, DWDictionaryRef out, double t) {
  if (!out) return kDWNoErr;
  if (!start) start = end;
  if (!end) end = start;

  int32_t startType = 0;
  readInteger(start, keys::Type, startType);
  BlendSet from = readBlendSet(start, 0);
  BlendSet to = readBlendSet(end, startType);
  const int32_t mode = documentColorModeOrUnknown();
  from.type = followDocumentColorMode(mode, from.type);
  to.type = followDocumentColorMode(mode, to.type);

  const BlendSet& discrete = t < 0.5 ? to : from;
  const double resolution = std::trunc(from.resolution - (from.resolution - to.resolution) * (1.0 - t) + 0.5);
  const double padding = from.padding - (from.padding - to.padding) * (1.0 - t);

  if (const DWErr e = writeInteger(out, keys::Type, discrete.type)) return e;
  if (const DWErr e = writeInteger(out, keys::Resolution, storedResolution(resolution))) return e;
  if (const DWErr e = writeBoolean(out, keys::AntiAlias, discrete.antiAlias)) return e;
  if (const DWErr e = writeBoolean(out, keys::Mask, discrete.mask)) return e;
  return writeReal(out, keys::Padding, padding);
}

}  // namespace dw
