#include "basic_kernel_semaphore.h"

#include "basic_assure.h"

namespace basic {

kernel_semaphore::kernel_semaphore(std::int32_t value) : _semaphore(nullptr) {
  BASIC_ASSURE(value >= 0);
  _semaphore = CreateSemaphoreW(nullptr, value, 0x7FFFFFFF, nullptr);
  BASIC_ASSURE(_semaphore != 0);
}

kernel_semaphore::~kernel_semaphore() { BASIC_ASSURE(CloseHandle(_semaphore) != 0); }

void kernel_semaphore::wait() {
  BASIC_ASSURE(WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0);
}

void kernel_semaphore::post() { BASIC_ASSURE(ReleaseSemaphore(_semaphore, 1, 0) != 0); }

}  // namespace basic
