#include "platform/pop/session.h"

#include <utility>

#include "platform/failure.h"
#include "platform/pop/quit.h"

namespace velmora::pop {
namespace {

bool isOddity(const PopFailure& failure) {
  return failure.number() == pop_failure::connectionLost || failure.number() == pop_failure::protocolBroken ||
         failure.number() == pop_failure::silentWhileFetching;
}

/// Lets go of a job's handler when the job is done, however it ends.
class Watching {
 public:
  Watching(Conversation::WhileWaiting& handler, const Conversation::WhileWaiting& ofJob) : handler_(handler) {
    handler_ = ofJob;
  }
  ~Watching() { handler_ = nullptr; }
  Watching(const Watching&) = delete;
  Watching& operator=(const Watching&) = delete;

 private:
  Conversation::WhileWaiting& handler_;
};

}  // namespace

Session::Session(Transport& transport, Server server, ServerHabits& habits, Events events)
    : transport_(transport), server_(std::move(server)), habits_(habits), events_(std::move(events)) {}

void Session::open() {
  requireSendable(server_.credentials);
  try {
    connectAndLogIn(!habits_.noCapa.contains(server_.key()));
  } catch (const CapabilitiesFailure&) {
    conversation_->requireOpen();
    connectAndLogIn(false);
    // Only now is it sure that CAPA was to blame, and not the line or the server.
    habits_.noCapa.insert(server_.key());
  }
}

void Session::connectAndLogIn(bool withCapabilities) {
  if (!isClosed()) close();
  conversation_.emplace(transport_, server_.timeOut, server_.credentials.password, whileWaiting_);
  events_.entered(PopState::Connecting);
  conversation_->requireOpen();
  conversation_->connect(server_.host, static_cast<std::uint16_t>(server_.port), server_.secure);
  if (server_.secure) events_.certificate(transport_.certificate());
  greet(*conversation_, server_.secure);
  events_.entered(PopState::Authorization);
  authorize(*conversation_, withCapabilities);
  maildrop_ = askMaildrop(*conversation_);
  conversation_->enter(Phase::Working);
}

void Session::authorize(Conversation& conversation, bool withCapabilities) {
  const Capabilities before = withCapabilities ? askCapabilities(conversation) : Capabilities();
  logIn(conversation, server_.credentials, before);
  events_.entered(PopState::Transaction);
  const Capabilities after = withCapabilities ? askCapabilities(conversation) : Capabilities();
  pipelined_ =
      (before.contains("PIPELINING") || after.contains("PIPELINING")) && !habits_.oneByOne.contains(server_.key());
}

void Session::run(const Job& job, const Conversation::WhileWaiting& whileWaiting) {
  const Watching watching(whileWaiting_, whileWaiting);
  try {
    job(channel());
  } catch (const PopFailure& failure) {
    if (!pipelined_ || !isOddity(failure)) throw;
    conversation_->requireOpen();
    openAgainAfter(failure);
    job(channel());
  }
  conversation_->requireOpen();
}

void Session::runOnce(const Job& job, const Conversation::WhileWaiting& whileWaiting) {
  const Watching watching(whileWaiting_, whileWaiting);
  job(channel());
  conversation_->requireOpen();
}

/// What stands in the way of a new login, as the mailbox that the dead session still holds, is not what went wrong.
void Session::openAgainAfter(const PopFailure& failure) {
  const std::int32_t count = maildrop_.count;
  habits_.oneByOne.insert(server_.key());
  try {
    open();
  } catch (const PopFailure&) {
    throw PopFailure(failure);
  }
  if (maildrop_.count != count)
    throw PopFailure(pop_failure::connectionLost,
                     "The connection to the server was lost, and the mailbox has changed since.");
}

void Session::leave(std::span<const std::int32_t> deletions) {
  if (conversation_->isOutstanding()) close();
  events_.entered(PopState::Update);
  if (deletions.empty()) {
    quit(*conversation_);
    return;
  }
  try {
    deleteAndQuit(channel(), deletions);
  } catch (const PopFailure& failure) {
    if (pipelined_ && isOddity(failure)) habits_.oneByOne.insert(server_.key());
    throw;
  }
}

void Session::close() {
  if (conversation_) conversation_->close();
}

}  // namespace velmora::pop
