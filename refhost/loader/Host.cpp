#include "refhost/loader/Host.h"

#include <map>
#include <utility>

#include "refhost/document/Document.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {

namespace {

Host* gCurrent = nullptr;

DWErr AcquireSuite(const char* name, int32_t version, const void** suite) {
  REFHOST_CALL(kDWBasicSuite, "AcquireSuite");
  return Host::current().acquireSuite(name, version, suite);
}

DWErr ReleaseSuite(const char* name, int32_t version) {
  REFHOST_CALL(kDWBasicSuite, "ReleaseSuite");
  return Host::current().releaseSuite(name, version);
}

const DWBasicSuite kBasicSuite = {AcquireSuite, ReleaseSuite};

}  // namespace

Host::Host() {
  if (gCurrent) throw HostError("a reference host is already running in this process");
  // A real implementation replaces the placeholder of the same name and version.
  std::map<std::pair<std::string, int32_t>, const SuiteProvider*> chosen;
  for (const SuiteProvider& provider : suiteProviders()) {
    const auto key = std::make_pair(std::string(provider.name), provider.version);
    const SuiteProvider*& slot = chosen[key];
    if (slot && !slot->placeholder && !provider.placeholder)
      throw HostError(std::string("two implementations of host suite \"") + provider.name + "\"");
    if (!slot || slot->placeholder) slot = &provider;
  }
  for (const auto& entry : chosen) {
    const SuiteProvider& provider = *entry.second;
    suites_.add(provider.name, provider.version, 0, provider.table, nullptr, provider.placeholder);
  }
  gCurrent = this;
}

Host::~Host() {
  shutdownAll();
  document_.reset();
  gCurrent = nullptr;
}

Host& Host::current() {
  if (!gCurrent) throw HostError("no reference host is running");
  return *gCurrent;
}

Host* Host::currentOrNull() { return gCurrent; }

const DWBasicSuite* Host::basicSuite() const { return &kBasicSuite; }

DWErr Host::acquireSuite(const char* name, int32_t version, const void** suite) {
  if (!name || !suite) return kHostBadParameter;
  *suite = nullptr;
  if (controls_.isWithheld(name)) return kHostSuiteNotFound;
  const DWErr result = suites_.acquire(name, version, suite);
  if (result == kDWNoErr && activePlugin()) ++activePlugin()->held_[{name, version}];
  return result;
}

DWErr Host::releaseSuite(const char* name, int32_t version) {
  if (!name) return kHostBadParameter;
  const DWErr result = suites_.release(name, version);
  if (result == kDWNoErr && activePlugin()) {
    auto found = activePlugin()->held_.find({name, version});
    if (found != activePlugin()->held_.end() && --found->second == 0) activePlugin()->held_.erase(found);
  }
  return result;
}

void Host::setDocument(std::unique_ptr<Document> document) { document_ = std::move(document); }

std::unique_ptr<Document> Host::takeDocument() { return std::move(document_); }

}  // namespace refhost
