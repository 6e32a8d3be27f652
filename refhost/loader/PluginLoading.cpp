#include <dlfcn.h>

#include <cstring>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {

void Host::mapLibrary(Plugin& plugin) {
  // RTLD_LOCAL: two plug-ins never see each other's symbols; they meet only through suites.
  void* library = dlopen(plugin.path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* why = dlerror();
    throw HostError(plugin.path_ + ": cannot load the plug-in: " + (why ? why : "unknown reason"), kHostNotFound);
  }
  dlerror();
  void* entry = dlsym(library, plugin.properties_.entryPoint.c_str());
  if (!entry) {
    dlclose(library);
    throw HostError(plugin.path_ + ": the plug-in has no entry point \"" + plugin.properties_.entryPoint + "\"",
                    kHostNotFound);
  }
  plugin.library_ = library;
  plugin.main_ = reinterpret_cast<DWPluginMainProc>(entry);
}

void Host::unmapLibrary(Plugin& plugin) {
  if (plugin.library_) dlclose(plugin.library_);
  plugin.library_ = nullptr;
  plugin.main_ = nullptr;
}

void Host::dropRegistrations(Plugin& plugin) {
  // A plug-in that is gone holds nothing: the host takes back what it did not release.
  for (const auto& entry : plugin.held_) {
    for (int64_t i = 0; i < entry.second; ++i) suites_.release(entry.first.first, entry.first.second);
    plugin.reclaimed_.push_back(entry.first.first);
  }
  plugin.held_.clear();
  suites_.removeOwnedBy(&plugin);
  registrations_.removeOwnedBy(&plugin);
  actions_.removeOwnedBy(&plugin);
  // The global block is the host's memory: it goes with the plug-in if the plug-in left it.
  if (plugin.globals_ && memory_.free(plugin.globals_)) plugin.globals_ = nullptr;
}

Plugin& Host::loadPlugin(const std::string& path) {
  auto owned = std::make_unique<Plugin>();
  Plugin& plugin = *owned;
  plugin.path_ = path;
  plugin.properties_ = readPluginProperties(path);
  if (plugin.properties_.kind != kExtensionPluginKind)
    throw HostError(path + ": not an extension plug-in (kind " + formatCode(DWErr(plugin.properties_.kind)) + ")",
                    kHostBadParameter);
  if (plugin.properties_.entryPoint.empty())
    throw HostError(path + ": the property list names no entry point", kHostBadParameter);
  plugin.name_ = plugin.properties_.name.empty() ? path : plugin.properties_.name;

  mapLibrary(plugin);
  plugins_.push_back(std::move(owned));
  plugin.state_ = Plugin::State::Loaded;
  MessageHeader header = {};
  const DWErr result = sendMessage(plugin, kDWAccessCaller, kDWReloadSelector, header);
  if (result != kDWNoErr) {
    unmapLibrary(plugin);
    dropRegistrations(plugin);
    plugin.state_ = Plugin::State::Ended;
    throw HostError(plugin.name_ + ": loading failed with " + formatCode(result), result);
  }
  return plugin;
}

DWErr Host::startPlugin(Plugin& plugin) {
  if (plugin.state_ != Plugin::State::Loaded) return kHostBadParameter;
  MessageHeader header = {};
  const DWErr result = sendMessage(plugin, kDWInterfaceCaller, kDWStartupSelector, header);
  if (result == kDWNoErr) {
    plugin.state_ = Plugin::State::Started;
    return result;
  }
  MessageHeader last = {};
  sendMessage(plugin, kDWAccessCaller, kDWUnloadSelector, last);
  unmapLibrary(plugin);
  dropRegistrations(plugin);
  plugin.state_ = Plugin::State::Ended;
  return result;
}

Plugin& Host::launchPlugin(const std::string& path) {
  Plugin& plugin = loadPlugin(path);
  if (const DWErr result = startPlugin(plugin))
    throw HostError(plugin.name() + " could not start: " + formatCode(result), result);
  return plugin;
}

DWErr Host::notifyApplicationStarted() { return notify(kDWApplicationStartedNotifier); }

DWErr Host::unloadPlugin(Plugin& plugin) {
  if (plugin.state_ != Plugin::State::Started && plugin.state_ != Plugin::State::Loaded) return kHostBadParameter;
  MessageHeader header = {};
  const DWErr result = sendMessage(plugin, kDWAccessCaller, kDWUnloadSelector, header);
  unmapLibrary(plugin);
  plugin.stateBeforeUnload_ = plugin.state_;
  plugin.state_ = Plugin::State::Unloaded;
  return result;
}

DWErr Host::reloadPlugin(Plugin& plugin) {
  if (plugin.state_ != Plugin::State::Unloaded) return kHostBadParameter;
  mapLibrary(plugin);
  MessageHeader header = {};
  const DWErr result = sendMessage(plugin, kDWAccessCaller, kDWReloadSelector, header);
  // The plug-in stays mapped either way: it may still be shut down properly.
  plugin.state_ = plugin.stateBeforeUnload_;
  return result;
}

