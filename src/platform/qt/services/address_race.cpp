#include "platform/qt/services/address_race.h"

#include <QHostInfo>
#include <QNetworkProxy>
#include <algorithm>
#include <optional>

#include "platform/failure.h"
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

PopFailure failureOf(const QSslSocket& socket) {
  const std::string text = utf8(socket.errorString());
  switch (socket.error()) {
    case QAbstractSocket::ConnectionRefusedError:
      return {pop_failure::connectionRefused, text};
    case QAbstractSocket::SocketTimeoutError:
    case QAbstractSocket::NetworkError:
      return {pop_failure::timedOut, text};
    default:
      return {pop_failure::connectionReset, text};
  }
}

}  // namespace

std::unique_ptr<QSslSocket> AddressRace::run(const std::string& host, std::uint16_t port, milliseconds timeOut) {
  begin(timeOut);
  return runTo(lookUp(host), port);
}

std::unique_ptr<QSslSocket> AddressRace::run(const std::vector<QHostAddress>& addresses, std::uint16_t port,
                                             milliseconds timeOut) {
  begin(timeOut);
  return runTo(addresses, port);
}

void AddressRace::begin(milliseconds timeOut) {
  deadline_ = std::chrono::steady_clock::now() + timeOut;
  stopped_ = false;
  runners_.clear();
}

std::unique_ptr<QSslSocket> AddressRace::runTo(const std::vector<QHostAddress>& addresses, std::uint16_t port) {
  for (auto next = addresses.begin(); next != addresses.end() || !allFailed();) {
    const bool more = next != addresses.end();
    if (more) enter(*next++, port);
    // Where there is no way to an address at all, that is known at once, and no signal will come any more.
    if (!allFailed()) wait(more && next != addresses.end() ? headStart : left());
    if (auto winner = takeWinner()) return winner;
  }
  fail();
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

void AddressRace::enter(const QHostAddress& address, std::uint16_t port) {
  auto& socket = *runners_.emplace_back(std::make_unique<QSslSocket>());
  socket.setProxy(QNetworkProxy::NoProxy);
  QObject::connect(&socket, &QAbstractSocket::connected, &socket, [this] { waiting_.wake(); });
  QObject::connect(&socket, &QAbstractSocket::errorOccurred, &socket, [this] { waiting_.wake(); });
  socket.connectToHost(address, port);
}

std::unique_ptr<QSslSocket> AddressRace::takeWinner() {
  for (auto& socket : runners_) {
    if (socket->state() != QAbstractSocket::ConnectedState) continue;
    auto winner = std::move(socket);
    winner->disconnect();
    runners_.clear();
    return winner;
  }
  return nullptr;
}

bool AddressRace::allFailed() const {
  return std::all_of(runners_.begin(), runners_.end(),
                     [](const auto& socket) { return socket->state() == QAbstractSocket::UnconnectedState; });
}

/// The system gives the address first that it has most hope for.
void AddressRace::fail() const { throw failureOf(*runners_.front()); }

milliseconds AddressRace::left() const {
  return std::chrono::duration_cast<milliseconds>(deadline_ - std::chrono::steady_clock::now());
}

void AddressRace::wait(milliseconds longest) {
  if (left() <= milliseconds(0)) throw PopFailure(pop_failure::timedOut, "The server did not answer in time.");
  if (!waiting_.wait(std::min(longest, left())) || stopped_) {
    throw PopFailure(pop_failure::connectionReset, "The connection was given up.");
  }
}

}  // namespace velmora
