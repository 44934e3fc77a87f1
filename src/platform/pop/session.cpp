#include "platform/pop/session.h"

#include <utility>

#include "platform/failure.h"
#include "platform/pop/listing.h"
#include "platform/pop/quit.h"

namespace velmora::pop {
namespace {

constexpr const char* pipelining = "PIPELINING";

/// What a server may answer because the login before has just ended in the midst of it.
bool isOfHaste(const PopFailure& failure) {
  return failure.number() == pop_failure::mailboxInUse || failure.number() == pop_failure::temporaryTrouble;
}

std::vector<std::string> openingCommands() {
  std::vector<std::string> commands = listCommands();
  commands.insert(commands.begin(), maildropCommand);
  return commands;
}

bool isOddLogin(const PopFailure& failure) {
  return failure.number() == pop_failure::closedWhileLoggingIn || failure.number() == pop_failure::timedOut ||
         failure.number() == pop_failure::protocolBroken;
}

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
  Manner manner = {.capa = !habit().noCapa, .pipelining = !habit().oneByOne, .utf8 = !habit().noUtf8};
  for (std::optional<PopFailure> before;;) {
    try {
      connectAndLogIn(manner);
      break;
    } catch (const PopFailure& failure) {
      habit().announced.reset();
      conversation_->requireOpen();
      if (before && isOfHaste(failure)) throw PopFailure(*before);
      manner = withoutWhatFailed(manner);
      if (!before) before = failure;
    }
  }
  // Only now is it sure what was to blame, and that it was neither the line nor the server.
  habit().noCapa = !manner.capa;
  habit().oneByOne = !manner.pipelining;
  habit().noUtf8 = !manner.utf8;
}

/// Leaves out what may have made the login fail that has just failed. Throws its failure where nothing may.
Session::Manner Session::withoutWhatFailed(Manner manner) {
  try {
    throw;
  } catch (const CapabilitiesFailure&) {
    manner.capa = false;
  } catch (const CredentialsRefusal& refusal) {
    auto& refused = habit().refusedWithoutUtf8;
    const std::string credentials = server_.credentials.login + '\n' + server_.credentials.password;
    if (!manner.utf8 && !habit().noUtf8) refused.insert(credentials);
    // Each refusal may count towards a lock of the account, so that it isn't risked twice for nothing.
    if (!loginWithUtf8_ || refusal.isSure() || refused.contains(credentials)) throw;
    manner.utf8 = false;
  } catch (const PopFailure& failure) {
    if (!isOddLogin(failure) || !(loginPipelined_ || loginWithUtf8_)) throw;
    (loginPipelined_ ? manner.pipelining : manner.utf8) = false;
  }
  return manner;
}

void Session::connectAndLogIn(const Manner& manner) {
  if (!isClosed()) close();
  conversation_.emplace(transport_, server_.timeOut, server_.credentials.password, whileWaiting_);
  loginPipelined_ = loginWithUtf8_ = false;
  events_.entered(PopState::Connecting);
  conversation_->requireOpen();
  conversation_->connect(server_.host, static_cast<std::uint16_t>(server_.port), server_.secure);
  if (server_.secure) events_.certificate(transport_.certificate());
  greet(*conversation_, server_.secure);
  events_.entered(PopState::Authorization);
  authorize(manner);
  maildrop_ = askMaildrop(*conversation_);
  conversation_->enter(Phase::Working);
}

/// Sends ahead what is almost sure to follow, so that it costs no time of its own; yet nothing across a login: with
/// some servers one process reads the password, another one what comes behind it, and what the first one has read ahead
/// is lost.
void Session::authorize(const Manner& manner) {
  const bool asks = manner.capa && !habit().announced;
  Announcement announced = habit().announced.value_or(Announcement());
  if (asks) announced.before = askCapabilities(*conversation_);
  loginPipelined_ = manner.pipelining && announced.before.contains(pipelining);
  loginWithUtf8_ = manner.utf8 && announced.before.contains("UTF8 USER");
  if (loginPipelined_) conversation_->sendAhead(logInCommands(server_.credentials, loginWithUtf8_));
  logIn(*conversation_, server_.credentials, announced.before, loginWithUtf8_);
  events_.entered(PopState::Transaction);
  if (asks && !loginPipelined_) announced.after = askCapabilities(*conversation_);
  pipelined_ = loginPipelined_ || (manner.pipelining && announced.after.contains(pipelining));
  if (pipelined_) conversation_->sendAhead(openingCommands());
  habit().announced = std::move(announced);
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
  habit().oneByOne = true;
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
    if (pipelined_ && isOddity(failure)) habit().oneByOne = true;
    throw;
  }
}

void Session::close() {
  if (conversation_) conversation_->close();
}

}  // namespace velmora::pop
