#include "platform/pop/quit.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/failure.h"
#include "platform/pop/exchange.h"

namespace velmora::pop {

namespace {

constexpr const char* farewell = "QUIT";

/// Reads off the listing that was asked for ahead and isn't wanted after all.
void skipAhead(Conversation& conversation) {
  while (!conversation.ahead().empty() && conversation.ahead().front() != farewell)
    if (conversation.ask(std::string(conversation.ahead().front())).ok) conversation.lines([](std::string_view) {});
}

}  // namespace

void quit(Conversation& conversation) {
  try {
    conversation.enter(Phase::Leaving);
    // Behind what is skipped it goes out at once, so that the server hears it even where that takes too long.
    conversation.sendAhead({farewell});
    skipAhead(conversation);
    conversation.ask(farewell);
  } catch (const PopFailure&) {
    // Nothing is lost: the server keeps all messages.
  }
}

void deleteAndQuit(const Channel& channel, std::span<const std::int32_t> numbers) {
  channel.conversation.enter(Phase::Working);
  skipAhead(channel.conversation);
  std::vector<Request> requests;
  for (const std::int32_t number : numbers) requests.push_back({"DELE " + std::to_string(number)});
  std::optional<Reply> refusal;
  exchange(channel.conversation, requests, channel.pipelined, [&](std::size_t /*index*/, const Reply& reply) {
    if (!reply.ok && !refusal) refusal = reply;
  });
  if (!refusal) {
    const Reply reply = channel.conversation.ask(farewell);
    if (reply.ok) return;
    refusal = reply;
  } else if (channel.conversation.ask("RSET").ok) {
    // What was marked until then is kept. Where it can't be unmarked, the connection ends without a farewell, which
    // has the same effect (RFC 1939 section 6).
    quit(channel.conversation);
  }
  throw PopFailure(pop_failure::messageRefused,
                   channel.conversation.quote("The server did not delete all of the messages.", refusal->text));
}

}  // namespace velmora::pop
