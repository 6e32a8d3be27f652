#pragma once

#include <string>

namespace refhost::io {

// A temporary file beside `path` that becomes `path` on commit(); removed if never committed.
class AtomicOutput {
 public:
  explicit AtomicOutput(std::string path);
  ~AtomicOutput();
  AtomicOutput(const AtomicOutput&) = delete;
  AtomicOutput& operator=(const AtomicOutput&) = delete;

  int fd() const { return fd_; }
  const std::string& temporaryPath() const { return temp_; }
  // The descriptor was closed by someone else (libtiff closes what it was given).
  void descriptorClosed() { fd_ = -1; }
  // Flushes, closes and renames; throws ExportError.
  void commit();

 private:
  std::string path_;
  std::string temp_;
  int fd_ = -1;
  bool committed_ = false;
};

}  // namespace refhost::io
