#pragma once

namespace basic {
namespace detail {

// Padding that keeps a field other threads write off its neighbours' cache lines. 128 bytes
// rather than 64 because adjacent-line prefetch pulls lines in pairs.
struct cache_gap {
  char bytes[128];
};

}  // namespace detail
}  // namespace basic
