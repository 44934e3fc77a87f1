#pragma once

#include <QObject>
#include <functional>

namespace velmora {

/// Calls `end` when the desktop's session ends or the program is told to terminate, so that it can save what it
/// saves at its end. Told to terminate once more, by SIGTERM or SIGINT, the
/// program ends at once, whatever it does. Holds for as long as the
/// object lives; made after the application.
class EndOfSession : public QObject {
 public:
  explicit EndOfSession(std::function<void()> end);

 private:
  void watchSignals();

  std::function<void()> end_;
};

}  // namespace velmora
