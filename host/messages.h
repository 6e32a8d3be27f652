/* The message records the host passes to PluginMain. Every record begins with MessageHeader. */
#ifndef DW_HOST_MESSAGES_H
#define DW_HOST_MESSAGES_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

struct DWBasicSuite;

typedef struct MessageHeader {
  uint32_t reserved;                  /* not read by plug-ins */
  DWPluginRef pluginRef;
  void* globals;                      /* the plug-in's global block, kept by the host */
  const struct DWBasicSuite* basicSuite;
} MessageHeader;

/* PluginMain(caller, selector, message). */
typedef DWErr (*DWPluginMainProc)(const char* caller, const char* selector, void* message);

/* Callers and selectors. */
#define kDWAccessCaller "QK Access"
#define kDWReloadSelector "Reload"
#define kDWUnloadSelector "Unload"
#define kDWInterfaceCaller "QK Interface"
#define kDWStartupSelector "Startup"
#define kDWShutdownSelector "Shutdown"
#define kDWNotifierCaller "DW Notifier"
#define kDWNotifierSelector "DW Notify"
#define kDWApplicationStartedNotifier "DW Application Started Notifier"
#define kDWMenuCaller "DW Menu"
#define kDWMenuGoSelector "DW Go"
#define kDWActionCaller "Action Manager"
#define kDWDoActionSelector "Do Action"
#define kDWLiveEffectCaller "DW Live Effect"
#define kDWLiveEffectEditParamsSelector "DW Live Effect Edit Parameters"
#define kDWLiveEffectGoLiveSelector "DW Live Effect Go Live"
#define kDWLiveEffectInterpolateSelector "DW Live Effect Interpolate Parameters"
#define kDWLiveEffectConversionParamsSelector "DW Live Effect Get Conversion Parameters"
#define kDWLiveEffectConvertColorSpaceSelector "DW Live Effect Convert Color Space"

typedef struct NotifierMessage {
  MessageHeader d;
  DWNotifierHandle notifier;
  const char* notifierType;
  void* notifyData;
} NotifierMessage;

typedef struct MenuMessage {
  MessageHeader d;
  DWMenuItemHandle menuItem;
} MenuMessage;

typedef struct DoActionMessage {
  MessageHeader d;
  int32_t eventValue;        /* the value given when the event was registered */
  DWBool showDialog;
  DWActionParamBlock params; /* may be null */
} DoActionMessage;

typedef struct LiveEffectEditParamMessage {
  MessageHeader d;
  DWLiveEffectHandle effect;
  DWDictionaryRef parameters;
  DWLiveEffectParamContext context;
} LiveEffectEditParamMessage;

typedef struct LiveEffectGoMessage {
  MessageHeader d;
  DWLiveEffectHandle effect;
  DWDictionaryRef parameters;
  void* instanceInfo;        /* not read by the plug-in */
  DWArtHandle art;           /* in: the art to render; out: the result */
} LiveEffectGoMessage;

typedef struct LiveEffectInterpParamMessage {
  MessageHeader d;
  DWLiveEffectHandle effect;
  DWDictionaryRef startParameters;
  DWDictionaryRef endParameters;
  DWDictionaryRef outParameters;
  double t;
} LiveEffectInterpParamMessage;

typedef struct LiveEffectGetConversionParamsMessage {
  MessageHeader d;
  DWLiveEffectHandle effect;
  DWDictionaryRef parameters;
} LiveEffectGetConversionParamsMessage;

typedef struct LiveEffectConvertColorMessage {
  MessageHeader d;
  DWLiveEffectHandle effect;
  DWDictionaryRef parameters;
  int32_t conversion;        /* in: target colour kind (0 gray, 1 CMYK, 5 RGB); out: 6 when handled */
} LiveEffectConvertColorMessage;

#ifdef __cplusplus
}
#endif

#endif
