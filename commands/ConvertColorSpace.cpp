#include "commands/LiveEffect.h"
#include "settings/EffectParameters.h"

namespace dw {

DWErr ConvertColorSpace(LiveEffectConvertColorMessage& message) {
  if (!message.parameters) return kDWNoErr;
  return convertEffectColorSpace(message.parameters, message.conversion);
}

}  // namespace dw
