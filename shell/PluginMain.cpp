#include <new>

#include "host/messages.h"
#include "host/plugin_properties/plugin_properties.h"
#include "shell/Dispatch.h"
#include "shell/Error.h"
#include "shell/ErrorCodes.h"

#if defined(_WIN32)
#define DW_EXPORT __declspec(dllexport)
#else
#define DW_EXPORT __attribute__((visibility("default")))

// The property list, readable from the file before the library is loaded (the resource on Windows).
// The section must hold exactly its 154 bytes: clang's AddressSanitizer would pad the array with a
// red zone (GCC leaves globals in named sections alone).
#if defined(__clang__)
#define DW_UNPADDED __attribute__((no_sanitize("address")))
#else
#define DW_UNPADDED
#endif
__attribute__((section(kDWPluginPropertiesSection), used)) DW_UNPADDED static const unsigned char kPluginProperties[] = {
#include "host/plugin_properties/PluginProperties.inc"
};
static_assert(sizeof(kPluginProperties) == kDWPluginPropertiesSize, "the property list is 154 bytes");
#endif

// The library's one export. Nothing is thrown across it: the host gets a code.
extern "C" DW_EXPORT DWErr PluginMain(const char* caller, const char* selector, void* message) {
  try {
    return dw::dispatchMessage(caller, selector, message, dw::pluginMessageHandlers());
  } catch (const dw::Error& error) {
    return error.code;
  } catch (const std::bad_alloc&) {
    return dw::OutOfMemoryError;
  } catch (...) {
    return dw::CannotError;
  }
}
