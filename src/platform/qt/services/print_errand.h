#pragma once

#include <QByteArray>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

#include "platform/printing.h"

namespace velmora {

/// What a job and the thread that talks to the print service for it have in common. Both keep it, so that it outlives
/// either.
class PrintErrand {
 public:
  /// Pages to print, as PDF.
  struct Document {
    QByteArray pages;
    std::string title;
  };

  // For the job.
  PrintState state();
  void send(Document document);
  void letGo();

  // For the thread. Once the job has let go of the errand, nothing is waited for any more.
  bool tell(const PrintState& state);  ///< whether the job still asks
  std::optional<Document> waitForDocument();
  bool handedOverIsKnown() const;                ///< the job has heard of it
  bool pause(std::chrono::milliseconds length);  ///< whether the job still asks
  bool isLetGo() const { return std::atomic_ref(letGo_).load() != 0; }
  int* cancelFlag() { return &letGo_; }  ///< for a library in C, which ends its own waits by it

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  PrintState state_;
  std::optional<Document> document_;
  bool handedOverIsKnown_ = false;
  alignas(std::atomic_ref<int>::required_alignment) mutable int letGo_ = 0;
};

}  // namespace velmora
