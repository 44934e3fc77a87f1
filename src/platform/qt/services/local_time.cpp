#include "platform/qt/services/local_time.h"

#include <QDateTime>

namespace velmora {

DateTime localTime() {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate date = now.date();
  const QTime time = now.time();
  return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

}  // namespace velmora
