#include "platform/qt/services/address_race.h"

#include <QHostInfo>
#include <algorithm>
#include <cerrno>

#include "platform/qt/strings.h"

namespace velmora {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds headStart(250);

/// Both families take turns, the first one going to that of the first address (RFC 8305 section 4).
std::vector<QHostAddress> interleaved(const QList<QHostAddress>& addresses) {
  std::vector<QHostAddress> ordered(addresses.begin(), addresses.end());
  if (ordered.empty()) return ordered;
  const auto family = ordered.front().protocol();
  const auto others = std::stable_partition(ordered.begin(), ordered.end(),
                                            [family](const auto& address) { return address.protocol() == family; });
  std::vector<QHostAddress> result;
  for (auto first = ordered.begin(), second = others; first != others || second != ordered.end();) {
    if (first != others) result.push_back(*first++);
    if (second != ordered.end()) result.push_back(*second++);
  }
  return result;
}

PopFailure failureOf(const TcpCall& call) {
  const std::string text = utf8(qt_error_string(call.error()));
  switch (call.error()) {
    case ECONNREFUSED:
      return {pop_failure::connectionRefused, text};
    case ETIMEDOUT:
    case ENETUNREACH:
    case EHOSTUNREACH:
    case ENETDOWN:
    case EACCES:
      return {pop_failure::timedOut, text};
    default:
      return {pop_failure::connectionReset, text};
  }
}

}  // namespace

int AddressRace::run(const std::string& host, std::uint16_t port, milliseconds timeOut) {
  begin(timeOut);
  return runTo(lookUp(host), port);
}

int AddressRace::run(const std::vector<QHostAddress>& addresses, std::uint16_t port, milliseconds timeOut) {
  begin(timeOut);
  return runTo(addresses, port);
}

void AddressRace::begin(milliseconds timeOut) {
  deadline_ = std::chrono::steady_clock::now() + timeOut;
  stopped_ = false;
  runners_.clear();
}

int AddressRace::runTo(const std::vector<QHostAddress>& addresses, std::uint16_t port) {
  for (auto next = addresses.begin(); next != addresses.end() || !allFailed();) {
    const bool more = next != addresses.end();
    if (more) runners_.push_back(std::make_unique<TcpCall>(*next++, port, [this] { waiting_.wake(); }));
    // Where there is no way to an address at all, that is known at once, and nothing will come any more.
    if (isUndecided()) wait(more && next != addresses.end() ? headStart : left());
    if (const auto winner = takeWinner()) return *winner;
  }
  // The system gives the address first that it has most hope for.
  fail(failureOf(*runners_.front()));
}

std::vector<QHostAddress> AddressRace::lookUp(const std::string& host) {
  const QHostAddress literal(qt(host));
  if (!literal.isNull()) return {literal};
  std::optional<QHostInfo> found;
  QObject context;
  QHostInfo::lookupHost(qt(host), &context, [&](const QHostInfo& info) {
    found = info;
    waiting_.wake();
  });
  while (!found) wait(left());
  auto addresses = interleaved(found->addresses());
  if (addresses.empty()) throw PopFailure(pop_failure::hostNotFound, utf8(found->errorString()));
  return addresses;
}

std::optional<int> AddressRace::takeWinner() {
  for (auto& call : runners_) {
    if (call->state() != TcpCall::State::Connected) continue;
    const int winner = call->take();
    runners_.clear();
    return winner;
  }
  return std::nullopt;
}

bool AddressRace::allFailed() const {
  return std::ranges::all_of(runners_, [](const auto& call) { return call->state() == TcpCall::State::Failed; });
}

bool AddressRace::isUndecided() const {
  return !allFailed() &&
         std::ranges::none_of(runners_, [](const auto& call) { return call->state() == TcpCall::State::Connected; });
}

void AddressRace::fail(const PopFailure& failure) {
  runners_.clear();
  throw PopFailure(failure);
}

milliseconds AddressRace::left() const {
  return std::chrono::duration_cast<milliseconds>(deadline_ - std::chrono::steady_clock::now());
}

void AddressRace::wait(milliseconds longest) {
  if (left() <= milliseconds(0)) fail({pop_failure::timedOut, "The server did not answer in time."});
  if (!waiting_.wait(std::min(longest, left())) || stopped_)
    fail({pop_failure::connectionReset, "The connection was given up."});
}

}  // namespace velmora
