#include "work_probe.h"

#if !defined(_WIN32)
#include <pthread.h>
#endif

std::size_t current_stack_bytes() {
#if defined(__linux__)
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  std::size_t size = 0;
  pthread_attr_getstacksize(&attributes, &size);
  pthread_attr_destroy(&attributes);
  return size;
#else
  return 0;
#endif
}

void probe_work::run() {
  ++runs;
  ran_on = std::this_thread::get_id();
  stack_bytes = current_stack_bytes();
  written.assign(1000, runs);
}
