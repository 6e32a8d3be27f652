#include "refhost/io/export/AtomicOutput.h"

#include "refhost/io/export/RasterExport.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace refhost::io {

AtomicOutput::AtomicOutput(std::string path) : path_(std::move(path)) {
  temp_ = path_ + ".tmp-XXXXXX";
  fd_ = ::mkstemp(temp_.data());
  if (fd_ < 0) throw ExportError(path_ + ": cannot create a temporary file: " + std::strerror(errno));
}

AtomicOutput::~AtomicOutput() {
  if (fd_ >= 0) ::close(fd_);
  if (!committed_) ::unlink(temp_.c_str());
}

void AtomicOutput::commit() {
  if (fd_ >= 0) {
    const bool ok = ::fsync(fd_) == 0;
    const int closed = ::close(fd_);
    fd_ = -1;
    if (!ok || closed != 0) throw ExportError(path_ + ": write failed: " + std::strerror(errno));
  } else {
    // libtiff closed the descriptor; flush what it wrote through a new one.
    const int fd = ::open(temp_.c_str(), O_RDONLY);
    if (fd >= 0) {
      ::fsync(fd);
      ::close(fd);
    }
  }
  ::chmod(temp_.c_str(), 0644);
  if (std::rename(temp_.c_str(), path_.c_str()) != 0)
    throw ExportError(path_ + ": cannot replace the file: " + std::strerror(errno));
  committed_ = true;
}

}  // namespace refhost::io
