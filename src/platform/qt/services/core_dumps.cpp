#include "platform/qt/services/core_dumps.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace velmora {

#ifdef Q_OS_UNIX

namespace {

rlimit limitNow() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  return limit;
}

/// Asked for the first time before it is changed.
const rlimit& limitAtStart() {
  static const rlimit limit = limitNow();
  return limit;
}

}  // namespace

#endif

/// One byte, since Linux hands a dump to the desktop's collector of crashes whatever the limit is, but for this one: it
/// takes one byte for the sign of the collector's own crash. Into a file it writes nothing either way. A process that
/// may not be dumped at all would keep its folder in /proc from the desktop, which looks there for who asks it.
void forbidCoreDumps() {
#ifdef Q_OS_UNIX
  rlimit limit = limitAtStart();
  limit.rlim_cur = 1;
  [[maybe_unused]] const bool isSet = setrlimit(RLIMIT_CORE, &limit) == 0;
#ifdef Q_OS_LINUX
  if (!isSet) prctl(PR_SET_DUMPABLE, 0);  // whoever started the program allows no byte
#endif
#endif
}

bool withFormerDumpLimit(const std::function<bool()>& start) {
#ifdef Q_OS_UNIX
  const rlimit own = limitNow();
  setrlimit(RLIMIT_CORE, &limitAtStart());
  const bool answer = start();
  setrlimit(RLIMIT_CORE, &own);
  return answer;
#else
  return start();
#endif
}

}  // namespace velmora
