#include "platform/pop/pop_client.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <utility>

#include "platform/failure.h"
#include "platform/pop/fetch.h"
#include "platform/pop/listing.h"
#include "platform/pop/original.h"
#include "platform/pop/session.h"
#include "platform/text.h"

namespace velmora {

class PopClient::Implementation {
 public:
  Implementation(PopClient& owner, Surroundings surroundings)
      : owner_(owner), surroundings_(std::move(surroundings)), messages(owner) {}
  ~Implementation();
  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;

  void connect();
  void fetchAll();
  void listMessages(PopMessages::Identifiers wanted);
  void fetchOriginal(std::int16_t index, const PopMessages::Take& take);
  void disconnect();

  std::int16_t count() const { return text::toInt16(count_); }
  PopMessage& item(std::int16_t index);
  pop::Server& describe();

 private:
  class Running;

  void run(const std::function<void()>& job);
  void open();
  void requireConnected() const;
  void readListing(const pop::Channel& channel, PopMessages::Identifiers wanted);
  void leave();
  void end(std::int32_t code, const std::string& text);
  void forgetFailure();
  void remember(const PopFailure& failure);
  void enter(PopState state);
  std::vector<std::int32_t> numbersToDelete() const;
  pop::Session::Events sessionEvents();
  pop::Progress::Tell tellProgress();

  /// The receiver may change at any event, so each one asks for it anew.
  template <class Event>
  void notify(Event event) {
    if (receiver != nullptr) event(*receiver);
  }

  PopClient& owner_;
  Surroundings surroundings_;
  pop::Server server_;
  std::unique_ptr<pop::Transport> transport_;
  std::optional<pop::Session> session_;
  PopState state_ = PopState::Closed;
  bool running_ = false;
  std::int32_t count_ = 0;
  std::vector<PopMessage> items_;
  pop::Listing listing_;

