// "DW Live Effect Suite": effect registration, the effects' menu items, and the parameter-context
// callback of an edit in progress.
#include <cstring>

#include "host/suites/live_effect_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

// A fixed 256-byte title field: up to the first zero, at most 255 bytes.
std::string titleOf(const char (&title)[256]) { return std::string(title, strnlen(title, sizeof title - 1)); }

DWErr AddLiveEffect(const DWLiveEffectData* data, DWLiveEffectHandle* effect) {
  REFHOST_CALL(kDWLiveEffectSuite, "AddLiveEffect");
  Host& host = Host::current();
  if (!data || !effect || !data->name || !*data->name) return kHostBadParameter;
  Plugin* plugin = host.plugin(data->plugin);
  if (!plugin) return kHostBadParameter;
  return guarded([&] {
    LiveEffectRecord record;
    record.plugin = plugin;
    record.name = data->name;
    record.title = titleOf(data->title);
    record.majorVersion = data->majorVersion;
    record.minorVersion = data->minorVersion;
    record.inputOptions = data->inputOptions;
    record.styleOptions = data->styleOptions;
    *effect = reinterpret_cast<DWLiveEffectHandle>(host.registrations().addLiveEffect(std::move(record)));
    return kDWNoErr;
  });
}

DWErr AddLiveEffectMenuItem(DWLiveEffectHandle effect, const char* menuName, const DWLiveEffectMenuData* data,
                            DWMenuItemHandle* item, DWMenuGroupHandle* group) {
  REFHOST_CALL(kDWLiveEffectSuite, "AddLiveEffectMenuItem");
  Host& host = Host::current();
  Registrations& registrations = host.registrations();
  LiveEffectRecord* record = registrations.liveEffect(effect);
  if (!record || !menuName || !*menuName || !data) return kHostBadParameter;
  return guarded([&] {
    // A named category becomes a group of the effects menu the first time it is used.
    const std::string category = data->category ? data->category : Registrations::kEffectsGroup;
    MenuGroupRecord* menuGroup = registrations.findMenuGroup(category);
    if (!menuGroup) {
      const Plugin* owner = record->plugin;
      if (DWErr result =
              registrations.addMenuGroup(owner, category, 0, Registrations::kEffectsGroup, &menuGroup))
        return result;
    }
    MenuItemRecord menuItem;
    menuItem.plugin = record->plugin;
    menuItem.name = menuName;
    menuItem.group = menuGroup->name;
    menuItem.text = titleOf(data->title);
    menuItem.options = data->options;
    menuItem.effect = effect;
    MenuItemRecord* added = nullptr;
    if (DWErr result = registrations.addMenuItem(std::move(menuItem), &added)) return result;
    record->menuItems.push_back(added);
    if (item) *item = reinterpret_cast<DWMenuItemHandle>(added);
    if (group) *group = reinterpret_cast<DWMenuGroupHandle>(menuGroup);
    return kDWNoErr;
  });
}

DWErr UpdateParameters(DWLiveEffectParamContext context) {
  REFHOST_CALL(kDWLiveEffectSuite, "UpdateParameters");
  ParamContextRecord* record = Host::current().registrations().paramContext(context);
  if (!record) return kHostBadParameter;
  ++record->updates;
  return guarded([&] {
    if (record->onUpdate) record->onUpdate();
    return kDWNoErr;
  });
}

const DWLiveEffectSuite kSuite = {AddLiveEffect, AddLiveEffectMenuItem, UpdateParameters};
REFHOST_REGISTER_SUITE(kDWLiveEffectSuite, kDWLiveEffectSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
