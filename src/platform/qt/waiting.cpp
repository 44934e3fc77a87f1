#include "platform/qt/waiting.h"

#include <QTimer>

namespace velmora {

bool Waiting::wait(std::chrono::milliseconds longest) {
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, &loop_, &QEventLoop::quit);
  limit.start(longest);
  return loop_.exec() == 0;
}

}  // namespace velmora
