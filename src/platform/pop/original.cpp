#include "platform/pop/original.h"

#include <string>
#include <utility>

namespace velmora::pop {

Original::Original(const Listing& listing, std::size_t index, const PopMessages::Take& take, Progress::Tell tell)
    : listing_(listing), index_(index), take_(take), progress_(std::move(tell)) {
  progress_.expect(listing_[index_].bytes);
}

void Original::run(const Channel& channel) {
  Conversation& conversation = channel.conversation;
  const Reply reply = conversation.ask("RETR " + std::to_string(listing_[index_].number));
  if (!reply.ok) throw refusedMessage(conversation, index_ + 1, listing_.size(), reply.text);
  conversation.message([&](std::string_view bytes) {
    hand(bytes);
    conversation.breathe();
  });
  progress_.tellNow(conversation.now());
}

void Original::hand(std::string_view bytes) {
  if (!take_(bytes)) throw PopFailure(pop_failure::connectionLost, "What came in could not be kept.");
  handed_ += static_cast<std::int64_t>(bytes.size());
  progress_.reach(handed_);
}

void Original::whileWaiting(const Conversation& conversation) { progress_.tellWhereDue(conversation.now()); }

}  // namespace velmora::pop
