#include "support/killed_child.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace velmora::test {
namespace {

constexpr std::array changing = std::to_array<std::uint64_t>({
    SYS_write,  SYS_pwrite64, SYS_writev,    SYS_rename,    SYS_renameat, SYS_renameat2, SYS_link,
    SYS_linkat, SYS_unlink,   SYS_unlinkat,  SYS_mkdir,     SYS_chmod,    SYS_fchmod,    SYS_fchmodat,
    SYS_creat,  SYS_truncate, SYS_ftruncate, SYS_fallocate, SYS_fsync,    SYS_fdatasync,
});

bool changesDisk(const __ptrace_syscall_info& stop) {
  if (stop.op != PTRACE_SYSCALL_INFO_ENTRY) return false;
  const auto flags = stop.entry.nr == SYS_openat ? stop.entry.args[2] : stop.entry.args[1];
  const bool opens = stop.entry.nr == SYS_open || stop.entry.nr == SYS_openat;
  if (opens) return (flags & (O_CREAT | O_TRUNC)) != 0;
  return std::find(changing.begin(), changing.end(), stop.entry.nr) != changing.end();
}

[[noreturn]] void runTraced(const std::function<void()>& work) {
  if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
  raise(SIGSTOP);
  work();
  _exit(0);
}

/// Lets the child run up to the next begin or end of a system call, or to a signal, which it gets with the step after
/// that. False when it has ended.
bool step(pid_t child, int& status) {
  constexpr int systemCall = SIGTRAP | 0x80;
  const int stop = WSTOPSIG(status);
  const long signal = stop == systemCall || stop == SIGSTOP ? 0 : stop;
  ptrace(PTRACE_SYSCALL, child, nullptr, signal);
  return waitpid(child, &status, 0) == child && WIFSTOPPED(status);
}

}  // namespace

bool survives(int call, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) runTraced(work);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSTOPPED(status)) << "the system doesn't let a process be watched";
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  while (step(child, status)) {
    __ptrace_syscall_info stop{};
    ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof stop, &stop);
    if (!changesDisk(stop) || --call > 0) continue;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return false;
  }
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "it failed by itself: " << status;
  return true;
}

}  // namespace velmora::test
