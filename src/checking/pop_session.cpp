#include "checking/pop_session.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "accounts/decisions/account_texts.h"
#include "accounts/read_password.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "checking/decisions/certificate_texts.h"
#include "checking/examine_certificate.h"
#include "checking/fetch_original.h"
#include "messages/decisions/pictures.h"
#include "messages/message_capture.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace velmora {

namespace {

constexpr int plainSecurity = 0;
constexpr int tlsSecurity = 3;

void showProgress(Program& program, std::int32_t position, std::int32_t total) {
  MainWindow& frmMain = program.frmMain;
  frmMain.ProgressBar.Min = 0;
  frmMain.ProgressBar.Max = total;
  frmMain.ProgressBar.Value = position;
  const double share = total > 0 ? static_cast<double>(position) / total : 1.0;
  frmMain.StatusBar.Panels(3).Text = std::to_string(std::lrint(share * 100)) + " % Complete";
  frmMain.StatusBar.Panels(4).Text = "Retrieving... (" + std::to_string(program.connection.ReceivedCount) + " of " +
                                     std::to_string(currentClient(program).Messages().Count()) + ")";
}

/// A program that is ending gets no new client.
void stopRetrieval(Program& program) {
  if (program.activity == Activity::Ending) return;
  CloseConnection(program);
  CreatePopClient(program);
}

class PopEvents : public IPopClientNotify {
 public:
  explicit PopEvents(Program& program) : program_(program) {}

  void Connected(PopClient& /*owner*/) override { program_.connection.PopConnected = true; }

  void Progress(PopClient& /*owner*/, std::int32_t position, std::int32_t total) override {
    program_.frmMain.ProgressBar.Width = program_.frmMain.StatusBar.Panels(1).Width;
    if (program_.connection.StopRequested) {
      stopRetrieval(program_);
    } else if (program_.activity == Activity::Fetching) {
      ShowOriginalProgress(program_, std::min(position, total), total);
    } else {
      showProgress(program_, std::min(position, total), total);
    }
  }

  void Received(PopClient& /*owner*/, const PopMessage& /*message*/) override {
    // It begins with 1, so that the last message of the largest mailbox would take it beyond its bound.
    if (program_.connection.ReceivedCount < std::numeric_limits<std::int16_t>::max())
      ++program_.connection.ReceivedCount;
  }

 private:
  Program& program_;
};

/// True where the messages were retrieved and nobody asked to stop, or where nothing was reached at all.
bool retrieve(Program& program, std::int16_t account) {
  PrepareConnection(program, account);
  // A check that may end with the count shall cost no more than that.
  const bool mayBeQuick = program.options.QuickCheck == 1 && program.accounts[account].AcntMsgCount > 0;
  currentClient(program).ListAhead(!mayBeQuick);
  currentClient(program).Connect();
  if (!program.connection.PopConnected) return true;
  program.accounts[account].AcntConnected = true;
  if (program.frmMain.State != WindowState::Minimised) program.frmMain.ProgressBar.Visible = true;
  ProcessMessages(program, account);
  if (program.connection.StopRequested) return false;
  CloseConnection(program);
  return true;
}

/// A password that can't be had is no failure of the client, which may still tell of an earlier one.
FailureReport reportOf(const Program& program, const std::exception& failure) {
  const FailureReport own = describe(failure);
  return own.number == pop_failure::passwordOutOfReach ? own : lastClientFailure(program);
}

/// What is told of a failure, as a line and in a box.
struct ToldFailure {
  FailureReport report;
  Question box;
};

ToldFailure toldOf(const Program& program, const Account& account, const std::exception& failure,
                   std::string_view title) {
  FailureReport report = reportOf(program, failure);
  if (report.number <= 0) {
    report = describe(failure);
    return {report, unexpectedError(program.AppTitle, account.AcntName, report, title)};
  }
  if (report.number == pop_failure::passwordOutOfReach) {
    return {report, passwordError(program.AppTitle, account.AcntName, report, title)};
  }
  if (report.number == pop_failure::certificateRefused) {
    report.text = certificateTrouble(account, program.connection.PopClient->Certificate());
  }
  return {report, connectionError(program.AppTitle, account.AcntName, report, title)};
}

void reportConnectFailure(Program& program, std::int16_t account, const std::exception& failure) {
  CloseConnection(program);
  const bool silenced =
      program.options.SuppressConnectErrors == 1 && isSilencedOnConnect(reportOf(program, failure).number);
  if (silenced || IsUserAskedAboutCertificate(program, failure)) return;
  ShowFailure(program, account, failure, failure_title::establishing);
}

void showStopping(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.tbrButtons[stopRetrievalBar].Buttons.front().Caption = "Terminating...      ";
  frmMain.ProgressBar.Visible = false;
  frmMain.StatusBar.Panels(1).Text = "Terminating Connection...Please Wait";
  frmMain.StatusBar.Panels(4).Text = "Stopping Retrieve... " + std::to_string(program.connection.ReceivedCount);
  frmMain.tmrRetrieveMessage.Enabled = false;
}

}  // namespace

