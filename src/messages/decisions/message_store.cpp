#include "messages/decisions/message_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/failure.h"
#include "platform/text.h"

namespace velmora {

void MessageStore::GrowMessageStore(std::int16_t capacity) { capacity_ = capacity; }

void MessageStore::ResizeAccountStore(std::int16_t accounts) { rows_.resize(static_cast<std::size_t>(accounts) + 1); }

void MessageStore::SwapAccounts(std::int16_t a, std::int16_t b) {
  rows_.at(static_cast<std::size_t>(a)).swap(rows_.at(static_cast<std::size_t>(b)));
}

std::span<MailMessage> MessageStore::Messages(std::int16_t account, std::int16_t count) {
  if (count < 1) return {};
  at(account, count);
  return std::span(rows_[static_cast<std::size_t>(account)]).subspan(1, static_cast<std::size_t>(count));
}

void MessageStore::Reorder(std::int16_t account, std::span<const std::size_t> order) {
  const auto messages = Messages(account, text::toInt16(static_cast<std::int64_t>(order.size())));
  std::vector<MailMessage> former(std::make_move_iterator(messages.begin()), std::make_move_iterator(messages.end()));
  for (std::size_t i = 0; i < order.size(); ++i) messages[i] = std::move(former[order[i]]);
}

void MessageStore::Remove(std::int16_t account, std::int16_t count, std::span<const std::int16_t> numbers) {
  const auto messages = Messages(account, count);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (std::binary_search(numbers.begin(), numbers.end(), static_cast<std::int16_t>(i + 1))) continue;
    if (kept != i) messages[kept] = std::move(messages[i]);
    ++kept;
  }
  for (MailMessage& message : messages.subspan(kept)) message = {};
}

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
