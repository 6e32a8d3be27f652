#include "posix_handle.h"

namespace dw_platform {
namespace {

std::atomic<std::uint64_t> calls[static_cast<int>(dw_platform_call::count)];
std::atomic<bool> fail_next[static_cast<int>(dw_platform_call::count)];
std::atomic<std::uint64_t> kernel_calls{0};
// Initial-exec: the counter lives in the static TLS block that the C library sets aside for
// libraries loaded later, so reaching it costs no __tls_get_addr call and nothing of it is
// allocated per module. That also keeps the plug-in's dynamic TLS empty: LeakSanitizer (clang 14)
// crashes at exit scanning the stale dynamic TLS of a library that was loaded, used and unloaded.
__attribute__((tls_model("initial-exec"))) thread_local std::uint64_t thread_kernel_calls = 0;

}  // namespace

bool enter(dw_platform_call call) {
  const int index = static_cast<int>(call);
  calls[index].fetch_add(1, std::memory_order_relaxed);
  if (call != dw_platform_call::process_affinity) {
    kernel_calls.fetch_add(1, std::memory_order_relaxed);
    ++thread_kernel_calls;
  }
  // A plain load first keeps the shared flag's cache line read-only on the common path.
  return fail_next[index].load(std::memory_order_relaxed) && fail_next[index].exchange(false);
}

}  // namespace dw_platform

using namespace dw_platform;

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  if (enter(dw_platform_call::wait) || handle == nullptr) return WAIT_FAILED;
  auto* object = static_cast<kernel_object*>(handle);
  if (object->kind == handle_kind::semaphore)
    return wait_semaphore(static_cast<semaphore_object*>(object), milliseconds);
  return wait_thread(static_cast<thread_object*>(object), milliseconds);
}

BOOL CloseHandle(HANDLE handle) {
  if (enter(dw_platform_call::close_handle) || handle == nullptr) return FALSE;
  auto* object = static_cast<kernel_object*>(handle);
  if (object->kind == handle_kind::semaphore)
    delete static_cast<semaphore_object*>(object);
  else
    close_thread(static_cast<thread_object*>(object));
  return TRUE;
}

std::uint64_t dw_platform_kernel_calls() { return kernel_calls.load(); }

std::uint64_t dw_platform_thread_kernel_calls() { return thread_kernel_calls; }

std::uint64_t dw_platform_calls(dw_platform_call call) {
  return calls[static_cast<int>(call)].load();
}

void dw_platform_fail_next(dw_platform_call call) { fail_next[static_cast<int>(call)].store(true); }
