#pragma once

#include <sys/resource.h>

#include <csignal>

namespace velmora::test {

/// For as long as it lives, files have room for so many bytes, as on a disk that is nearly full: a write that asks for
/// more is cut short, and the next one fails.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : formerHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit full{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, formerHandler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*formerHandler_)(int);
  rlimit before_{};
};

}  // namespace velmora::test
