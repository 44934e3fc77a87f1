#include "messages/decisions/message_store.h"

#include <algorithm>
#include <utility>

#include "platform/failure.h"
#include "platform/reorder.h"
#include "platform/text.h"

namespace velmora {

void MessageStore::GrowMessageStore(std::int16_t capacity) { capacity_ = capacity; }

void MessageStore::ResizeAccountStore(std::int16_t accounts) { rows_.resize(static_cast<std::size_t>(accounts) + 1); }

void MessageStore::SwapAccounts(std::int16_t a, std::int16_t b) {
  rows_.at(static_cast<std::size_t>(a)).swap(rows_.at(static_cast<std::size_t>(b)));
}

std::span<MessageRange::Cell> MessageStore::cells(std::int16_t account, std::int16_t count) {
  if (count < 1) return {};
  at(account, count);
  return std::span(rows_[static_cast<std::size_t>(account)]).subspan(1, static_cast<std::size_t>(count));
}

MessageRange MessageStore::Messages(std::int16_t account, std::int16_t count) {
  return MessageRange(cells(account, count));
}

void MessageStore::Reorder(std::int16_t account, std::span<const std::size_t> order) {
  reorder(cells(account, text::toInt16(static_cast<std::int64_t>(order.size()))), order);
}

void MessageStore::Remove(std::int16_t account, std::int16_t count, std::span<const std::int16_t> numbers) {
  const auto messages = cells(account, count);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (std::binary_search(numbers.begin(), numbers.end(), static_cast<std::int16_t>(i + 1))) continue;
    if (kept != i) messages[kept].swap(messages[i]);
    ++kept;
  }
  for (const auto& message : messages.subspan(kept)) *message = {};
}

MailMessage& MessageStore::at(std::int16_t account, std::int16_t message) {
  const bool room =
      account >= 0 && static_cast<std::size_t>(account) < rows_.size() && message >= 0 && message <= capacity_;
  if (!room) throw subscriptFailure();
  auto& row = rows_[static_cast<std::size_t>(account)];
  const auto number = static_cast<std::size_t>(message);
  while (number >= row.size()) row.push_back(std::make_unique<MailMessage>());
  return *row[number];
}

}  // namespace velmora
