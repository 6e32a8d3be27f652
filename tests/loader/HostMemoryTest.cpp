// Working and named blocks on both sides of the size from which they are mapped instead of taken
// from the heap: zeroed, usable to the last byte, counted, and freed by the matching call.
#include "refhost/document/LargeBlock.h"
#include "refhost/loader/HostMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

struct SizeCase {
  const char* name;
  size_t size;
};

const SizeCase kSizes[] = {
    {"empty", 0},
    {"small", 100},
    {"just under a huge page", refhost::kHugePageBytes - 1},
    {"one huge page", refhost::kHugePageBytes},
    {"odd size over two huge pages", 2 * refhost::kHugePageBytes + 4099},
};

bool allZero(const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i)
    if (p[i]) return false;
  return true;
}

}  // namespace

TEST(HostMemory, BlocksOfEverySizeAreZeroedCountedAndFreed) {
  for (const SizeCase& c : kSizes) {
    refhost::HostMemory memory;
    void* held = memory.allocateWorking(c.size, c.size + 10, c.size + 10);
    auto* working = static_cast<unsigned char*>(held);
    void* named = memory.allocateNamed(c.size, "block");
    ASSERT_NE(working, nullptr) << c.name;
    ASSERT_NE(named, nullptr) << c.name;
    EXPECT_TRUE(allZero(working, c.size)) << c.name;
    if (c.size) std::memset(working, 0xAB, c.size);
    EXPECT_EQ(memory.outstandingBlocks(), 2u) << c.name;
    EXPECT_EQ(memory.outstandingWorkingBytes(), c.size) << c.name;
    EXPECT_EQ(memory.allocateWorking(11, c.size + 10, c.size + 10), nullptr) << c.name << ": over the total";
    EXPECT_EQ(memory.findNamed("block"), named) << c.name;
    EXPECT_TRUE(memory.free(working)) << c.name;
    EXPECT_FALSE(memory.free(working)) << c.name << ": freed twice";
    EXPECT_EQ(memory.outstandingWorkingBytes(), 0u) << c.name;
    EXPECT_EQ(memory.outstandingBlocks(), 1u) << c.name;
    // The named block is left for the destructor to free.
  }
}
