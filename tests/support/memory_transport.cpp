#include "support/memory_transport.h"

#include <algorithm>
#include <limits>

namespace velmora::test {

void MemoryTransport::connect(const std::string& /*host*/, std::uint16_t /*port*/, bool /*secure*/,
                              Milliseconds /*timeOut*/) {
  ++line_.connections;
  if (line_.connectFailure) throw PopFailure(*line_.connectFailure);
  line_.open = true;
  if (line_.onConnect) line_.onConnect();
  if (!line_.open) throw PopFailure(pop_failure::connectionReset, "Aborted while connecting.");
  said_ = peer_.opened();
  delivered_ = 0;
  nextChunk_ = line_.clock + line_.pace;
}

void MemoryTransport::send(std::string_view bytes) {
  if (!line_.open || isOver()) return;
  line_.sends.emplace_back(bytes);
  said_ += peer_.heard(bytes);
}

std::string MemoryTransport::receive(Milliseconds wait) {
  if (line_.onReceive) line_.onReceive();
  if (!line_.open) return {};
  if (isOver()) {
    line_.open = false;
    return {};
  }
  const Milliseconds until = line_.clock + wait;
  if (deliverable() == 0 || nextChunk_ > until) {
    line_.clock = until;
    return {};
  }
  line_.clock = std::max(line_.clock, nextChunk_);
  nextChunk_ = line_.clock + line_.pace;
  return deliver();
}

std::size_t MemoryTransport::deliverable() const {
  constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
  std::size_t last = said_.size();
  if (isFaulty()) last = std::min({last, line_.dropAfter.value_or(all), line_.silentAfter.value_or(all)});
  return last - std::min(last, delivered_);
}

bool MemoryTransport::isOver() const {
  if (deliverable() > 0) return false;
  const bool dropped = isFaulty() && line_.dropAfter && delivered_ >= *line_.dropAfter;
  return dropped || (peer_.hangsUp() && delivered_ == said_.size());
}

std::string MemoryTransport::deliver() {
  const std::size_t size = std::min(deliverable(), line_.chunk);
  std::string bytes = said_.substr(delivered_, size);
  delivered_ += size;
  return bytes;
}

}  // namespace velmora::test
