#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/messages.h"
#include "host/suites/basic_suite.h"
#include "refhost/document/Preferences.h"
#include "refhost/loader/ActionStore.h"
#include "refhost/loader/DevLogs.h"
#include "refhost/loader/HostMemory.h"
#include "refhost/loader/HostStrings.h"
#include "refhost/loader/Plugin.h"
#include "refhost/loader/Registrations.h"
#include "refhost/loader/SuiteRegistry.h"
#include "refhost/loader/TestControls.h"
#include "refhost/loader/UsageData.h"
#include "refhost/loader/UserInterface.h"

namespace refhost {

class Document;

// One message the host delivered, for the record (tests check the life-cycle order with it).
struct DeliveredMessage {
  std::string plugin;  // the property-list name
  std::string caller;
  std::string selector;
  std::string notifierType;  // notifications only
  DWErr result = 0;
};

// The reference host application: its suites, the plug-ins it loaded, the open document and
// everything plug-ins registered. Suite tables are plain C, so their functions reach the host
// through Host::current(); one Host exists at a time.
class Host {
 public:
  // Installs every host suite announced by refhost/suites (see SuiteProviders.h).
  Host();
  // Shuts down and unloads every plug-in still mapped.
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  static Host& current();
  static Host* currentOrNull();

  // Suites, by name and exact version. Acquisition honours the withheld-suite control.
  SuiteRegistry& suites() { return suites_; }
  const DWBasicSuite* basicSuite() const;
  DWErr acquireSuite(const char* name, int32_t version, const void** suite);
  DWErr releaseSuite(const char* name, int32_t version);

  TestControls& controls() { return controls_; }
  HostStrings& strings() { return strings_; }
  HostMemory& memory() { return memory_; }
  UserInterface& ui() { return ui_; }
  DevLogs& logs() { return logs_; }
  Registrations& registrations() { return registrations_; }
  ActionStore& actions() { return actions_; }
  Preferences& preferences() { return preferences_; }
  UsageData& usage() { return usage_; }

  // The open document (none until a verb opens one); the host owns it.
  Document* document() const { return document_.get(); }
  void setDocument(std::unique_ptr<Document> document);
  std::unique_ptr<Document> takeDocument();

  // Plug-in life cycle (PluginLoading.cpp), in the order a host runs it:
  // loadPlugin ("QK Access"/"Reload", first load), startPlugin ("QK Interface"/"Startup"),
  // notifyApplicationStarted, working messages, optional unloadPlugin/reloadPlugin pairs,
  // shutdownPlugin ("QK Interface"/"Shutdown", then the final "QK Access"/"Unload").
  //
  // Reads the property list from the file, maps the library, finds the entry point it names and
  // delivers the first "Reload". Throws HostError with a message for the user.
  Plugin& loadPlugin(const std::string& path);
  // A failed start-up is answered with the final "Unload": the library is unmapped and whatever
  // the plug-in registered or left in host memory is dropped.
  DWErr startPlugin(Plugin& plugin);
  // loadPlugin + startPlugin; throws HostError naming the code when start-up fails.
  Plugin& launchPlugin(const std::string& path);
  // "DW Notifier" with "DW Application Started Notifier" to every plug-in that asked for it.
  DWErr notifyApplicationStarted();
  DWErr unloadPlugin(Plugin& plugin);
  DWErr reloadPlugin(Plugin& plugin);
  DWErr shutdownPlugin(Plugin& plugin);
  // Every mapped plug-in, last loaded first.
  void shutdownAll();

  // What plug-ins set about themselves through "QK Plug-ins Suite" and "DW Plugin Suite".
  void renamePlugin(Plugin& plugin, std::string name) { plugin.name_ = std::move(name); }
  void setPluginOptions(Plugin& plugin, uint32_t options) { plugin.options_ = options; }

  // The plug-in of a reference the host handed out, or null.
  Plugin* plugin(DWPluginRef ref) const;
  Plugin* findPlugin(const std::string& name) const;
  std::vector<Plugin*> plugins() const;

  // Delivers one message: fills the header (plug-in reference, kept global block, basic suite),
  // calls PluginMain and keeps the global block the plug-in leaves in the header. Menu, action and
  // live-effect messages run inside one undo transaction of the open document (unless one is
  // already open), so that the plug-in can revert its changes and a finished command is one step.
  DWErr sendMessage(Plugin& plugin, const char* caller, const char* selector, MessageHeader& header);
  template <typename Message>
  DWErr send(Plugin& plugin, const char* caller, const char* selector, Message& message) {
    static_assert(offsetof(Message, d) == 0, "messages begin with MessageHeader");
    return sendMessage(plugin, caller, selector, message.d);
  }
  // "DW Notifier"/"DW Notify" to every notifier of the type; the first failure is returned.
  DWErr notify(const std::string& type);
  // "DW Menu"/"DW Go" to the item's plug-in (ignoring whether the item is enabled).
  DWErr chooseMenuItem(const MenuItemRecord& item);

  const std::vector<DeliveredMessage>& messageLog() const { return messageLog_; }
  // The plug-in whose message is being handled (for suite calls that name no plug-in), or null.
  Plugin* activePlugin() const { return active_.empty() ? nullptr : active_.back(); }

 private:
  void mapLibrary(Plugin& plugin);
  void unmapLibrary(Plugin& plugin);
  void dropRegistrations(Plugin& plugin);

  SuiteRegistry suites_;
  TestControls controls_;
  HostStrings strings_;
  HostMemory memory_;
  UserInterface ui_;
  DevLogs logs_;
  Registrations registrations_;
  ActionStore actions_;
  Preferences preferences_;
  UsageData usage_;
  std::unique_ptr<Document> document_;
  std::vector<std::unique_ptr<Plugin>> plugins_;
  std::vector<DeliveredMessage> messageLog_;
  std::vector<Plugin*> active_;
};

}  // namespace refhost
