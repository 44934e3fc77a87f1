#include "platform/qt/services/qt_keyring.h"

#include <qt6keychain/keychain.h>

#include <QDeadlineTimer>
#include <chrono>
#include <memory>

#include "platform/qt/services/keyring_lock.h"
#include "platform/qt/services/waiting.h"
#include "platform/qt/strings.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): a job deletes itself once it has been answered

namespace velmora {

namespace {

using Outcome = KeyringAnswer::Outcome;
using namespace std::chrono_literals;

/// The keyring may be asking its user for the password of all passwords.
constexpr std::chrono::milliseconds patience = 2min;

/// Others may write into the keyring, too: what is longer is no password of this program.
constexpr qsizetype longestPassword = 10'000;

QString service() { return QStringLiteral("Velmora"); }

Outcome outcomeOf(QKeychain::Error error) {
  switch (error) {
    case QKeychain::NoError:
      return Outcome::Done;
    case QKeychain::EntryNotFound:
      return Outcome::NotFound;
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
    case QKeychain::CouldNotDeleteEntry:
      return Outcome::Refused;
    default:
      return Outcome::NotThere;
  }
}

KeyringAnswer answerOf(const QKeychain::Job& job) {
  KeyringAnswer answer{.outcome = outcomeOf(job.error())};
  if (answer.outcome == Outcome::NotThere) answer.detail = utf8(job.errorString());
  const auto* reading = dynamic_cast<const QKeychain::ReadPasswordJob*>(&job);
  if (reading == nullptr || !answer.isDone()) return answer;
  const QString password = reading->textData();
  if (password.size() > longestPassword) return {.outcome = Outcome::NotFound};
  answer.password = utf8(password);
  return answer;
}

/// What lies in a keyring that stays locked is neither found nor removed, and the library tells that like any absence.
KeyringAnswer unlessLocked(const KeyringAnswer& answer) {
  return isKeyringLocked() ? KeyringAnswer{.outcome = Outcome::Refused} : answer;
}

}  // namespace

/// Outlives the wait where the answer comes after it.
struct QtKeyring::Call {
  Waiting waiting;
  bool isOver = false;
  bool isGivenUp = false;
  KeyringAnswer answer;
};

QtKeyring::QtKeyring() = default;
QtKeyring::~QtKeyring() = default;

KeyringAnswer QtKeyring::read(const std::string& key) {
  const KeyringAnswer answer = carryOut(new QKeychain::ReadPasswordJob(service()), key);
  return answer.outcome == Outcome::NotFound ? unlessLocked(answer) : answer;
}

KeyringAnswer QtKeyring::write(const std::string& key, const std::string& password) {
  auto* job = new QKeychain::WritePasswordJob(service());
  job->setTextData(qt(password));
  return carryOut(job, key);
}

KeyringAnswer QtKeyring::remove(const std::string& key) {
  const KeyringAnswer answer = carryOut(new QKeychain::DeletePasswordJob(service()), key);
  return answer.isDone() ? unlessLocked(answer) : answer;
}

/// The library can't take a call back: one that takes too long goes on, and nobody looks at its answer.
KeyringAnswer QtKeyring::carryOut(QKeychain::Job* job, const std::string& key) {
  const std::unique_ptr<QKeychain::Job> unused(unanswered_ ? job : nullptr);
  if (unused) return {.outcome = Outcome::Refused};
  const auto call = std::make_shared<Call>();
  QObject::connect(job, &QKeychain::Job::finished, job, [call](QKeychain::Job* done) {
    call->answer = answerOf(*done);
    call->isOver = true;
    call->waiting.wake();
  });
  job->setInsecureFallback(false);
  job->setKey(qt(key));
  unanswered_ = job;
  waiting_ = call;
  job->start();
  const QDeadlineTimer deadline(patience);
  while (!call->isOver && !call->isGivenUp && !deadline.hasExpired()) {
    if (!call->waiting.wait(std::chrono::milliseconds(deadline.remainingTime()))) break;
  }
  if (!call->isOver) return {.outcome = Outcome::Refused};
  unanswered_.clear();
  return call->answer;
}

void QtKeyring::giveUp() {
  const auto call = waiting_.lock();
  if (!call) return;
  call->isGivenUp = true;
  call->waiting.wake();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
