#include "checking/fetch_original.h"

#include <exception>

#include "app/child_windows.h"
#include "app/program.h"
#include "app/status_bar.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "checking/decisions/check_texts.h"
#include "messages/message_list.h"

namespace velmora {

namespace {

/// The help's topic of what is fetched here.
constexpr int readingHelp = 131;

/// Where the message stands, and how many bear its identifier.
struct Found {
  std::int16_t index = 0;
  int count = 0;
};

Found find(PopMessages& server, const std::string& identifier) {
  Found found;
  const std::int16_t count = server.Count();
  for (std::int16_t i = 0; i < count; ++i) {
    if (server.Item(i).Uid != identifier) continue;
    found.index = i;
    ++found.count;
  }
  return found;
}

FetchOutcome fetch(Program& program, std::int16_t account, const std::string& identifier, const OriginalTaker& taker) {
  PrepareConnection(program, account);
  currentClient(program).Connect();
  currentClient(program).Messages().ListMessages();
  const Found found = find(currentClient(program).Messages(), identifier);
  if (found.count != 1) {
    CloseConnection(program);
    return found.count == 0 ? FetchOutcome::Gone : FetchOutcome::NotUnique;
  }
  bool kept = true;
  try {
    currentClient(program).Messages().FetchOriginal(found.index,
                                                    [&](std::string_view bytes) { return kept = taker.take(bytes); });
  } catch (const PopFailure&) {
    if (kept) throw;
  }
  CloseConnection(program);
  if (!kept) return FetchOutcome::NotKept;
  const bool isKept = !program.connection.StopRequested && taker.keep();
  if (program.connection.StopRequested) return FetchOutcome::Stopped;
  return isKept ? FetchOutcome::Fetched : FetchOutcome::NotKept;
}

/// A stop looks like a failure of the client that it takes away.
FetchOutcome fetchOrTell(Program& program, std::int16_t account, const std::string& identifier,
                         const OriginalTaker& taker) {
  try {
    return fetch(program, account, identifier, taker);
  } catch (const std::exception& failure) {
    CloseConnection(program);
    if (program.connection.StopRequested) return FetchOutcome::Stopped;
    ShowFailure(program, account, failure, failure_title::fetchingOriginal);
    return FetchOutcome::Failed;
  }
}

/// Whatever the connection is at, it ends, and what runs fails.
void stop(Program& program) {
  StopConnection(program);
  if (program.connection.PopClient) program.connection.PopClient->Disconnect();
}

}  // namespace

FetchOutcome FetchOriginal(Program& program, std::int16_t account, const std::string& identifier,
                           const OriginalTaker& taker) {
  program.connection.StopRequested = false;
  program.frmOriginal.lblProgress.Caption = fetchingText(program.accounts[account].AcntName);
  program.frmOriginal.ProgressBar.Max = 0;
  SetCheckingInterface(program, Activity::Fetching);
  ShowChildWindow(program, program.frmOriginal);
  if (program.frmOriginal.Visible) program.frmOriginal.activate.raise();
  const FetchOutcome outcome = fetchOrTell(program, account, identifier, taker);
  program.frmOriginal.Visible = false;
  SetAccountTabImage(program, account);  // the animation has left its own there
  RefreshAccountPanels(program, program.accounts.AcntCurrent);
  SetCheckingInterface(program, Activity::Idle);
  LetAutoCheckGoOn(program);  // for a preview that was closed meanwhile
  return outcome;
}

void ConnectFetchOriginal(Program& program) {
  program.frmOriginal.Caption = program.AppTitle + " - Fetching a Message";
  program.frmOriginal.Help = [&program] { program.platform.showHelp(readingHelp); };
  program.frmOriginal.Close = [&program] { stop(program); };
  program.frmOriginal.tbrProgress.ButtonClick = [&program](Button&) { stop(program); };
}

void ShowOriginalProgress(Program& program, std::int32_t position, std::int32_t total) {
  program.frmOriginal.ProgressBar.Max = total;
  program.frmOriginal.ProgressBar.Value = position;
}

}  // namespace velmora
