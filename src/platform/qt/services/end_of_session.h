#pragma once

#include <QObject>
#include <functional>

namespace velmora {

/// Calls `save` when the desktop's session asks for it, as it does before it ends, but also before a logout that may be
/// cancelled yet, and whenever it likes: the program goes on then. Calls `end` when the session tells the program to
/// die or the program is told to terminate, so that it can save what it saves at its end. Told to terminate once more,
/// by SIGTERM or SIGINT, the program ends at once, whatever it does. Holds for as long as the object lives; made after
/// the application.
class EndOfSession : public QObject {
 public:
  EndOfSession(std::function<void()> save, std::function<void()> end);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void watchSignals();

  std::function<void()> save_;
  std::function<void()> end_;
};

}  // namespace velmora