DWErr Host::shutdownPlugin(Plugin& plugin) {
  if (plugin.state_ == Plugin::State::Ended) return kHostBadParameter;
  if (plugin.state_ == Plugin::State::Unloaded) {
    // It must be mapped to hear its shut-down.
    if (const DWErr result = reloadPlugin(plugin)) {
      MessageHeader last = {};
      sendMessage(plugin, kDWAccessCaller, kDWUnloadSelector, last);
      unmapLibrary(plugin);
      dropRegistrations(plugin);
      plugin.state_ = Plugin::State::Ended;
      return result;
    }
  }
  DWErr result = kDWNoErr;
  if (plugin.state_ == Plugin::State::Started) {
    MessageHeader header = {};
    result = sendMessage(plugin, kDWInterfaceCaller, kDWShutdownSelector, header);
  }
  MessageHeader last = {};
  const DWErr unloaded = sendMessage(plugin, kDWAccessCaller, kDWUnloadSelector, last);
  unmapLibrary(plugin);
  dropRegistrations(plugin);
  plugin.state_ = Plugin::State::Ended;
  return result ? result : unloaded;
}

void Host::shutdownAll() {
  for (auto it = plugins_.rbegin(); it != plugins_.rend(); ++it)
    if ((*it)->state_ != Plugin::State::Ended) shutdownPlugin(**it);
}

Plugin* Host::plugin(DWPluginRef ref) const {
  for (const auto& plugin : plugins_)
    if (plugin->ref() == ref) return plugin.get();
  return nullptr;
}

Plugin* Host::findPlugin(const std::string& name) const {
  for (const auto& plugin : plugins_)
    if (plugin->name_ == name || plugin->properties_.name == name) return plugin.get();
  return nullptr;
}

std::vector<Plugin*> Host::plugins() const {
  std::vector<Plugin*> list;
  for (const auto& plugin : plugins_) list.push_back(plugin.get());
  return list;
}

namespace {

// Menu commands, actions and live-effect messages change the document: each runs as one undo
// transaction, which the plug-in may revert ("DW Undo Suite" UndoChanges). A message delivered
// while another one runs (an effect drawn during a command) belongs to the outer transaction.
class CommandTransaction {
 public:
  CommandTransaction(Document* document, const char* caller) {
    const bool changesDocument = std::strcmp(caller, kDWMenuCaller) == 0 || std::strcmp(caller, kDWActionCaller) == 0 ||
                                 std::strcmp(caller, kDWLiveEffectCaller) == 0;
    if (!document || !changesDocument || document->inTransaction()) return;
    document->beginTransaction();
    document_ = document;
  }
  ~CommandTransaction() {
    if (document_ && document_->inTransaction()) document_->endTransaction();
  }
  CommandTransaction(const CommandTransaction&) = delete;
  CommandTransaction& operator=(const CommandTransaction&) = delete;

 private:
  Document* document_ = nullptr;
};

}  // namespace

DWErr Host::sendMessage(Plugin& plugin, const char* caller, const char* selector, MessageHeader& header) {
  if (!plugin.main_) return kHostBadParameter;
  header.reserved = 0;
  header.pluginRef = plugin.ref();
  header.globals = plugin.globals_;
  header.basicSuite = basicSuite();
  active_.push_back(&plugin);
  DWErr result = kDWNoErr;
  {
    const CommandTransaction transaction(document_.get(), caller);
    result = plugin.main_(caller, selector, &header);
  }
  active_.pop_back();
  plugin.globals_ = header.globals;

  DeliveredMessage record;
  record.plugin = plugin.properties_.name;
  record.caller = caller;
  record.selector = selector;
  if (std::strcmp(caller, kDWNotifierCaller) == 0) {
    const auto& notification = reinterpret_cast<const NotifierMessage&>(header);
    if (notification.notifierType) record.notifierType = notification.notifierType;
  }
  record.result = result;
  messageLog_.push_back(record);
  return result;
}

DWErr Host::notify(const std::string& type) {
  DWErr first = kDWNoErr;
  for (const NotifierRecord* notifier : registrations_.notifiers()) {
    if (notifier->type != type) continue;
    Plugin* owner = const_cast<Plugin*>(notifier->plugin);
    if (!owner || owner->state_ != Plugin::State::Started) continue;
    NotifierMessage message = {};
    message.notifier = reinterpret_cast<DWNotifierHandle>(const_cast<NotifierRecord*>(notifier));
    message.notifierType = notifier->type.c_str();
    const DWErr result = send(*owner, kDWNotifierCaller, kDWNotifierSelector, message);
    if (!first) first = result;
  }
  return first;
}

DWErr Host::chooseMenuItem(const MenuItemRecord& item) {
  Plugin* owner = const_cast<Plugin*>(item.plugin);
  if (!owner || owner->state_ != Plugin::State::Started) return kHostBadParameter;
  MenuMessage message = {};
  message.menuItem = reinterpret_cast<DWMenuItemHandle>(const_cast<MenuItemRecord*>(&item));
  return send(*owner, kDWMenuCaller, kDWMenuGoSelector, message);
}

}  // namespace refhost
