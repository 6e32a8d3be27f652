// "DW Block Suite": working memory (tile and band buffers), subject to the test caps.
#include "host/suites/block_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWErr AllocateBlock(size_t size, void** block) {
  REFHOST_CALL(kDWBlockSuite, "AllocateBlock");
  if (!block) return kHostBadParameter;
  Host& host = Host::current();
  *block = host.memory().allocateWorking(size, host.controls().blockSizeCap, host.controls().blockTotalCap);
  return *block ? kDWNoErr : kHostOutOfMemory;
}

DWErr DisposeBlock(void* block) {
  REFHOST_CALL(kDWBlockSuite, "DisposeBlock");
  return Host::current().memory().free(block) ? kDWNoErr : kHostBadParameter;
}

const DWBlockSuite kSuite = {AllocateBlock, DisposeBlock};
REFHOST_REGISTER_SUITE(kDWBlockSuite, kDWBlockSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
