// "QK Blocks Suite": named blocks the host keeps for a plug-in (its global block among them).
#include "host/suites/blocks_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr AllocateBlock(size_t size, const char* name, void** block) {
  REFHOST_CALL(kDWBlocksSuite, "AllocateBlock");
  if (!block) return kHostBadParameter;
  *block = Host::current().memory().allocateNamed(size, name ? name : "");
  return *block ? kDWNoErr : kHostOutOfMemory;
}

DWErr FreeBlock(void* block) {
  REFHOST_CALL(kDWBlocksSuite, "FreeBlock");
  return Host::current().memory().free(block) ? kDWNoErr : kHostBadParameter;
}

const DWBlocksSuite kSuite = {AllocateBlock, FreeBlock};
REFHOST_REGISTER_SUITE(kDWBlocksSuite, kDWBlocksSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
