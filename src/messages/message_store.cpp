#include "messages/message_store.h"

#include <iterator>
#include <utility>

#include "platform/failure.h"

namespace velmora {

void MessageStore::GrowMessageStore(std::int16_t capacity) { capacity_ = capacity; }

void MessageStore::ResizeAccountStore(std::int16_t accounts) { rows_.resize(static_cast<std::size_t>(accounts) + 1); }

void MessageStore::Reorder(std::int16_t account, std::span<const std::size_t> order) {
  if (order.empty()) return;
  at(account, static_cast<std::int16_t>(order.size()));
  auto& row = rows_[static_cast<std::size_t>(account)];
  std::vector<MailMessage> former(std::make_move_iterator(row.begin() + 1),
                                  std::make_move_iterator(row.begin() + 1 + static_cast<std::ptrdiff_t>(order.size())));
  for (std::size_t i = 0; i < order.size(); ++i) row[i + 1] = std::move(former[order[i]]);
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