 public:
  PopMessages messages;
  IPopClientNotify* receiver = nullptr;
  std::int32_t lastError = 0;
  std::string errorText;
  ServerCertificate certificate;
};

/// Marks a blocking call, which may not run inside another one.
class PopClient::Implementation::Running {
 public:
  explicit Running(bool& running) : running_(running) {
    if (running) throw invalidCallFailure();
    running_ = true;
  }
  ~Running() { running_ = false; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  bool& running_;
};

PopClient::Implementation::~Implementation() {
  if (transport_) transport_->abort();
}

void PopClient::Implementation::run(const std::function<void()>& job) {
  const auto self = owner_.shared_from_this();
  const Running running(running_);
  try {
    job();
  } catch (const PopFailure& failure) {
    remember(failure);
    // A refusal leaves a connection that can still be ended properly.
    if (failure.number() != pop_failure::messageRefused) end(failure.number(), failure.what());
    notify([&](IPopClientNotify& r) { r.Done(owner_, failure.number(), failure.what()); });
    throw;
  }
  notify([&](IPopClientNotify& r) { r.Done(owner_, 0, {}); });
}

void PopClient::Implementation::connect() {
  run([this] {
    forgetFailure();
    if (server_.port < 1 || server_.port > 65535) throw invalidCallFailure();
    end(0, {});
    open();
    notify([this](IPopClientNotify& r) { r.Connected(owner_); });
    if (session_->isClosed()) throw PopFailure(pop_failure::closedWhileLoggingIn, "The connection was closed.");
  });
}

void PopClient::Implementation::open() {
  count_ = 0;
  items_.clear();
  listing_.clear();
  if (!transport_) transport_ = surroundings_.makeTransport();
  session_.emplace(*transport_, server_, surroundings_.habits, sessionEvents());
  try {
    session_->open();
  } catch (const PopFailure& failure) {
    end(failure.number(), failure.what());
    throw;
  }
  count_ = session_->maildrop().count;
  if (count_ <= std::numeric_limits<std::int16_t>::max()) items_.resize(static_cast<std::size_t>(count_));
  while (listing_.size() < items_.size()) listing_.push_back({static_cast<std::int32_t>(listing_.size() + 1), 0, {}});
}

pop::Session::Events PopClient::Implementation::sessionEvents() {
  return {[this](PopState state) { enter(state); },
          [this](const ServerCertificate& c) {
            certificate = c;
            notify([&](IPopClientNotify& r) { r.HostCertificate(owner_, c.text, c.errorCode, c.errorText); });
          },
          surroundings_.log};
}

void PopClient::Implementation::enter(PopState state) {
  // A mark speaks of a number, and numbers hold for one login only.
  if (state == PopState::Connecting)
    for (PopMessage& item : items_) item.Deleted = false;
  const PopState old = std::exchange(state_, state);
  if (old != state) notify([&](IPopClientNotify& r) { r.StateChange(owner_, old); });
}

void PopClient::Implementation::requireConnected() const {
  if (state_ != PopState::Transaction)
    throw PopFailure(pop_failure::connectionLost, "There is no connection to the server.");
  count();
}

pop::Progress::Tell PopClient::Implementation::tellProgress() {
  return [this](std::int32_t position, std::int32_t total) {
    notify([&](IPopClientNotify& r) { r.Progress(owner_, position, total); });
  };
}

void PopClient::Implementation::fetchAll() {
  run([this] {
    requireConnected();
    pop::Fetch fetch(
        items_, listing_,
        {surroundings_.reader, surroundings_.room, surroundings_.now, tellProgress(),
         [this](const PopMessage& message) { notify([&](IPopClientNotify& r) { r.Received(owner_, message); }); }});
    session_->run([&](const pop::Channel& channel) { fetch.run(channel); },
                  [&](const pop::Conversation& conversation) { fetch.whileWaiting(conversation); });
  });
}

void PopClient::Implementation::fetchOriginal(std::int16_t index, const PopMessages::Take& take) {
  run([&] {
    requireConnected();
    item(index);
    pop::Original original(listing_, static_cast<std::size_t>(index), take, tellProgress());
    session_->runOnce([&](const pop::Channel& channel) { original.run(channel); },
                      [&](const pop::Conversation& conversation) { original.whileWaiting(conversation); });
  });
}

void PopClient::Implementation::listMessages(PopMessages::Identifiers wanted) {
  run([this, wanted] {
    requireConnected();
    session_->run([this, wanted](const pop::Channel& channel) { readListing(channel, wanted); }, {});
  });
}

void PopClient::Implementation::readListing(const pop::Channel& channel, PopMessages::Identifiers wanted) {
  if (items_.empty()) return;
  listing_ = pop::list(channel);
  if (wanted == PopMessages::Identifiers::All) pop::completeIdentifiers(channel, listing_, surroundings_.reader);
  for (std::size_t i = 0; i < items_.size(); ++i) {
    items_[i].Size = static_cast<std::int32_t>(listing_[i].bytes);
    items_[i].Uid = listing_[i].uid;
  }
}

void PopClient::Implementation::disconnect() {
  if (state_ == PopState::Closed) return;
  if (running_) {
    const auto self = owner_.shared_from_this();
    end(0, {});
  } else {
    run([this] { leave(); });
  }
}

void PopClient::Implementation::leave() {
  try {
    session_->leave(numbersToDelete());
  } catch (const PopFailure& failure) {
    end(failure.number(), failure.what());
    throw;
  }
  end(0, {});
}

std::vector<std::int32_t> PopClient::Implementation::numbersToDelete() const {
  std::vector<std::int32_t> numbers;
  for (std::size_t i = 0; i < items_.size(); ++i)
    if (items_[i].Deleted) numbers.push_back(listing_[i].number);
  return numbers;
}

void PopClient::Implementation::end(std::int32_t code, const std::string& text) {
  if (state_ == PopState::Closed) return;
  const bool wasOpen = state_ != PopState::Connecting;
  session_->close();
  enter(PopState::Closed);
  if (wasOpen) notify([&](IPopClientNotify& r) { r.Disconnected(owner_, code, text); });
}

PopMessage& PopClient::Implementation::item(std::int16_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= items_.size()) throw subscriptFailure();
  return items_[static_cast<std::size_t>(index)];
}

pop::Server& PopClient::Implementation::describe() {
  forgetFailure();
  return server_;
}

void PopClient::Implementation::forgetFailure() {
  lastError = 0;
  errorText.clear();
}

void PopClient::Implementation::remember(const PopFailure& failure) {
  lastError = failure.number();
  errorText = failure.what();
}

std::int16_t PopMessages::Count() const { return client_.implementation_->count(); }
PopMessage& PopMessages::Item(std::int16_t index) { return client_.implementation_->item(index); }
void PopMessages::FetchAll() { client_.implementation_->fetchAll(); }
void PopMessages::FetchOriginal(std::int16_t index, const Take& take) {
  client_.implementation_->fetchOriginal(index, take);
}
void PopMessages::ListMessages(Identifiers wanted) { client_.implementation_->listMessages(wanted); }

PopClient::PopClient(const Surroundings& surroundings)
    : implementation_(std::make_unique<Implementation>(*this, surroundings)) {}
PopClient::~PopClient() = default;

void PopClient::HostName(const std::string& host) { implementation_->describe().host = host; }
void PopClient::Port(std::int32_t port) { implementation_->describe().port = port; }
void PopClient::Login(const std::string& login) { implementation_->describe().credentials.login = login; }
void PopClient::Password(const std::string& password) { implementation_->describe().credentials.password = password; }
void PopClient::Security(int security) { implementation_->describe().secure = security == 3; }

void PopClient::Demand(const CertificateDemand& demand) { implementation_->describe().demand = demand; }
const ServerCertificate& PopClient::Certificate() const { return implementation_->certificate; }

void PopClient::ListAhead(bool likely) { implementation_->describe().listAhead = likely; }

void PopClient::Timeout(std::int16_t seconds) {
  implementation_->describe().timeOut = std::chrono::seconds(std::max<std::int16_t>(seconds, 1));
}

void PopClient::Blocking(bool blocking) {
  if (!blocking) throw invalidCallFailure();
}

void PopClient::AuxiliaryMode(int mode) {
  if (mode != 0) throw invalidCallFailure();
}

void PopClient::Notification(IPopClientNotify* receiver) { implementation_->receiver = receiver; }

void PopClient::Connect() { implementation_->connect(); }
void PopClient::Disconnect() { implementation_->disconnect(); }
PopMessages& PopClient::Messages() { return implementation_->messages; }
std::int32_t PopClient::LastError() const { return implementation_->lastError; }
const std::string& PopClient::ErrorText() const { return implementation_->errorText; }

}  // namespace velmora
