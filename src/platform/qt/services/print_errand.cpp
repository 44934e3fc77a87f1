#include "platform/qt/services/print_errand.h"

#include <utility>

namespace velmora {

PrintState PrintErrand::state() {
  const std::scoped_lock lock(mutex_);
  if (state_.stage == PrintStage::HandedOver) handedOverIsKnown_ = true;
  return state_;
}

void PrintErrand::send(Document document) {
  const std::scoped_lock lock(mutex_);
  document_ = std::move(document);
  state_.stage = PrintStage::Sending;
  changed_.notify_all();
}

void PrintErrand::letGo() {
  const std::scoped_lock lock(mutex_);
  std::atomic_ref(letGo_).store(1);
  changed_.notify_all();
}

bool PrintErrand::tell(const PrintState& state) {
  const std::scoped_lock lock(mutex_);
  state_ = state;
  return !isLetGo();
}

std::optional<PrintErrand::Document> PrintErrand::waitForDocument() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return document_ || isLetGo(); });
  return isLetGo() ? std::nullopt : std::exchange(document_, {});
}

bool PrintErrand::handedOverIsKnown() const {
  const std::scoped_lock lock(mutex_);
  return handedOverIsKnown_;
}

bool PrintErrand::pause(std::chrono::milliseconds length) {
  std::unique_lock lock(mutex_);
  return !changed_.wait_for(lock, length, [this] { return isLetGo(); });
}

}  // namespace velmora