std::unique_ptr<IPopClientNotify> makePopEvents(Program& program) { return std::make_unique<PopEvents>(program); }

void CreatePopClient(Program& program) {
  program.connection.PopClient = program.platform.makePopClient();
  program.connection.PopClient->Notification(program.connection.popEvents.get());
}

PopClient& currentClient(Program& program) {
  if (!program.connection.PopClient) throw invalidCallFailure();
  return *program.connection.PopClient;
}

FailureReport lastClientFailure(const Program& program) {
  if (!program.connection.PopClient) return {};
  return {program.connection.PopClient->LastError(), program.connection.PopClient->ErrorText()};
}

void DescribeConnection(PopClient& client, const Account& account, const Options& options) {
  client.Security(account.AcntSecure == 1 ? tlsSecurity : plainSecurity);
  client.Timeout(options.ConnectTimeOut);
  client.HostName(account.AcntServer);
  client.Port(text::toInt32(account.AcntPort));
  client.Login(account.AcntLoginID);
  client.Password(account.AcntPassword);
  client.Demand({.refuseUntrusted = options.RefuseUntrusted == 1, .accepted = account.AcntCertificate});
  client.ListAhead(true);
  client.Blocking(true);
  client.AuxiliaryMode(0);
}

void PrepareConnection(Program& program, std::int16_t account) {
  MainWindow& frmMain = program.frmMain;
  frmMain.Pointer = MousePointer::Hourglass;
  frmMain.tmrRetrieveMessage.Enabled = true;
  if (program.activity != Activity::Testing)
    frmMain.StatusBar.Panels(1).Text = program.accounts[account].AcntName + " - Connection in Progress";
  const std::string password = PasswordOf(program, account);
  auto settings = static_cast<const Account&>(program.accounts[account]);
  settings.AcntPassword = password;
  DescribeConnection(currentClient(program), settings, program.options);
  program.connection.PopConnected = false;
}

/// The password may be what it waits for.
void StopConnection(Program& program) {
  program.connection.StopRequested = true;
  program.platform.keyring().giveUp();
}

void CloseConnection(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.tmrRetrieveMessage.Enabled = false;
  frmMain.Pointer = MousePointer::Default;
  frmMain.ProgressBar.Visible = false;
  if (program.connection.PopClient) program.connection.PopClient->Disconnect();
}

void RetrieveAccount(Program& program, std::int16_t account) {
  try {
    if (WithAcceptedCertificate(program, account, [&] { return retrieve(program, account); })) return;
  } catch (const std::exception& failure) {
    reportConnectFailure(program, account, failure);
  }
  CloseConnection(program);
  ClearRetrieval(program.accounts[account]);
}

void TestConnection(Program& program, std::int16_t account) {
  const Account& tested = program.accounts[account];
  if (!isPort(tested.AcntPort)) {
    program.platform.MsgBox(portError(program.AppTitle, tested.AcntName));
    return;
  }
  try {
    WithAcceptedCertificate(program, account, [&] {
      PrepareConnection(program, account);
      currentClient(program).Connect();
    });
    currentClient(program).Messages().ListMessages(PopMessages::Identifiers::Listed);  // nobody reads them here
    CloseConnection(program);
    if (program.connection.PopConnected) program.platform.MsgBox(testSucceeded(program.AppTitle));
  } catch (const std::exception& failure) {
    CloseConnection(program);
    if (!IsUserAskedAboutCertificate(program, failure)) ShowFailure(program, account, failure, failure_title::test);
  }
}

void ClearRetrieval(AccountState& account) {
  account.AcntMsgCount = account.AcntNewCount = account.AcntSpamCount = account.AcntDeleteCount = 0;
  account.AcntHasMessages = account.AcntHasNew = account.AcntConnected = false;
}

void ShowFailure(Program& program, std::int16_t account, const std::exception& failure, std::string_view title) {
  if (program.activity == Activity::Ending) return;
  Accounts::Row& row = program.accounts[account];
  const ToldFailure told = toldOf(program, row, failure, title);
  if (told.report.number == pop_failure::loginRefused)
    row.AcntPasswordForNow.clear();  // the next one may be the right one
  const bool wasUsersWish = told.report.number == pop_failure::passwordOutOfReach && told.report.text.empty();
  if (wasUsersWish) return;
  if (auto& collected = program.walk.notices.failures) {
    collected->accounts.push_back({row.AcntName, failureReason(told.report)});
    collected->boxes.push_back(told.box);
  } else {
    program.platform.MsgBox(told.box);
  }
}

void tmrRetrieveMessage_Timer(Program& program) {
  constexpr int frames = 8;
  program.connection.AnimationFrame =
      program.connection.AnimationFrame >= frames ? 1 : program.connection.AnimationFrame + 1;
  const bool tests = program.activity == Activity::Testing;
  TabStrip& strip = tests ? program.frmMain.TabStripAcnts : program.frmMain.TabStripEmail;
  const int tab = tests ? program.accounts.AcntCurrent : strip.SelectedItem();
  strip.Tabs(tab).Image = spinPicture(program.connection.AnimationFrame);
  if (program.connection.StopRequested) showStopping(program);
}

}  // namespace velmora
