#include "rules/rule_fits.h"

#include <algorithm>
#include <utility>

#include "app/interface_state.h"
#include "app/program.h"
#include "platform/failure.h"
#include "rules/decisions/rule_match.h"
#include "rules/decisions/rule_page_texts.h"

namespace velmora {

namespace {

constexpr int rulesHelp = 150;

/// What is done between two turns of the event loop: some hundredths of a second's work at most, but for a message that
/// takes longer.
constexpr std::size_t messagesAtOnce = 2000;
constexpr std::size_t bytesAtOnce = 4 << 20;

bool canTry(const Program& program) {
  return program.activity == Activity::Idle && program.CurrentPage == rulesPage && program.rules.CurrentRule > 0 &&
         program.rules.working[program.rules.CurrentRule].DescCount > 0;
}

bool isTried(const Rule& tried, const Rule& rule) {
  return tried.Account == rule.Account && tried.Description[0] == rule.Description[0] &&
         tried.DescCount == rule.DescCount;
}

const MailMessage& mailOf(Program& program, const RuleFits::Fit& fit) {
  return program.messages.at(fit.account, static_cast<std::int16_t>(fit.message));
}

void fillList(Program& program) {
  ListRows rows;
  for (const auto [account, message] : program.ruleFits.fits) {
    const MailMessage& mail = mailOf(program, {account, message});
    rows.add({program.accounts[account].AcntName, mail.From, mail.Subject});
    rows.look(rows.size() - 1).Bold = mail.New;
  }
  program.frmRuleFits.lvwRuleFits.SetRows(std::move(rows));
}

void tell(Program& program) {
  const RuleFits& state = program.ruleFits;
  const std::string text =
      ruleFitsText({state.fits.size(), state.messages, state.messages - state.tried, state.failed});
  program.frmMain.lblRuleFits.Caption = text;
  program.frmRuleFits.lblRuleFits.Caption = "The rule '" + state.rule.Name + "' " + text + ".";
}

void end(Program& program) {
  program.frmMain.tmrRuleFits.Enabled = false;
  if (program.frmRuleFits.RuleFitsOpen) fillList(program);
  SetInterfaceState(program);
}

void tryMessage(Program& program, std::size_t& looked) {
  RuleFits& state = program.ruleFits;
  const std::int16_t account = state.next.account;
  ++state.tried;
  if (state.rule.Account != allAccounts && state.rule.Account != program.accounts[account].AcntName) return;
  RuledMessage ruled(mailOf(program, state.next), [&looked](std::size_t bytes) { looked += bytes; });
  try {
    if (ruleFits(state.rule, ruled)) state.fits.push_back(state.next);
  } catch (const RunTimeFailure&) {
    ++state.failed;
  }
}

void tmrRuleFits_Timer(Program& program) {
  RuleFits& state = program.ruleFits;
  std::size_t looked = 0;
  for (std::size_t done = 0; done < messagesAtOnce && looked < bytesAtOnce && state.tried < state.messages; ++done) {
    while (state.next.message > program.accounts[state.next.account].AcntMsgCount) {
      state.next = {static_cast<std::int16_t>(state.next.account + 1), 1};
    }
    tryMessage(program, looked);
    ++state.next.message;
  }
  tell(program);
  if (state.tried == state.messages) end(program);
}

void emptyList(RuleFitsWindow& window) {
  window.lvwRuleFits.Clear();
  window.lblRuleFits.Caption = window.tipRuleFits.ToolText = "";
}

/// The list stays where a check comes in between, and is filled anew behind it.
void stop(Program& program) {
  program.ruleFits = {};
  program.frmMain.tmrRuleFits.Enabled = false;
  program.frmMain.lblRuleFits.Caption = "";
  emptyList(program.frmRuleFits);
  if (program.activity == Activity::Idle) frmRuleFits_Unload(program);
}

void tbrRuleFits_ButtonClick(Program& program) {
  RuleFitsWindow& window = program.frmRuleFits;
  window.Caption = program.AppTitle + " - Messages that the Rule Fits";
  window.RuleFitsOpen = true;
  fillList(program);
  window.Visible = true;
  window.activate.raise();
}

}  // namespace

void ConnectRuleFits(Program& program) {
  RuleFitsWindow& window = program.frmRuleFits;
  program.frmMain.tmrRuleFits.Tick = [&program] { tmrRuleFits_Timer(program); };
  program.frmMain.tbrRuleFits.ButtonClick = [&program](Button&) { tbrRuleFits_ButtonClick(program); };
  window.lvwRuleFits.MouseMove = [&window](std::int32_t row, std::int32_t) {
    std::string texts;
    if (row > 0) {
      for (const std::string& cell : window.lvwRuleFits.Rows()[static_cast<std::size_t>(row - 1)].Cells)
        texts += cell + "\r\n";
    }
    window.tipRuleFits.ToolText = texts;
  };
  window.tbrButtons.ButtonClick = [&program](Button&) { frmRuleFits_Unload(program); };
  window.Help = [&program] { program.platform.showHelp(rulesHelp); };
  window.Close = [&program] { frmRuleFits_Unload(program); };
}

void CountRuleFits(Program& program) {
  if (!canTry(program)) {
    stop(program);
    return;
  }
  const Rule& rule = program.rules.working[program.rules.CurrentRule];
  RuleFits& state = program.ruleFits;
  if (isTried(state.rule, rule)) {
    state.rule.Name = rule.Name;
    tell(program);
    return;
  }
  state = {};
  emptyList(program.frmRuleFits);
  state.rule = rule;
  for (const std::int16_t number : program.accounts.numbers()) {
    state.messages += static_cast<std::size_t>(std::max<std::int16_t>(program.accounts[number].AcntMsgCount, 0));
  }
  program.frmMain.tmrRuleFits.Enabled = true;
  SetInterfaceState(program);
}

void RecountRuleFits(Program& program) {
  program.ruleFits = {};
  CountRuleFits(program);
}

void frmRuleFits_Unload(Program& program) {
  if (!std::exchange(program.frmRuleFits.RuleFitsOpen, false)) return;
  program.frmRuleFits.Visible = false;
}

}  // namespace velmora
