#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/mail_reader.h"

namespace velmora {

/// One message as the program shows it. `Date` and `Size` are display texts; `Size` counts whole kilobytes of 1000
/// bytes.
struct MailMessage {
  std::string From;
  std::string To;
  std::string Subject;
  std::string Date;
  std::string Size;
  bool New = false;
  bool Delete = false;
  bool Spam = false;
  bool Attach = false;
  std::string Body;
  std::string MsgID;
  std::string PrevMsgID;             ///< the MsgID that stood at this number when the account's previous pass ended
  std::string Raw;                   ///< the header, as it came
  std::string Sender;                ///< the bare address that an answer goes to, blank where it can't be told
  std::string MarkedBy;              ///< the rule that has set Delete or Spam, by its name
  std::vector<Attachment> Attached;  ///< the first of what is attached
};

/// The first messages of an account: number n is element n - 1.
class MessageRange {
 public:
  using Cell = std::unique_ptr<MailMessage>;

  class Iterator {
   public:
    explicit Iterator(const Cell* cell) : cell_(cell) {}
    MailMessage& operator*() const { return **cell_; }
    Iterator& operator++() {
      ++cell_;
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    const Cell* cell_;
  };

  explicit MessageRange(std::span<const Cell> cells) : cells_(cells) {}

  std::size_t size() const { return cells_.size(); }
  MailMessage& operator[](std::size_t index) const { return *cells_[index]; }
  Iterator begin() const { return Iterator(cells_.data()); }
  Iterator end() const { return Iterator(cells_.data() + cells_.size()); }

 private:
  std::span<const Cell> cells_;
};

/// The messages of all accounts, addressed by account number and message number from 1. Lives in memory only. Cells
/// beyond an account's AcntMsgCount keep old texts.
class MessageStore {
 public:
  /// Highest message number for which there is room, 0 at first.
  std::int16_t MessageCapacity() const { return capacity_; }

  /// Makes room for `capacity` messages of every account, keeping what is there.
  void GrowMessageStore(std::int16_t capacity);

  /// Makes room for account numbers 0 to `accounts`, keeping what is there.
  void ResizeAccountStore(std::int16_t accounts);

  /// Exchanges all that is held for two accounts.
  void SwapAccounts(std::int16_t a, std::int16_t b);

  /// An account's first `count` messages. Valid until the store's next change of size. Throws subscriptFailure where
  /// there is no room for them.
  MessageRange Messages(std::int16_t account, std::int16_t count);

  /// Puts an account's first messages into a new order: message `order[i] + 1` becomes number `i + 1`. No message is
  /// moved. `order` holds each number from 0 up to its size once.
  void Reorder(std::int16_t account, std::span<const std::size_t> order);

  /// Takes out of an account's first `count` messages those with these numbers, which ascend; the rest moves up, and
  /// the cells that become free are blank.
  void Remove(std::int16_t account, std::int16_t count, std::span<const std::int16_t> numbers);

  /// The cell of a message. Throws subscriptFailure where there is no room for it.
  MailMessage& at(std::int16_t account, std::int16_t message);

 private:
  std::span<MessageRange::Cell> cells(std::int16_t account, std::int16_t count);

  // An account's row is as long as the highest number asked of it: room that nobody uses costs nothing. Each message
  // has a place of its own, so that a new order moves none of them.
  std::vector<std::vector<MessageRange::Cell>> rows_;
  std::int16_t capacity_ = 0;
};

}  // namespace velmora
