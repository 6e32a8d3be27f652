#include "host/messages.h"
#include "shell/ErrorCodes.h"

// The library's one export. Dispatch is not wired yet.
extern "C" __attribute__((visibility("default"))) DWErr PluginMain(const char* caller, const char* selector,
                                                                   void* message) {
  (void)caller;
  (void)selector;
  (void)message;
  return dw::NotImplementedError;
}
