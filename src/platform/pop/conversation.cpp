#include "platform/pop/conversation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/failure.h"

namespace velmora::pop {
namespace {

constexpr Milliseconds longestWait{100};

struct Ends {
  std::int32_t closed, lost, silent;
  std::string_view lostText, silentText;
};

constexpr std::array<Ends, 3> endsByPhase = {{
    {pop_failure::closedWhileLoggingIn, pop_failure::noGreeting, pop_failure::noGreeting,
     "The server closed the connection without a greeting.", "The server sent no greeting in time."},
    {pop_failure::closedWhileLoggingIn, pop_failure::closedWhileLoggingIn, pop_failure::timedOut,
     "The server closed the connection while logging in.", "The server did not answer in time while logging in."},
    {pop_failure::connectionLost, pop_failure::connectionLost, pop_failure::silentWhileFetching,
     "The connection to the server was lost.", "The server did not send its answer in time."},
}};

const Ends& endsOf(Phase phase) { return endsByPhase.at(static_cast<std::size_t>(phase)); }

}  // namespace

void Conversation::connect(const std::string& host, std::uint16_t port, bool secure) {
  try {
    transport_.connect(host, port, secure, patience_.timeOut());
  } catch (const PopFailure&) {
    requireOpen();
    throw;
  }
}

void Conversation::send(std::string_view commands, std::size_t count) {
  requireOpen();
  outstanding_ += count;
  transport_.send(commands);
}

Reply Conversation::ask(std::string_view command) {
  send(std::string(command) + "\r\n", 1);
  return reply();
}

template <class Take>
auto Conversation::await(Take take) {
  patience_.start(transport_.now());
  while (true) {
    requireOpen();
    if (auto taken = take()) return *std::move(taken);
    receive();
  }
}

Reply Conversation::reply() {
  Reply reply = await([this] { return reader_.status(); });
  if (outstanding_ > 0) --outstanding_;
  return reply;
}

void Conversation::lines(const std::function<void(std::string_view)>& each) {
  insideAnswer_ = true;
  await([&] { return reader_.lines(each) ? std::optional(true) : std::nullopt; });
  insideAnswer_ = false;
}

Delivery Conversation::message() {
  insideAnswer_ = true;
  Delivery message = await([this] { return reader_.message(); });
  insideAnswer_ = false;
  return message;
}

void Conversation::requireOpen() const {
  if (closed_) throw PopFailure(endsOf(phase_).closed, "The connection was closed.");
}

void Conversation::close() {
  closed_ = true;
  transport_.abort();
}

void Conversation::receive() {
  const Milliseconds left = patience_.left(transport_.now());
  if (left <= Milliseconds::zero()) throw PopFailure(endsOf(phase_).silent, std::string(endsOf(phase_).silentText));
  const std::string bytes = transport_.receive(whileWaiting_ ? std::min(left, longestWait) : left);
  reader_.feed(bytes);
  if (!bytes.empty()) patience_.came(bytes.size(), transport_.now());
  if (whileWaiting_) whileWaiting_(*this);
  requireOpen();
  if (bytes.empty() && !transport_.isOpen())
    throw PopFailure(endsOf(phase_).lost, std::string(endsOf(phase_).lostText));
}

}  // namespace velmora::pop
