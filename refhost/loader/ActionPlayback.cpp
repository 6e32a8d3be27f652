#include "refhost/loader/ActionPlayback.h"

#include "host/messages.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {

namespace {

class BlockOwner {
 public:
  explicit BlockOwner(ActionStore& store) : store_(store), handle_(store.newBlock()) {}
  ~BlockOwner() { store_.disposeBlock(handle_); }
  BlockOwner(const BlockOwner&) = delete;
  BlockOwner& operator=(const BlockOwner&) = delete;
  DWActionParamBlock handle() const { return handle_; }
  ActionParamBlock& block() const { return *store_.block(handle_); }

 private:
  ActionStore& store_;
  DWActionParamBlock handle_;
};

}  // namespace

DWErr playAction(Host& host, const RecordedAction& action, bool showDialog) {
  const ActionEventRecord* event = host.actions().event(action.eventName);
  Plugin* plugin = event && event->plugin ? host.plugin(event->plugin->ref()) : nullptr;
  if (!plugin) return kHostNotFound;
  const BlockOwner parameters(host.actions());
  parameters.block() = action.parameters;
  DoActionMessage message{};
  message.eventValue = event->eventValue;
  message.showDialog = showDialog ? 1 : 0;
  message.params = parameters.handle();
  return host.send(*plugin, kDWActionCaller, kDWDoActionSelector, message);
}

}  // namespace refhost
