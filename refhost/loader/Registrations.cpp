#include "refhost/loader/Registrations.h"

#include <algorithm>

#include "refhost/loader/HostErrors.h"

namespace refhost {

namespace {

template <typename T>
std::vector<const T*> view(const std::vector<std::unique_ptr<T>>& list) {
  std::vector<const T*> out;
  for (const auto& entry : list) out.push_back(entry.get());
  return out;
}

template <typename T>
T* lookup(const std::vector<std::unique_ptr<T>>& list, const void* handle) {
  if (!handle) return nullptr;
  for (const auto& entry : list)
    if (entry.get() == handle) return entry.get();
  return nullptr;
}

template <typename T, typename Owned>
void eraseIf(std::vector<std::unique_ptr<T>>& list, Owned owned) {
  list.erase(std::remove_if(list.begin(), list.end(), [&](const auto& entry) { return owned(*entry); }), list.end());
}

}  // namespace

Registrations::Registrations() {
  for (const char* name : kBuiltInGroups) {
    auto group = std::make_unique<MenuGroupRecord>();
    group->name = name;
    groups_.push_back(std::move(group));
  }
}

MenuGroupRecord* Registrations::findMenuGroup(const std::string& name) const {
  for (const auto& group : groups_)
    if (group->name == name) return group.get();
  return nullptr;
}

DWErr Registrations::addMenuGroup(const Plugin* owner, const std::string& name, uint32_t options,
                                  const std::string& nearGroup, MenuGroupRecord** added) {
  if (name.empty()) return kHostBadParameter;
  if (findMenuGroup(name)) return kHostDuplicate;
  if (!nearGroup.empty() && !findMenuGroup(nearGroup)) return kHostNotFound;
  auto group = std::make_unique<MenuGroupRecord>();
  group->name = name;
  group->options = options;
  group->nearGroup = nearGroup;
  group->owner = owner;
  if (added) *added = group.get();
  groups_.push_back(std::move(group));
  return kDWNoErr;
}

DWErr Registrations::addMenuItem(MenuItemRecord item, MenuItemRecord** added) {
  if (item.name.empty()) return kHostBadParameter;
  if (!findMenuGroup(item.group)) return kHostNotFound;
  items_.push_back(std::make_unique<MenuItemRecord>(std::move(item)));
  if (added) *added = items_.back().get();
  return kDWNoErr;
}

MenuItemRecord* Registrations::menuItem(const void* handle) const { return lookup(items_, handle); }

LiveEffectRecord* Registrations::addLiveEffect(LiveEffectRecord effect) {
  effects_.push_back(std::make_unique<LiveEffectRecord>(std::move(effect)));
  return effects_.back().get();
}

LiveEffectRecord* Registrations::liveEffect(const void* handle) const { return lookup(effects_, handle); }

NotifierRecord* Registrations::addNotifier(NotifierRecord notifier) {
  notifiers_.push_back(std::make_unique<NotifierRecord>(std::move(notifier)));
  return notifiers_.back().get();
}

ParamContextRecord* Registrations::newParamContext(LiveEffectRecord* effect, std::function<void()> onUpdate) {
  contexts_.push_back(std::make_unique<ParamContextRecord>());
  contexts_.back()->effect = effect;
  contexts_.back()->onUpdate = std::move(onUpdate);
  return contexts_.back().get();
}

ParamContextRecord* Registrations::paramContext(const void* handle) const { return lookup(contexts_, handle); }

void Registrations::disposeParamContext(const void* handle) {
  eraseIf(contexts_, [handle](const ParamContextRecord& context) { return &context == handle; });
}

std::vector<const MenuGroupRecord*> Registrations::menuGroups() const { return view(groups_); }
std::vector<const MenuItemRecord*> Registrations::menuItems() const { return view(items_); }
std::vector<const LiveEffectRecord*> Registrations::liveEffects() const { return view(effects_); }
std::vector<const NotifierRecord*> Registrations::notifiers() const { return view(notifiers_); }

void Registrations::removeOwnedBy(const Plugin* plugin) {
  if (!plugin) return;
  eraseIf(items_, [plugin](const MenuItemRecord& item) { return item.plugin == plugin; });
  eraseIf(contexts_, [plugin](const ParamContextRecord& context) {
    return context.effect && context.effect->plugin == plugin;
  });
  eraseIf(effects_, [plugin](const LiveEffectRecord& effect) { return effect.plugin == plugin; });
  eraseIf(notifiers_, [plugin](const NotifierRecord& notifier) { return notifier.plugin == plugin; });
  eraseIf(groups_, [plugin](const MenuGroupRecord& group) { return group.owner == plugin; });
}

}  // namespace refhost
