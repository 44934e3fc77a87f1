#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/pop/conversation.h"

namespace velmora::pop {

struct Request {
  std::string command;           ///< without its line end
  std::int64_t answerBytes = 0;  ///< what its answer is announced to bring
};

/// Reads what follows the status line of the request at `index`, if anything does.
using OnAnswer = std::function<void(std::size_t index, const Reply& reply)>;

/// Sends all requests and has their answers read in turn: one by one, or pipelined (RFC 2449 section 6.8) with at most
/// 100 requests and 4 MiB of announced answers under way, yet always one, and new ones in batches. The event loop turns
/// also where all answers are there already.
void exchange(Conversation& conversation, std::span<const Request> requests, bool pipelined, const OnAnswer& onAnswer);

}  // namespace velmora::pop
