#pragma once
#include "host/messages.h"

namespace dw {

// Handlers of the four life-cycle messages. The host keeps the global block across unload and
// reload and hands it back in MessageHeader.globals; these write that field at first load, unload
// and shut-down.
DWErr ReloadPlugin(MessageHeader& message);
DWErr UnloadPlugin(MessageHeader& message);
DWErr StartupPlugin(MessageHeader& message);
DWErr ShutdownPlugin(MessageHeader& message);

// The plug-in's name as the host shows it, and the names it registers under.
constexpr const char kPluginName[] = "Rasterize 8";
constexpr const char kGlobalsBlockName[] = "Rasterize plugin globals";
constexpr const char kAppStartedNotifierName[] = "Rasterize App Started Notifier";

// The host option bit the plug-in sets at start-up (its meaning is the host's).
constexpr uint32_t kPluginOptionBit = 0x2;

}  // namespace dw
