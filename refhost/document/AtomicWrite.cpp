#include "refhost/document/AtomicWrite.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace refhost {

void writeFileAtomically(const std::string& path, const std::string& bytes) {
  std::string tmpl = path + ".tmp-XXXXXX";
  const int fd = mkstemp(tmpl.data());
  if (fd < 0) throw std::runtime_error(path + ": cannot create a temporary file: " + std::strerror(errno));
  const char* p = bytes.data();
  std::size_t left = bytes.size();
  while (left > 0) {
    const ssize_t n = ::write(fd, p, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      const int err = errno;
      ::close(fd);
      ::unlink(tmpl.c_str());
      throw std::runtime_error(path + ": write failed: " + std::strerror(err));
    }
    p += n;
    left -= static_cast<std::size_t>(n);
  }
  if (::fsync(fd) != 0 || ::close(fd) != 0) {
    const int err = errno;
    ::unlink(tmpl.c_str());
    throw std::runtime_error(path + ": write failed: " + std::strerror(err));
  }
  // mkstemp makes the file 0600; give it the usual permissions of a saved document.
  ::chmod(tmpl.c_str(), 0644);
  if (std::rename(tmpl.c_str(), path.c_str()) != 0) {
    const int err = errno;
    ::unlink(tmpl.c_str());
    throw std::runtime_error(path + ": cannot replace the file: " + std::strerror(err));
  }
}

}  // namespace refhost
