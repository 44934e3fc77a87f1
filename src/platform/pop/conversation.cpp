#include "platform/pop/conversation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/failure.h"

namespace velmora::pop {
namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr Milliseconds longestWait{100};
constexpr Milliseconds longestWithoutTurn{50};

struct Ends {
  std::int32_t closed, lost, silent;
  std::string_view lostText, silentText;
};

constexpr Ends atWork = {pop_failure::connectionLost, pop_failure::connectionLost, pop_failure::silentWhileFetching,
                         "The connection to the server was lost.", "The server did not send its answer in time."};

constexpr std::array<Ends, 5> endsByPhase = {{
    {pop_failure::closedWhileLoggingIn, pop_failure::noGreeting, pop_failure::noGreeting,
     "The server closed the connection without a greeting.", "The server sent no greeting in time."},
    {pop_failure::closedWhileLoggingIn, pop_failure::closedWhileLoggingIn, pop_failure::timedOut,
     "The server closed the connection while logging in.", "The server did not answer in time while logging in."},
    atWork,
    atWork,
    atWork,
}};

constexpr std::string_view trickleText =
    "The server sends its messages too slowly to go on: less than 100 KB in a minute, or in six time-outs.";

const Ends& endsOf(Phase phase) { return endsByPhase.at(static_cast<std::size_t>(phase)); }

PopFailure outOfPatience(Phase phase, bool isTrickle) {
  const Ends& ends = endsOf(phase);
  const bool isAtWork = ends.silent == atWork.silent;
  return {ends.silent, std::string(isTrickle && isAtWork ? trickleText : ends.silentText)};
}

}  // namespace

void Conversation::connect(const std::string& host, std::uint16_t port, bool secure) {
  enter(Phase::Greeting);
  const Milliseconds start = now();
  log_.connecting(host, port, secure);
  try {
    transport_.connect(host, port, secure, patience_.timeOut());
  } catch (const PopFailure& failure) {
    log_.failed(failure);
    requireOpen();
    throw;
  }
  log_.connected();
  patience_.waited(std::min(now() - start, patience_.timeOut()), 0);
}

void Conversation::enter(Phase phase) {
  phase_ = phase;
  if (phase != Phase::LoggingIn) patience_.begin(limitOf(phase));
}

/// Half an hour brings a list of 32,767 messages in over 2 KB a second.
std::optional<Milliseconds> Conversation::limitOf(Phase phase) const {
  using namespace std::chrono_literals;
  switch (phase) {
    case Phase::Greeting:
      return patience_.sixTimeOuts(2min);
    case Phase::Listing:
      return patience_.sixTimeOuts(30min);
    case Phase::Leaving:
      return 3s;
    default:
      return {};
  }
}

void Conversation::send(std::span<const std::string> commands) {
  requireOpen();
  outstanding_ += commands.size();
  std::string bytes;
  for (const std::string& command : commands) {
    if (ahead_.empty()) {
      log_.sent(command);
      bytes.append(command).append(lineEnd);
    } else {
      if (ahead_.front() != command) throw invalidCallFailure();
      ahead_.pop_front();
    }
  }
  if (!bytes.empty()) transport_.send(bytes);
}

void Conversation::sendAhead(std::vector<std::string> commands) {
  requireOpen();
  std::string bytes;
  for (std::string& command : commands) {
    log_.sent(command);
    bytes.append(command).append(lineEnd);
    ahead_.push_back(std::move(command));
  }
  transport_.send(bytes);
}

Reply Conversation::ask(const std::string& command) {
  send(std::span(&command, 1));
  return reply();
}

template <class Take>
auto Conversation::await(Take take) {
  try {
    while (true) {
      requireOpen();
      if (auto taken = take()) return *std::move(taken);
      receive();
    }
  } catch (const PopFailure& failure) {
    log_.failed(failure);
    throw;
  }
}

Reply Conversation::reply() {
  patience_.awaitStatusLine();
  Reply reply = await([this] { return reader_.status(); });
  patience_.statusLineCame();
  log_.answered(reply);
  if (outstanding_ > 0) --outstanding_;
  return reply;
}

/// What follows a status line.
template <class Take>
auto Conversation::awaitRest(Take take) {
  insideAnswer_ = true;
  patience_.awaitMore();
  auto rest = await(take);
  insideAnswer_ = false;
  return rest;
}

void Conversation::lines(const std::function<void(std::string_view)>& each) {
  awaitRest([&] { return reader_.lines(each) ? std::optional(true) : std::nullopt; });
}

Delivery Conversation::message() {
  return awaitRest([this] { return reader_.message(); });
}

void Conversation::message(const ReplyReader::Take& take) {
  awaitRest([&] { return reader_.message(take) ? std::optional(true) : std::nullopt; });
}

void Conversation::requireOpen() const {
  if (closed_) throw PopFailure(endsOf(phase_).closed, "The connection was closed.");
}

void Conversation::breathe() {
  if (now() - lastTurn_ < longestWithoutTurn) return;
  if (!transport_.turn()) close();
  lastTurn_ = now();
  if (whileWaiting_) whileWaiting_(*this);
  requireOpen();
}

void Conversation::close() {
  if (!closed_) log_.closed();
  closed_ = true;
  ahead_.clear();  // where the password may be
  transport_.abort();
}

void Conversation::receive() {
  const Milliseconds left = patience_.left();
  if (left <= Milliseconds::zero()) throw outOfPatience(phase_, patience_.isTrickle());
  const Milliseconds wait = whileWaiting_ ? std::min(left, longestWait) : left;
  const Milliseconds start = now();
  const std::string bytes = transport_.receive(wait);
  // What took longer than that was no waiting, but the program's own work, in a handler that ran meanwhile.
  patience_.waited(std::min(now() - start, wait), bytes.size());
  reader_.feed(bytes);
  if (whileWaiting_) whileWaiting_(*this);
  requireOpen();
  if (bytes.empty() && !transport_.isOpen())
    throw PopFailure(endsOf(phase_).lost, std::string(endsOf(phase_).lostText));
}

}  // namespace velmora::pop
