#pragma once

#include <QEventLoop>
#include <chrono>

namespace velmora {

/// Lets the program's event loop turn for a caller that has to wait: for a signal that was connected to `wake`, or
/// until time runs out.
class Waiting {
 public:
  /// Ends the wait that is on, if any.
  void wake() {
    if (loop_.isRunning()) loop_.quit();  // which costs a call to the system, even where nothing waits
  }

  /// Returns false when the program is ending: then nothing must be waited for any more.
  bool wait(std::chrono::milliseconds longest);

 private:
  QEventLoop loop_;
};

}  // namespace velmora
