#include "platform/pop/fetch.h"

#include <algorithm>
#include <span>
#include <utility>

#include "platform/mail_bounds.h"
#include "platform/pop/exchange.h"
#include "platform/pop/kept_texts.h"

namespace velmora::pop {
namespace {

/// Blank identifiers tell nothing, so they are never the same.
bool haveSameIdentifiers(const Listing& before, const Listing& after) {
  return std::ranges::equal(before, after,
                            [](const Entry& a, const Entry& b) { return !a.uid.empty() && a.uid == b.uid; });
}

bool tellsAllSizes(const Listing& listing) {
  return std::ranges::none_of(listing, [](const Entry& entry) { return entry.bytes == 0; });
}

std::int64_t totalBytes(const Listing& listing, const Maildrop& maildrop) {
  if (!tellsAllSizes(listing)) return maildrop.bytes;
  std::int64_t total = 0;
  for (const Entry& entry : listing) total += entry.bytes;
  return total;
}

std::vector<Request> requestsFor(std::span<const Entry> entries, const Maildrop& maildrop) {
  const std::int64_t typical = clamped(maildrop.bytes / std::max(maildrop.count, 1));
  std::vector<Request> requests;
  for (const Entry& entry : entries)
    requests.push_back({"RETR " + std::to_string(entry.number), entry.bytes > 0 ? entry.bytes : typical});
  return requests;
}

}  // namespace

Fetch::Fetch(std::vector<PopMessage>& messages, Listing& listing, Surroundings surroundings)
    : messages_(messages),
      listing_(listing),
      surroundings_(std::move(surroundings)),
      progress_(surroundings_.progress) {}

void Fetch::run(const Channel& channel) {
  if (!listed_) progress_.expect(channel.maildrop.bytes);
  if (channel.maildrop.count > 0) begin(list(channel), channel.maildrop);
  const auto requests = requestsFor(std::span(listing_).subspan(kept_), channel.maildrop);
  exchange(channel.conversation, requests, channel.pipelined,
           [&](std::size_t /*index*/, const Reply& reply) { take(channel.conversation, reply); });
}

void Fetch::begin(Listing fresh, const Maildrop& maildrop) {
  if (!listed_ || !haveSameIdentifiers(listing_, fresh)) startOver();
  listed_ = true;
  listing_ = std::move(fresh);
  progress_.expect(totalBytes(listing_, maildrop));
}

/// The texts of before go first, since there is room for those of one mailbox only.
void Fetch::startOver() {
  for (PopMessage& message : messages_) message.Mail = {};
  kept_ = 0;
  keptBytes_ = 0;
  room_ = surroundings_.room;
}

void Fetch::take(Conversation& conversation, const Reply& reply) {
  if (!reply.ok) throw refusedMessage(conversation, kept_ + 1, listing_.size(), reply.text);
  keep(conversation, conversation.message());
  whileWaiting(conversation);
}

void Fetch::keep(Conversation& conversation, Delivery delivery) {
  PopMessage& message = messages_[kept_];
  const Entry& entry = listing_[kept_];
  message.Size = clamped(delivery.bytes);
  message.Uid = entry.uid.empty() ? identifierFromHeader(delivery.text, surroundings_.reader) : entry.uid;
  const bool isCut = delivery.isCut();
  // What came is let go of before the texts made from it are copied.
  message.Mail =
      surroundings_.reader.read(std::exchange(delivery.text, {}), surroundings_.now(), [&] { conversation.breathe(); });
  if (isCut && !message.Mail.Body.ends_with(mail_bounds::bodyMark)) message.Mail.Body += mail_bounds::bodyMark;
  keepWithin(room_, message.Mail);
  keptBytes_ += delivery.bytes;
  ++kept_;
  if (kept_ <= told_) return;
  told_ = kept_;
  progress_.reach(keptBytes_);
  if (isThrough()) progress_.tellNow(conversation.now());
  surroundings_.received(message);
}

void Fetch::whileWaiting(const Conversation& conversation) {
  if (isThrough()) return;
  progress_.reach(keptBytes_ + conversation.messageBytes());
  progress_.tellWhereDue(conversation.now());
}

}  // namespace velmora::pop
