#include "shell/Dispatch.h"

#include <cstring>

#include "commands/Actions.h"
#include "commands/LiveEffect.h"
#include "commands/MenuCommand.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "shell/Interactive.h"
#include "shell/Lifecycle.h"

namespace dw {

namespace {

bool same(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

template <typename Message>
Message& as(void* message) {
  return *static_cast<Message*>(message);
}

}  // namespace

const MessageHandlers& pluginMessageHandlers() {
  static const MessageHandlers handlers = {
      ReloadPlugin,  UnloadPlugin,   StartupPlugin,         ShutdownPlugin,
      AcquireOptionalSuites,         GoMenuItem,            DoAction,
      EditParameters, GoLive,        InterpolateParameters, GetConversionParameters,
      ConvertColorSpace,
  };
  return handlers;
}

DWErr dispatchMessage(const char* caller, const char* selector, void* message, const MessageHandlers& handlers) {
  if (!caller || !selector || !message) return BadParameterError;
  MessageHeader& header = as<MessageHeader>(message);
  gSuites.basic = header.basicSuite;

  if (same(caller, kDWAccessCaller)) {
    if (same(selector, kDWReloadSelector)) return handlers.reload(header);
    if (same(selector, kDWUnloadSelector)) return handlers.unload(header);
    return kDWNoErr;
  }
  if (same(caller, kDWInterfaceCaller)) {
    if (same(selector, kDWStartupSelector)) return handlers.startup(header);
    if (same(selector, kDWShutdownSelector)) return handlers.shutdown(header);
    return kDWNoErr;
  }
  if (same(caller, kDWNotifierCaller)) {
    const char* type = as<NotifierMessage>(message).notifierType;
    if (type && same(type, kDWApplicationStartedNotifier)) return handlers.applicationStarted();
    return kDWNoErr;
  }

  const bool interactive = hostIsInteractive();
  if (same(caller, kDWMenuCaller) && interactive) {
    if (same(selector, kDWMenuGoSelector)) return handlers.goMenuItem(as<MenuMessage>(message));
    return kDWNoErr;
  }
  if (same(caller, kDWActionCaller) && interactive) {
    if (same(selector, kDWDoActionSelector)) return handlers.doAction(as<DoActionMessage>(message));
    return kDWNoErr;
  }
  if (same(caller, kDWLiveEffectCaller)) {
    if (same(selector, kDWLiveEffectEditParamsSelector))
      return handlers.editParameters(as<LiveEffectEditParamMessage>(message));
    if (same(selector, kDWLiveEffectGoLiveSelector)) return handlers.goLive(as<LiveEffectGoMessage>(message));
    if (same(selector, kDWLiveEffectInterpolateSelector))
      return handlers.interpolateParameters(as<LiveEffectInterpParamMessage>(message));
    if (same(selector, kDWLiveEffectConversionParamsSelector))
      return handlers.getConversionParameters(as<LiveEffectGetConversionParamsMessage>(message));
    if (same(selector, kDWLiveEffectConvertColorSpaceSelector))
      return handlers.convertColorSpace(as<LiveEffectConvertColorMessage>(message));
    return kDWNoErr;
  }
  return kDWNoErr;
}

}  // namespace dw
