#include "platform/qt/services/waiting.h"

#include <QTimer>
#include <algorithm>

namespace velmora {

bool Waiting::wait(std::chrono::milliseconds longest) {
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, &loop_, &QEventLoop::quit);
  limit.start(std::max(longest, std::chrono::milliseconds::zero()));  // with less than none it would never end
  return loop_.exec() == 0;
}

}  // namespace velmora
