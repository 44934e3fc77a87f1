#include "app/status_bar.h"

#include "app/program.h"

namespace velmora {

namespace {

std::string tipOfPanel(const Program& program, int number, const std::string& text) {
  const DateTime now = program.platform.now();
  const DateNames& months = program.platform.dateNames();
  switch (number) {
    case 2:
      return countTip(program.accounts[program.accounts.AcntCurrent], program.list.listCounts, text);
    case 3:
      return lastCheckTip(text, now, months);
    case 4:
      return nextCheckTip(text, program.autoCheck.NextCheckTime, months);
    case StatusBar::panelCount:
      return clockTip(now, months);
    default:
      return text;
  }
}

}  // namespace

void RefreshAccountPanels(Program& program, std::int16_t account) {
  StatusBar& bar = program.frmMain.StatusBar;
  const Accounts::Row& row = program.accounts[account];
  const CountPanel count = countPanel(row, program.list.listCounts);
  bar.Panels(1).Text = row.AcntStatusText;
  bar.Panels(2).Text = count.text;
  bar.Panels(2).Picture = std::string(count.picture);
  bar.Panels(3).Text = row.AcntLastCheckText;
  bar.Panels(4).Text = program.autoCheck.NextCheckText;
}

void ShowClock(Program& program) {
  program.frmMain.StatusBar.Panels(5).Text = clockText(program.platform.now(), program.platform.dateNames());
}

void ShowPanelTip(Program& program, std::int32_t x, std::int32_t /*y*/) {
  StatusBar& bar = program.frmMain.StatusBar;
  const int number = bar.PanelAt(x);
  bar.ToolTipText = number == 0 ? std::string() : tipOfPanel(program, number, bar.Panels(number).Text);
}

}  // namespace velmora
