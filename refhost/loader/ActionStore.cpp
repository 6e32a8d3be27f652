#include "refhost/loader/ActionStore.h"

#include <algorithm>

#include "refhost/loader/HostErrors.h"

namespace refhost {

DWActionParamDesc ActionStore::newDescription() {
  auto description = std::make_unique<ActionParamDescription>();
  const void* handle = description.get();
  descriptions_.emplace(handle, std::move(description));
  return static_cast<DWActionParamDesc>(const_cast<void*>(handle));
}

ActionParamDescription* ActionStore::description(const void* handle) const {
  const auto found = descriptions_.find(handle);
  return found == descriptions_.end() ? nullptr : found->second.get();
}

bool ActionStore::disposeDescription(const void* handle) { return descriptions_.erase(handle) != 0; }

DWActionParamBlock ActionStore::newBlock() {
  auto block = std::make_unique<ActionParamBlock>();
  const void* handle = block.get();
  blocks_.emplace(handle, std::move(block));
  return static_cast<DWActionParamBlock>(const_cast<void*>(handle));
}

ActionParamBlock* ActionStore::block(const void* handle) const {
  const auto found = blocks_.find(handle);
  return found == blocks_.end() ? nullptr : found->second.get();
}

bool ActionStore::disposeBlock(const void* handle) { return blocks_.erase(handle) != 0; }

DWErr ActionStore::registerEvent(ActionEventRecord event) {
  if (event.name.empty()) return kHostBadParameter;
  if (this->event(event.name)) return kHostDuplicate;
  events_.push_back(std::make_unique<ActionEventRecord>(std::move(event)));
  return kDWNoErr;
}

const ActionEventRecord* ActionStore::event(const std::string& name) const {
  for (const auto& event : events_)
    if (event->name == name) return event.get();
  return nullptr;
}

std::vector<const ActionEventRecord*> ActionStore::events() const {
  std::vector<const ActionEventRecord*> list;
  for (const auto& event : events_) list.push_back(event.get());
  return list;
}

void ActionStore::removeOwnedBy(const Plugin* plugin) {
  if (!plugin) return;
  events_.erase(std::remove_if(events_.begin(), events_.end(),
                               [plugin](const auto& event) { return event->plugin == plugin; }),
                events_.end());
}

std::string fourCharText(uint32_t code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += char((code >> shift) & 0xFF);
  return text;
}

}  // namespace refhost
