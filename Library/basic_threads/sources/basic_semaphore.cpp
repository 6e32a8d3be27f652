#include "basic_semaphore.h"

#include "basic_assure.h"

namespace basic {

semaphore::semaphore(std::int32_t value, std::uint32_t spin_rounds)
    : _value(value), spin(spin_rounds), _semaphore(nullptr) {
  BASIC_ASSURE(_value >= 0);
  // The kernel count is the number of blocked waiters allowed to leave, so it starts at 0.
  _semaphore = CreateSemaphoreW(nullptr, 0, 0x7FFFFFFF, nullptr);
  BASIC_ASSURE(_semaphore != 0);
}

semaphore::~semaphore() { BASIC_ASSURE(CloseHandle(_semaphore) != 0); }

void semaphore::wait_in_kernel() {
  BASIC_ASSURE(WaitForSingleObject(_semaphore, INFINITE) == WAIT_OBJECT_0);
}

void semaphore::wake_in_kernel() { BASIC_ASSURE(ReleaseSemaphore(_semaphore, 1, 0) != 0); }

}  // namespace basic
