#pragma once

namespace basic {

// A piece of work for a basic::thread. The caller owns it and keeps it alive until the thread
// that runs it has been joined; the library never copies or deletes it.
class thread_function {
 public:
  virtual ~thread_function();
  // The work; exceptions must not escape (one that does aborts the process).
  virtual void run();
};

}  // namespace basic
