// "DW HVExtension Suite": accelerated fills and box reductions, switchable for tests.
#include "host/suites/hv_extension_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/render/Accelerator.h"

namespace refhost {
namespace {

DWBool IsEnabled() { return render::acceleratorSwitches().enabled ? 1 : 0; }

void FillBytes(uint8_t* buffer, int32_t rows, int32_t rowBytes, int32_t fillBytes, uint8_t value) {
  render::fillBytes(buffer, rows, rowBytes, fillBytes, value);
}

void FillPixels32(uint8_t* buffer, int32_t count, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
  render::fillPixels32(buffer, count, b0, b1, b2, b3);
}

DWErr ReducePixels(const DWImageDescriptor* source, const DWImageDescriptor* destination, int32_t f) {
  REFHOST_CALL(kDWHVExtensionSuite, "ReducePixels");
  if (!source || !destination) return kHostBadParameter;
  return render::reducePixels(*source, *destination, f);
}

DWErr ReducePixelsWithAlpha(const DWImageDescriptor* source, const DWImageDescriptor* alpha,
                            const DWImageDescriptor* destination, int32_t f) {
  REFHOST_CALL(kDWHVExtensionSuite, "ReducePixelsWithAlpha");
  if (!source || !alpha || !destination) return kHostBadParameter;
  return render::reducePixelsWithAlpha(*source, *alpha, *destination, f);
}

DWErr ReduceChannel(const DWImageDescriptor* source, const DWImageDescriptor* destination, int32_t f) {
  REFHOST_CALL(kDWHVExtensionSuite, "ReduceChannel");
  if (!source || !destination) return kHostBadParameter;
  return render::reduceChannel(*source, *destination, f);
}

DWErr ReduceChannelWeighted(const DWImageDescriptor* source, const DWImageDescriptor* alpha,
                            const DWImageDescriptor* destination, int32_t f) {
  REFHOST_CALL(kDWHVExtensionSuite, "ReduceChannelWeighted");
  if (!source || !alpha || !destination) return kHostBadParameter;
  return render::reduceChannelWeighted(*source, *alpha, *destination, f);
}

const DWHVExtensionSuite kSuite = {IsEnabled,     FillBytes,    FillPixels32, ReducePixels, ReducePixelsWithAlpha,
                                   ReduceChannel, ReduceChannelWeighted};
REFHOST_REGISTER_SUITE(kDWHVExtensionSuite, kDWHVExtensionSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
