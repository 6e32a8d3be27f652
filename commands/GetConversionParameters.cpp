#include "commands/LiveEffect.h"
#include "settings/EffectParameters.h"

namespace dw {

DWErr GetConversionParameters(LiveEffectGetConversionParamsMessage& message) {
  return alignConversionParameters(message.parameters);
}

}  // namespace dw
