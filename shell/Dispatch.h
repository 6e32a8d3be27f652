#pragma once
#include "host/messages.h"

namespace dw {

// The handlers the dispatcher routes to. The plug-in uses pluginMessageHandlers(); tests hand in
// their own to see which handler a message reaches.
struct MessageHandlers {
  DWErr (*reload)(MessageHeader& message);
  DWErr (*unload)(MessageHeader& message);
  DWErr (*startup)(MessageHeader& message);
  DWErr (*shutdown)(MessageHeader& message);
  DWErr (*applicationStarted)();
  DWErr (*goMenuItem)(MenuMessage& message);
  DWErr (*doAction)(DoActionMessage& message);
  DWErr (*editParameters)(LiveEffectEditParamMessage& message);
  DWErr (*goLive)(LiveEffectGoMessage& message);
  DWErr (*interpolateParameters)(LiveEffectInterpParamMessage& message);
  DWErr (*getConversionParameters)(LiveEffectGetConversionParamsMessage& message);
  DWErr (*convertColorSpace)(LiveEffectConvertColorMessage& message);
};

const MessageHandlers& pluginMessageHandlers();

// Records the message's basic suite, recognises the message by its caller and selector (exact,
// case-sensitive) and returns the chosen handler's code unchanged; anything unrecognised is 0.
// Menu and action messages reach their handlers only while the host is interactive.
DWErr dispatchMessage(const char* caller, const char* selector, void* message, const MessageHandlers& handlers);

}  // namespace dw
