#include "app/press_shortcut.h"

#include <array>
#include <span>

#include "app/decisions/shortcuts.h"
#include "app/program.h"
#include "app/shut_down.h"

namespace velmora {

namespace {

bool canBeWorked(const Frame& frame) { return frame.Visible && frame.Enabled; }

void press(Toolbar& bar, const char* button, const Frame& frame) {
  if (canBeWorked(frame)) bar[button].click();
}

void giveUp(MainWindow& frmMain) {
  Toolbar& stop = frmMain.tbrButtons[stopRetrievalBar];
  const bool dragging = frmMain.TabStripEmail.Dragging || frmMain.TabStripAcnts.Dragging;
  const Unfinished ended = givenUp({dragging, frmMain.fraColourBox.Visible, stop.Visible});
  if (ended.drag) frmMain.TabStripEmail.Dragging = frmMain.TabStripAcnts.Dragging = false;
  if (ended.colourBoxes) frmMain.fraColourBox.Visible = false;
  if (ended.check) stop["StopRetrieval"].click();
}

/// A button that the same keys press on each page that has one.
struct ButtonOfPage {
  std::int16_t page;
  Button& button;
};

std::array<ButtonOfPage, 2> adding(MainWindow& frmMain) {
  return {{{accountsPage, frmMain.tbrAcnts["AcntAdd"]}, {rulesPage, frmMain.tbrRules["RulesAdd"]}}};
}

std::array<ButtonOfPage, 3> saving(MainWindow& frmMain) {
  return {{{accountsPage, frmMain.tbrButtons[saveAccountBar]["SaveAccount"]},
           {rulesPage, frmMain.tbrButtons[saveRulesBar]["SaveRules"]},
           {optionsPage, frmMain.tbrButtons[saveOptionsBar]["SaveOptions"]}}};
}

void pressOnPage(const MainWindow& frmMain, std::span<const ButtonOfPage> buttons) {
  for (const auto& [page, button] : buttons) {
    if (canBeWorked(frmMain.fraMain.at(static_cast<std::size_t>(page)))) return button.click();
  }
}

/// The button is off on a changed page; here the user is asked about his changes.
void quit(Program& program) {
  if (canBeWorked(program.frmMain.fraMainButtons)) QuitApplication(program);
}

void sortBy(ListView& list, std::size_t column) { list.ColumnClick(list.Columns.at(column).Text); }

}  // namespace

void PressShortcut(Program& program, const Shortcut& shortcut) {
  MainWindow& frmMain = program.frmMain;
  const auto number = static_cast<std::size_t>(shortcut.number);
  if (shortcut.page != anyPage && !canBeWorked(frmMain.fraMain.at(static_cast<std::size_t>(shortcut.page)))) return;
  switch (shortcut.deed) {
    case KeyDeed::Add:
      return pressOnPage(frmMain, adding(frmMain));
    case KeyDeed::CheckAll:
      return frmMain.tbrButtons[checkAllBar]["CheckAll"].click();
    case KeyDeed::CheckCurrent:
      return press(frmMain.tbrEmail, "EmailCheck", frmMain.fraEmailToolBar);
    case KeyDeed::GiveUp:
      return giveUp(frmMain);
    case KeyDeed::Help:
      return frmMain.Help();
    case KeyDeed::Quit:
      return quit(program);
    case KeyDeed::RestoreWidths:
      return frmMain.mnuRestoreColWidth.Click();
    case KeyDeed::Save:
      return pressOnPage(frmMain, saving(frmMain));
    case KeyDeed::ShowPage:
      return press(frmMain.tbrMainButtons, PageBanners.at(number), frmMain.fraMainButtons);
    case KeyDeed::SortByColumn:
      return sortBy(frmMain.lvwEmail, number);
    case KeyDeed::TestAccount:
      return frmMain.tbrAcnts["AcntTest"].click();
  }
}

}  // namespace velmora
