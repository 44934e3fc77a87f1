#include "platform/qt/services/core_dumps.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace velmora {

/// One byte, since Linux hands a dump to the desktop's collector of crashes whatever the limit is, but for this one: it
/// takes one byte for the sign of the collector's own crash. Into a file it writes nothing either way. A process that
/// may not be dumped at all would keep its folder in /proc from the desktop, which looks there for who asks it.
void forbidCoreDumps() {
#ifdef Q_OS_UNIX
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) != 0) return;
  limit.rlim_cur = 1;
  [[maybe_unused]] const bool isSet = setrlimit(RLIMIT_CORE, &limit) == 0;
#ifdef Q_OS_LINUX
  if (!isSet) prctl(PR_SET_DUMPABLE, 0);  // whoever started the program allows no byte
#endif
#endif
}

}  // namespace velmora
