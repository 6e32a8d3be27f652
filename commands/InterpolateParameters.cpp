#include "commands/LiveEffect.h"
#include "settings/EffectParameters.h"

namespace dw {

DWErr InterpolateParameters(LiveEffectInterpParamMessage& message) {
  // Always success: a key the host refused to store is missing from the blend, and a missing key
  // reads as its default wherever the parameters are used.
  interpolateEffectParameters(message.startParameters, message.endParameters, message.outParameters, message.t);
  return kDWNoErr;
}

}  // namespace dw
