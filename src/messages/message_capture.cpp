#include "messages/message_capture.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "app/program.h"
#include "checking/pop_session.h"
#include "messages/decisions/captured_text.h"
#include "messages/message_list.h"
#include "messages/sorting.h"
#include "platform/text.h"
#include "rules/rule_check.h"

namespace velmora {

namespace {

void clearFindings(AccountState& state) {
  state.AcntFetched = state.AcntIncomplete = state.AcntHasNew = state.AcntHasMessages = false;
  state.AcntNewCount = state.AcntSpamCount = state.AcntDeleteCount = 0;
}

/// Takes the texts out of the item: a mailbox is large enough to hold it once.
void fillMessage(MailMessage& message, PopMessage& item, const DateNames& months) {
  message.Size = sizeText(item.Size);
  message.From = cleanFrom(item.Mail.From);
  message.To = cleanTo(item.Mail.To);
  message.Subject = std::move(item.Mail.Subject);
  message.Date = displayDate(generalDate(item.Mail.Date), months);
  message.Raw = std::move(item.Mail.Raw);
  message.Body = std::move(item.Mail.Body);
  message.MsgID = std::move(item.Uid);
  message.Sender = std::move(item.Mail.Sender);
  message.Attach = item.Mail.Attachments > 0;
  message.Attached = std::move(item.Mail.Attached);
}

/// A message without sender, recipient and size did not come in whole. As cleaned recipients are never blank, this
/// has never been true of any message.
bool isIncomplete(const MailMessage& message) {
  return message.From.empty() && message.To.empty() && text::toInt32(message.Size) < 2;
}

void captureMessages(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  std::int16_t index = 0;
  for (MailMessage& message : messagesOf(program, account)) {
    fillMessage(message, currentClient(program).Messages().Item(index++), program.platform.dateNames());
    if (isIncomplete(message)) row.AcntIncomplete = true;
  }
  if (row.AcntIncomplete) program.walk.IncompleteAccounts += row.AcntName + "\r\n";
}

/// Only the rows up to the present count are compared: an identifier that stood beyond it is new again.
void markNewMessages(Program& program, std::int16_t account) {
  const auto messages = messagesOf(program, account);
  std::vector<std::string_view> present;
  std::vector<std::string_view> previous;
  for (const MailMessage& message : messages) {
    present.push_back(message.MsgID);
    previous.push_back(message.PrevMsgID);
  }
  const auto isNew = newFlags(present, previous);
  for (std::size_t i = 0; i < messages.size(); ++i) messages[i].New = isNew[i];
}

/// Checks by hand never set the totals back, so that they may reach their bound, where they stay: only a timed check,
/// which does, reads them.
void addTo(std::int16_t& total, std::int16_t count) {
  total = static_cast<std::int16_t>(std::min<int>(total + count, std::numeric_limits<std::int16_t>::max()));
}

/// Every pass decides the marks afresh.
void markByRules(Program& program, std::int16_t account) {
  RuleWalk walk{program.rules.live};
  for (std::int32_t number = 1; number <= program.accounts[account].AcntMsgCount; ++number) {
    RuleCheck(program, walk, account, static_cast<std::int16_t>(number));
  }
}

void countMessages(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  for (MailMessage& message : messagesOf(program, account)) message.PrevMsgID = message.MsgID;
  addTo(program.walk.TotalMessages, row.AcntMsgCount);
  if (row.AcntMsgCount <= row.AcntPrevCount) return;
  row.AcntHasNew = true;
  row.AcntNewCount = static_cast<std::int16_t>(row.AcntMsgCount - row.AcntPrevCount);
  addTo(program.walk.TotalNew, row.AcntNewCount);
  row.AcntPrevCount = row.AcntMsgCount;
}

/// Fills the account's cells; nothing is fetched where the count alone says that nothing has changed.
void fetchMessages(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  const std::int16_t count = currentClient(program).Messages().Count();
  if (program.options.QuickCheck == 1 && count == row.AcntMsgCount) {
    CloseConnection(program);
    return;
  }
  row.AcntMsgCount = count;
  if (count > program.messages.MessageCapacity()) program.messages.GrowMessageStore(count);
  if (count == 0) {
    CloseConnection(program);
    return;
  }
  program.connection.ReceivedCount = 1;
  currentClient(program).Messages().FetchAll();
  CloseConnection(program);
  captureMessages(program, account);
  program.accounts[account].AcntFetched = true;
}

void retrieveMessages(Program& program, std::int16_t account) {
  clearFindings(program.accounts[account]);
  fetchMessages(program, account);
  if (program.accounts[account].AcntMsgCount > 0) {
    program.accounts[account].AcntHasMessages = true;
    markNewMessages(program, account);
    markByRules(program, account);
    countMessages(program, account);
  }
  if (program.options.MessageSort == 1) SortMessages(program, account, program.order.SortColumnName);
}

}  // namespace

void ProcessMessages(Program& program, std::int16_t account) {
  try {
    retrieveMessages(program, account);
  } catch (const std::exception& failure) {
    CloseConnection(program);
    const bool silenced = program.connection.StopRequested || (program.options.SuppressRetrieveErrors == 1 &&
                                                               isSilencedOnRetrieve(lastClientFailure(program).number));
    if (!silenced) ShowFailure(program, account, failure, failure_title::processing);
    ClearRetrieval(program.accounts[account]);
    program.accounts[account].AcntIncomplete = false;
  }
}

}  // namespace velmora
