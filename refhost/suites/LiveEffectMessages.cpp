#include "refhost/suites/LiveEffectMessages.h"

#include "host/messages.h"
#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"
#include "refhost/suites/DictionaryRefs.h"

namespace refhost {

namespace {

// One counted handle per dictionary of a message, given back when the message returns.
class MessageDictionary {
 public:
  explicit MessageDictionary(const DictionaryPtr& dictionary)
      : handle_(dictionary ? retainDictionary(dictionary) : nullptr) {}
  ~MessageDictionary() {
    if (handle_) releaseDictionary(handle_);
  }
  MessageDictionary(const MessageDictionary&) = delete;
  MessageDictionary& operator=(const MessageDictionary&) = delete;
  DWDictionaryRef handle() const { return handle_; }

 private:
  DWDictionaryRef handle_;
};

DWLiveEffectHandle handleOf(const LiveEffectRecord& effect) {
  return reinterpret_cast<DWLiveEffectHandle>(const_cast<LiveEffectRecord*>(&effect));
}

template <typename Message>
DWErr deliver(Host& host, const LiveEffectRecord& effect, const char* selector, Message& message) {
  Plugin* plugin = effect.plugin ? host.plugin(effect.plugin->ref()) : nullptr;
  if (!plugin) return kHostNotFound;
  message.effect = handleOf(effect);
  return host.send(*plugin, kDWLiveEffectCaller, selector, message);
}

}  // namespace

const LiveEffectRecord* findLiveEffect(Host& host, const std::string& name) {
  for (const LiveEffectRecord* effect : host.registrations().liveEffects())
    if (effect->name == name) return effect;
  return nullptr;
}

DWErr editLiveEffectParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters,
                               bool* updated) {
  if (!parameters) return kHostBadParameter;
  Registrations& registrations = host.registrations();
  ParamContextRecord* context = registrations.newParamContext(const_cast<LiveEffectRecord*>(&effect));
  const MessageDictionary dictionary(parameters);
  LiveEffectEditParamMessage message{};
  message.parameters = dictionary.handle();
  message.context = reinterpret_cast<DWLiveEffectParamContext>(context);
  const DWErr result = deliver(host, effect, kDWLiveEffectEditParamsSelector, message);
  if (updated) *updated = context->updates > 0;
  registrations.disposeParamContext(context);
  return result;
}

DWErr goLive(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters, Art& art, Art** result) {
  if (!result) return kHostBadParameter;
  *result = nullptr;
  const MessageDictionary dictionary(parameters);
  LiveEffectGoMessage message{};
  message.parameters = dictionary.handle();
  message.art = reinterpret_cast<DWArtHandle>(&art);
  const DWErr code = deliver(host, effect, kDWLiveEffectGoLiveSelector, message);
  // Whatever the plug-in hands back must be live art of the document.
  *result = message.art ? art.document().liveArt(message.art) : nullptr;
  if (code == kDWNoErr && message.art && !*result) return kHostBadParameter;
  return code;
}

DWErr interpolateLiveEffectParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& start,
                                      const DictionaryPtr& end, const DictionaryPtr& out, double t) {
  if (!out) return kHostBadParameter;
  const MessageDictionary first(start), second(end), output(out);
  LiveEffectInterpParamMessage message{};
  message.startParameters = first.handle();
  message.endParameters = second.handle();
  message.outParameters = output.handle();
  message.t = t;
  return deliver(host, effect, kDWLiveEffectInterpolateSelector, message);
}

DWErr liveEffectConversionParameters(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters) {
  const MessageDictionary dictionary(parameters);
  LiveEffectGetConversionParamsMessage message{};
  message.parameters = dictionary.handle();
  return deliver(host, effect, kDWLiveEffectConversionParamsSelector, message);
}

DWErr convertLiveEffectColorSpace(Host& host, const LiveEffectRecord& effect, const DictionaryPtr& parameters,
                                  int32_t* conversion) {
  if (!conversion) return kHostBadParameter;
  const MessageDictionary dictionary(parameters);
  LiveEffectConvertColorMessage message{};
  message.parameters = dictionary.handle();
  message.conversion = *conversion;
  const DWErr result = deliver(host, effect, kDWLiveEffectConvertColorSpaceSelector, message);
  *conversion = message.conversion;
  return result;
}

}  // namespace refhost
