#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/date_time.h"
#include "platform/mail_reader.h"
#include "platform/pop/listing.h"
#include "platform/pop/pop_client.h"
#include "platform/pop/progress.h"
#include "platform/pop/session.h"

namespace velmora::pop {

/// Brings in all messages of a mailbox. May run again over a new connection after a failure: it goes on behind the last
/// whole message where the server lists the same identifiers, and starts over where it doesn't.
class Fetch {
 public:
  struct Surroundings {
    const MailReader& reader;
    std::size_t room;  ///< bytes of the texts that are kept
    std::function<DateTime()> now;
    Progress::Tell progress;
    std::function<void(const PopMessage&)> received;
  };

  /// Fills `messages`, of which there are as many as the mailbox has, and `listing`.
  Fetch(std::vector<PopMessage>& messages, Listing& listing, Surroundings surroundings);

  void run(const Channel& channel);

  /// Tells the progress, not too often.
  void whileWaiting(const Conversation& conversation);

 private:
  void begin(Listing fresh, const Maildrop& maildrop);
  void startOver();
  void take(Conversation& conversation, const Reply& reply);
  void keep(Conversation& conversation, Delivery delivery);
  bool isThrough() const { return listed_ && kept_ == messages_.size(); }

  std::vector<PopMessage>& messages_;
  Listing& listing_;
  Surroundings surroundings_;
  bool listed_ = false;
  std::size_t kept_ = 0;
  std::size_t room_ = 0;  ///< for the texts of the messages to come
  std::size_t told_ = 0;  ///< messages that were told to be received, each once
  std::int64_t keptBytes_ = 0;
  Progress progress_;
};

}  // namespace velmora::pop
