#include "checking/deletion.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "checking/decisions/check_texts.h"
#include "checking/pop_session.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// Message numbers, in order.
using Numbers = std::vector<std::int16_t>;

Numbers chosenMessages(Program& program, std::int16_t account, bool ruleMarked) {
  Numbers chosen;
  std::int32_t number = 0;
  for (const MailMessage& message : messagesOf(program, account)) {
    ++number;
    const bool take = ruleMarked ? message.Spam : program.frmMain.lvwEmail.IsSelected(number);
    if (take) chosen.push_back(static_cast<std::int16_t>(number));
  }
  return chosen;
}

bool isConfirmed(Program& program, std::int16_t account, std::size_t count, bool ruleMarked) {
  const std::string& name = program.accounts[account].AcntName;
  return program.platform.MsgBox(deleteQuestion(program.AppTitle, name, count, ruleMarked)) == Answer::Yes;
}

/// A message without an identifier can't be told from another one, so it stays.
void markOnServer(Program& program, std::int16_t account, const Numbers& chosen) {
  currentClient(program).Messages().ListMessages();
  PopMessages& server = currentClient(program).Messages();
  std::unordered_set<std::string_view> identifiers;
  for (const std::int16_t n : chosen) identifiers.insert(program.messages.at(account, n).MsgID);
  const std::int16_t count = server.Count();
  for (std::int16_t i = 0; i < count; ++i) {
    PopMessage& item = server.Item(i);
    if (!item.Uid.empty() && identifiers.contains(item.Uid)) item.Deleted = true;
  }
}

/// Returns whether the server took everything.
bool deleteOnServer(Program& program, std::int16_t account, const Numbers& chosen) {
  try {
    PrepareConnection(program, account);
    currentClient(program).Connect();
    if (program.connection.PopConnected) markOnServer(program, account, chosen);
    CloseConnection(program);
    return true;
  } catch (const std::exception& failure) {
    CloseConnection(program);
    SetAccountTabImage(program, account);  // the animation has left its own there
    ShowFailure(program, account, failure, failure_title::deleting);
    return false;
  }
}

void countRemaining(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  row.AcntDeleteCount = row.AcntSpamCount = row.AcntNewCount = 0;
  for (const MailMessage& message : messagesOf(program, account)) {
    if (message.Delete) ++row.AcntDeleteCount;
    if (message.Spam) ++row.AcntSpamCount;
    if (message.New) ++row.AcntNewCount;
  }
}

void removeFromStore(Program& program, std::int16_t account, const Numbers& chosen) {
  Accounts::Row& row = program.accounts[account];
  program.messages.Remove(account, row.AcntMsgCount, chosen);
  row.AcntMsgCount = text::toInt16(row.AcntMsgCount - static_cast<std::int64_t>(chosen.size()));
  row.AcntPrevCount = row.AcntMsgCount;
  countRemaining(program, account);
  row.AcntStatusText = statusTextAfterDeletion(row);
}

/// Nothing else can be done meanwhile, the stop of an earlier check is none of this, and the account that was showing
/// is shown again afterwards.
void withInterfaceOff(Program& program, const std::function<void(std::int16_t current)>& deletion) {
  const std::int16_t current = program.accounts.AcntCurrent;
  program.connection.StopRequested = false;
  SetCheckingInterface(program, Activity::Deleting);
  deletion(current);
  ShowTabAnew(program, current);
  SetCheckingInterface(program, Activity::Idle);
}

}  // namespace

void DeleteMessages(Program& program, std::int16_t account, bool ruleMarked, Confirmation confirmation) {
  const Numbers chosen = chosenMessages(program, account, ruleMarked);
  const bool asks = confirmation != Confirmation::Never && program.options.DeleteConfirmation == 1;
  if (asks && !isConfirmed(program, account, chosen.size(), ruleMarked)) return;
  if (!deleteOnServer(program, account, chosen)) return;
  removeFromStore(program, account, chosen);
  ShowAccountMessages(program, account);
}

void DeleteSelection(Program& program) {
  withInterfaceOff(program, [&program](std::int16_t current) { DeleteMessages(program, current, false); });
}

void DeleteSpamMessages(Program& program) {
  SuspendAutoCheck(program, TimerAction::Suspend);
  withInterfaceOff(program, [&program](std::int16_t /*current*/) {
    for (const std::int16_t number : program.accounts.numbers()) {
      if (program.accounts[number].AcntSpamCount <= 0) continue;
      ShowTabAnew(program, number);
      DeleteMessages(program, number, true);
    }
  });
  SuspendAutoCheck(program, TimerAction::Restore);
}

void DeleteSelectedMessages(Program& program) {
  SuspendAutoCheck(program, TimerAction::Suspend);
  DeleteSelection(program);
  SuspendAutoCheck(program, TimerAction::Restore);
}

}  // namespace velmora
