// "DW Menu Suite": menu groups and items (kept; the tool lists them and can choose an item).
#include "host/suites/menu_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr AddMenuGroup(const char* name, uint32_t options, const char* nearGroup, DWMenuGroupHandle* group) {
  REFHOST_CALL(kDWMenuSuite, "AddMenuGroup");
  if (!name) return kHostBadParameter;
  return guarded([&] {
    // Groups belong to the plug-in whose message is being handled.
    MenuGroupRecord* added = nullptr;
    Host& host = Host::current();
    const DWErr result =
        host.registrations().addMenuGroup(host.activePlugin(), name, options, nearGroup ? nearGroup : "", &added);
    if (group) *group = result ? nullptr : reinterpret_cast<DWMenuGroupHandle>(added);
    return result;
  });
}

DWErr AddMenuItem(DWPluginRef ref, const char* itemName, const DWMenuItemData* data, uint32_t options,
                  DWMenuItemHandle* item) {
  REFHOST_CALL(kDWMenuSuite, "AddMenuItem");
  Host& host = Host::current();
  Plugin* plugin = host.plugin(ref);
  if (!plugin || !itemName || !data || !data->groupName || !data->itemText) return kHostBadParameter;
  return guarded([&] {
    MenuItemRecord record;
    record.plugin = plugin;
    record.name = itemName;
    record.group = data->groupName;
    record.text = data->itemText;
    record.options = options;
    MenuItemRecord* added = nullptr;
    const DWErr result = host.registrations().addMenuItem(std::move(record), &added);
    if (item) *item = result ? nullptr : reinterpret_cast<DWMenuItemHandle>(added);
    return result;
  });
}

DWErr UpdateMenuItemAutomatically(DWMenuItemHandle item, int32_t action, uint32_t ifObjectIsInArtwork,
                                  uint32_t ifObjectIsNotInArtwork, uint32_t ifObjectIsSelected,
                                  uint32_t ifObjectIsNotSelected, uint32_t ifIsTrue, uint32_t ifIsNotTrue) {
  REFHOST_CALL(kDWMenuSuite, "UpdateMenuItemAutomatically");
  MenuItemRecord* record = Host::current().registrations().menuItem(item);
  if (!record) return kHostBadParameter;
  record->autoEnable = true;
  record->enableAction = action;
  record->enableMasks = {ifObjectIsInArtwork,   ifObjectIsNotInArtwork, ifObjectIsSelected,
                         ifObjectIsNotSelected, ifIsTrue,               ifIsNotTrue};
  return kDWNoErr;
}

const DWMenuSuite kSuite = {AddMenuGroup, AddMenuItem, UpdateMenuItemAutomatically};
REFHOST_REGISTER_SUITE(kDWMenuSuite, kDWMenuSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
