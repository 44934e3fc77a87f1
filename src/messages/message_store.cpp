#include "messages/message_store.h"

#include "platform/failure.h"

namespace velmora {

void MessageStore::GrowMessageStore(std::int16_t capacity) { capacity_ = capacity; }

void MessageStore::ResizeAccountStore(std::int16_t accounts) { rows_.resize(static_cast<std::size_t>(accounts) + 1); }

MailMessage& MessageStore::at(std::int16_t account, std::int16_t message) {
  const bool room =
      account >= 0 && static_cast<std::size_t>(account) < rows_.size() && message >= 0 && message <= capacity_;
  if (!room) throw subscriptFailure();
  auto& row = rows_[static_cast<std::size_t>(account)];
  const auto number = static_cast<std::size_t>(message);
  if (number >= row.size()) row.resize(number + 1);
  return row[number];
}

}  // namespace velmora
