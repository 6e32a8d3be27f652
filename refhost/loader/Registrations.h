#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/types.h"

namespace refhost {

class Plugin;

struct MenuGroupRecord {
  std::string name;
  uint32_t options = 0;
  std::string nearGroup;          // the group it is placed by
  const Plugin* owner = nullptr;  // null for the host's own groups
};

struct MenuItemRecord {
  const Plugin* plugin = nullptr;
  std::string name;
  std::string group;
  std::string text;  // as given: usually a localisable string
  uint32_t options = 0;
  bool autoEnable = false;
  int32_t enableAction = 0;
  std::array<uint32_t, 6> enableMasks{};
  DWLiveEffectHandle effect = nullptr;  // set for the menu item of a live effect
};

struct StyleConverterRecord {
  uint32_t kinds = 0;
  uint32_t options = 0;
  std::string name;
};

struct LiveEffectRecord {
  const Plugin* plugin = nullptr;
  std::string name;
  std::string title;
  int32_t majorVersion = 0;
  int32_t minorVersion = 0;
  uint32_t inputOptions = 0;
  uint32_t styleOptions = 0;
  std::vector<MenuItemRecord*> menuItems;
  std::vector<StyleConverterRecord> styleNames;
};

// The context of one live-effect parameter edit: the host makes one per "Edit Parameters"
// message; the plug-in hands it back through UpdateParameters when the parameters changed.
struct ParamContextRecord {
  LiveEffectRecord* effect = nullptr;
  uint64_t updates = 0;
  std::function<void()> onUpdate;
};

struct NotifierRecord {
  const Plugin* plugin = nullptr;
  std::string name;
  std::string type;
};

// Everything plug-ins registered with the host's menus, effects and notifications. Records never
// move: their addresses are the handles the plug-ins hold.
class Registrations {
 public:
  // The host's own menu groups; plug-ins place theirs by these.
  static constexpr const char* kBuiltInGroups[] = {"Object Utilities", "Effects Misc", "Effects",
                                                   "Document Utilities"};
  // The group of effect menu items whose plug-in leaves the choice to the host.
  static constexpr const char* kEffectsGroup = "Effects";

  Registrations();

  MenuGroupRecord* findMenuGroup(const std::string& name) const;
  // kHostDuplicate for a name in use, kHostNotFound when the near group does not exist.
  DWErr addMenuGroup(const Plugin* owner, const std::string& name, uint32_t options, const std::string& nearGroup,
                     MenuGroupRecord** group);
  // kHostNotFound for an unknown group; names may repeat (separators are all "-").
  DWErr addMenuItem(MenuItemRecord item, MenuItemRecord** added);
  MenuItemRecord* menuItem(const void* handle) const;

  LiveEffectRecord* addLiveEffect(LiveEffectRecord effect);
  LiveEffectRecord* liveEffect(const void* handle) const;

  NotifierRecord* addNotifier(NotifierRecord notifier);

  ParamContextRecord* newParamContext(LiveEffectRecord* effect, std::function<void()> onUpdate = {});
  ParamContextRecord* paramContext(const void* handle) const;
  void disposeParamContext(const void* handle);

  std::vector<const MenuGroupRecord*> menuGroups() const;
  std::vector<const MenuItemRecord*> menuItems() const;
  std::vector<const LiveEffectRecord*> liveEffects() const;
  std::vector<const NotifierRecord*> notifiers() const;

  // At a plug-in's shut-down: everything it registered goes.
  void removeOwnedBy(const Plugin* plugin);

 private:
  std::vector<std::unique_ptr<MenuGroupRecord>> groups_;
  std::vector<std::unique_ptr<MenuItemRecord>> items_;
  std::vector<std::unique_ptr<LiveEffectRecord>> effects_;
  std::vector<std::unique_ptr<NotifierRecord>> notifiers_;
  std::vector<std::unique_ptr<ParamContextRecord>> contexts_;
};

}  // namespace refhost
