#pragma once

#include "basic_semaphore.h"

namespace basic {

// Scoped use of a semaphore built with value 1 as a lock.
class semaphore_lock {
 public:
  semaphore_lock(semaphore& lock, bool acquire) : _semaphore(&lock), _owns(acquire) {
    if (_owns) _semaphore->wait();
  }
  ~semaphore_lock() {
    if (_owns) _semaphore->post();
  }
  semaphore_lock(const semaphore_lock&) = delete;
  semaphore_lock& operator=(const semaphore_lock&) = delete;

 private:
  semaphore* _semaphore;
  bool _owns;
};

}  // namespace basic
