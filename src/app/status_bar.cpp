#include "app/status_bar.h"

#include "app/program.h"

namespace velmora {

void RefreshAccountPanels(Program& program, std::int16_t account) {
  StatusBar& bar = program.frmMain.StatusBar;
  const Accounts::Row& row = program.accounts[account];
  const CountPanel count = countPanel(row, program.listCounts);
  bar.Panels(1).Text = row.AcntStatusText;
  bar.Panels(2).Text = count.text;
  bar.Panels(2).Picture = std::string(count.picture);
  bar.Panels(3).Text = row.AcntLastCheckText;
  bar.Panels(4).Text = program.NextCheckText;
}

void ShowClock(Program& program) {
  program.frmMain.StatusBar.Panels(5).Text = clockText(program.platform.now(), program.platform.monthNames());
}

}  // namespace velmora
