#include "platform/pop/session.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "platform/failure.h"
#include "platform/pop/listing.h"
#include "platform/pop/quit.h"

namespace velmora::pop {
namespace {

constexpr const char* pipelining = "PIPELINING";

/// What comes to an end by itself, as the lock of a mailbox whose connection has just ended in the midst of it.
bool isPassing(const PopFailure& failure) {
  constexpr std::array passing = {pop_failure::mailboxInUse,    pop_failure::temporaryTrouble,
                                  pop_failure::noGreeting,      pop_failure::greetedWithRefusal,
                                  pop_failure::connectionReset, pop_failure::connectionRefused};
  return std::ranges::find(passing, failure.number()) != passing.end();
}

std::vector<std::string> openingCommands(bool withListing) {
  std::vector<std::string> commands;
  if (withListing) commands = listCommands();
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
  sentUtf8_ = false;
  try {
    openInTwoAttempts();
  } catch (const PopFailure& failure) {
    habit().announced.reset();
    if (sentUtf8_ && !isPassing(failure) && !conversation_->isClosed()) ++utf8Habit().failures;
    throw;
  }
}

/// At the second attempt all is left out that may have made the first one fail.
void Session::openInTwoAttempts() {
  const Manner manner = {.capa = habit().mayBeAsked(), .utf8 = utf8Habit().mayBeTried()};
  try {
    connectAndLogIn(manner);
  } catch (const PopFailure& failure) {
    conversation_->requireOpen();
    const Manner simpler = withoutWhatFailed(manner);
    habit().announced.reset();
    try {
      connectAndLogIn(simpler);
    } catch (const PopFailure& second) {
      conversation_->requireOpen();
      if (simpler.capa && isPassing(second)) throw PopFailure(failure);
      throw;
    }
    if (manner.utf8 && !simpler.utf8) ++utf8Habit().blamed;
  }
}

/// Throws the failure of the login that has just failed where nothing may be left out.
Session::Manner Session::withoutWhatFailed(Manner manner) {
  // Each attempt may count towards a lock of the account, so that it isn't risked twice for nothing.
  const bool maySuspectUtf8 = loginWithUtf8_ && !pipelined_ && utf8Habit().failures == 0;
  try {
    throw;
  } catch (const CapabilitiesFailure&) {
    ++habit().capaBlamed;
    manner.capa = false;
  } catch (const CredentialsRefusal& refusal) {
    if (!maySuspectUtf8 || refusal.isSure()) throw;
    manner.utf8 = false;
  } catch (const PopFailure& failure) {
    const bool maySuspectPipelining = loginPipelined_ || pipelined_;
    if (!isOddLogin(failure) || !(maySuspectPipelining || maySuspectUtf8)) throw;
    // That holds whatever comes of the second attempt, which may fail for what the first one has left behind.
    habit().oneByOne = habit().oneByOne || maySuspectPipelining;
    manner.utf8 = manner.utf8 && !maySuspectUtf8;
  }
  return manner;
}

Utf8Habit& Session::utf8Habit() {
  const Credentials& credentials = server_.credentials;
  return habit().utf8[std::hash<std::string>()(credentials.login + '\n' + credentials.password)];
}

void Session::connectAndLogIn(const Manner& manner) {
  if (!isClosed()) close();
  conversation_.emplace(transport_, server_.timeOut, server_.credentials.password, whileWaiting_,
                        events_.log ? events_.log() : LogLine());
  loginPipelined_ = loginWithUtf8_ = pipelined_ = false;
  events_.entered(PopState::Connecting);
  conversation_->requireOpen();
  conversation_->connect(server_.host, static_cast<std::uint16_t>(server_.port), server_.secure);
  if (server_.secure) examineCertificate();
  greet(*conversation_, server_.secure);
  events_.entered(PopState::Authorization);
  authorize(manner);
  maildrop_ = askMaildrop(*conversation_);
  learn(manner);
  conversation_->enter(Phase::Working);
}

/// Before anything is said to the server.
void Session::examineCertificate() {
  const ServerCertificate shown = transport_.certificate();
  events_.certificate(shown);
  conversation_->requireOpen();
  if (server_.demand.isMetBy(shown)) return;
  throw PopFailure(pop_failure::certificateRefused,
                   shown.fingerprint.empty() ? "The server has shown no certificate."
                                             : "The server's certificate can't be trusted: " + shown.errorText);
}

/// Sends ahead what is almost sure to follow, so that it costs no time of its own; yet nothing across a login: with
/// some servers one process reads the password, another one what comes behind it, and what the first one has read ahead
/// is lost. Nor does a password follow where the server may refuse the user name.
void Session::authorize(const Manner& manner) {
  const bool asks = manner.capa && !habit().announced;
  Announcement announced = habit().announced.value_or(Announcement());
  if (asks) announced.before = askCapabilities(*conversation_);
  const bool offersUtf8 = announced.before.contains("UTF8 USER");
  loginPipelined_ = !habit().oneByOne && announced.before.contains(pipelining) && announced.before.contains("USER");
  loginWithUtf8_ = manner.utf8 && offersUtf8;
  sentUtf8_ = sentUtf8_ || offersUtf8;
  if (loginPipelined_) conversation_->sendAhead(logInCommands(server_.credentials, loginWithUtf8_));
  if (loginWithUtf8_) loginWithUtf8_ = askUtf8(*conversation_);
  logIn(*conversation_, server_.credentials, announced.before);
  events_.entered(PopState::Transaction);
  if (asks && !announced.before.contains(pipelining)) announced.after = askCapabilities(*conversation_);
  pipelined_ = !habit().oneByOne && (announced.before.contains(pipelining) || announced.after.contains(pipelining));
  if (pipelined_) conversation_->sendAhead(openingCommands(server_.listAhead));
  announced_ = std::move(announced);
}

/// The mailbox is open.
void Session::learn(const Manner& manner) {
  utf8Habit().failures = 0;
  if (loginWithUtf8_) utf8Habit().blamed = 0;
  if (!manner.capa) return;
  habit().capaBlamed = 0;
  habit().announced = announced_;
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

/// What stands in the way of a new login, as the mailbox that the dead session still holds, is not what went wrong; but
/// that another server answers now is to be known.
void Session::openAgainAfter(const PopFailure& failure) {
  const std::int32_t count = maildrop_.count;
  habit().oneByOne = true;
  try {
    open();
  } catch (const PopFailure& second) {
    if (second.number() == pop_failure::certificateRefused) throw;
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
