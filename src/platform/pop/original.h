#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/pop/listing.h"
#include "platform/pop/pop_client.h"
#include "platform/pop/progress.h"
#include "platform/pop/session.h"

namespace velmora::pop {

/// Hands out one message as the server has it, piece by piece, and keeps none of it. Can't be run again: what was
/// handed out can't be taken back.
class Original {
 public:
  /// `listing`, where the message stands at `index`, and `take` outlive it.
  Original(const Listing& listing, std::size_t index, const PopMessages::Take& take, Progress::Tell tell);

  void run(const Channel& channel);

  /// Tells the progress, not too often.
  void whileWaiting(const Conversation& conversation);

 private:
  void hand(std::string_view bytes);

  const Listing& listing_;
  std::size_t index_;
  const PopMessages::Take& take_;
  Progress progress_;
  std::int64_t handed_ = 0;
};

}  // namespace velmora::pop
