#include "app/press_shortcut.h"

#include <vector>

#include "app/decisions/shortcuts.h"
#include "app/program.h"
#include "app/shut_down.h"

namespace velmora {

namespace {

bool canBeWorked(const Frame& frame) { return frame.Visible && frame.Enabled; }

/// A button that keys press where its page shows, and where the part of the window that it stands in is on.
struct PressedButton {
  std::int16_t page;
  Button& button;
  const Frame* part = nullptr;
};

std::vector<PressedButton> buttonsOf(MainWindow& frmMain, const Shortcut& shortcut) {
  switch (shortcut.deed) {
    case KeyDeed::Add:
      return {{emailPage, frmMain.tbrEmail["EmailNew"], &frmMain.fraEmailToolBar},
              {accountsPage, frmMain.tbrAcnts["AcntAdd"]},
              {rulesPage, frmMain.tbrRules["RulesAdd"]}};
    case KeyDeed::CheckAll:
      return {{anyPage, frmMain.tbrButtons[checkAllBar]["CheckAll"]}};
    case KeyDeed::PressEmail:
      return {{shortcut.page, frmMain.tbrEmail[shortcut.button], &frmMain.fraEmailToolBar}};
    case KeyDeed::Save:
      return {{accountsPage, frmMain.tbrButtons[saveAccountBar]["SaveAccount"]},
              {rulesPage, frmMain.tbrButtons[saveRulesBar]["SaveRules"]},
              {optionsPage, frmMain.tbrButtons[saveOptionsBar]["SaveOptions"]}};
    case KeyDeed::ShowPage:
      return {{anyPage, frmMain.tbrMainButtons[PageBanners.at(static_cast<std::size_t>(shortcut.number))],
               &frmMain.fraMainButtons}};
    case KeyDeed::TestAccount:
      return {{shortcut.page, frmMain.tbrAcnts["AcntTest"]}};
    default:
      return {};
  }
}

bool isShowing(const MainWindow& frmMain, std::int16_t page) {
  return page == anyPage || canBeWorked(frmMain.fraMain.at(static_cast<std::size_t>(page)));
}

void pressButton(MainWindow& frmMain, const Shortcut& shortcut) {
  for (const auto& [page, button, part] : buttonsOf(frmMain, shortcut)) {
    if (isShowing(frmMain, page) && (part == nullptr || canBeWorked(*part))) return button.click();
  }
}

void chooseEntry(const MenuEntry& entry) {
  if (entry.Enabled) entry.Click();
}

void giveUp(MainWindow& frmMain) {
  Toolbar& stop = frmMain.tbrButtons[stopRetrievalBar];
  const bool dragging = frmMain.TabStripEmail.Dragging || frmMain.TabStripAcnts.Dragging;
  const Unfinished ended = givenUp({dragging, frmMain.fraColourBox.Visible, stop.Visible});
  if (ended.drag) frmMain.TabStripEmail.Dragging = frmMain.TabStripAcnts.Dragging = false;
  if (ended.colourBoxes) frmMain.fraColourBox.Visible = false;
  if (ended.check) stop["StopRetrieval"].click();
}

/// The button is off on a changed page; here the user is asked about his changes.
void quit(Program& program) {
  if (canBeWorked(program.frmMain.fraMainButtons)) QuitApplication(program);
}

void sortBy(ListView& list, std::size_t column) { list.ColumnClick(list.Columns.at(column).Text); }

}  // namespace

void NameKeys(Program& program) {
  for (const Shortcut& shortcut : shortcuts) {
    for (const PressedButton& each : buttonsOf(program.frmMain, shortcut)) each.button.Keys = shortcut.keys;
    if (shortcut.deed == KeyDeed::SaveOriginal) program.frmMain.mnuEmailSaveOriginal.Keys = shortcut.keys;
  }
  program.frmMain.mnuEmailReply.Keys = program.frmMain.tbrEmail["EmailReply"].Keys.get();
  program.frmMain.mnuEmailOpen.Keys = program.frmMain.tbrEmail["EmailOpen"].Keys.get();
}

void PressShortcut(Program& program, const Shortcut& shortcut) {
  MainWindow& frmMain = program.frmMain;
  if (!isShowing(frmMain, shortcut.page)) return;
  switch (shortcut.deed) {
    case KeyDeed::GiveUp:
      return giveUp(frmMain);
    case KeyDeed::Help:
      return frmMain.Help();
    case KeyDeed::Quit:
      return quit(program);
    case KeyDeed::RestoreWidths:
      return frmMain.mnuRestoreColWidth.Click();
    case KeyDeed::SaveOriginal:
      return chooseEntry(frmMain.mnuEmailSaveOriginal);
    case KeyDeed::SortByColumn:
      return sortBy(frmMain.lvwEmail, static_cast<std::size_t>(shortcut.number));
    default:
      return pressButton(frmMain, shortcut);
  }
}

}  // namespace velmora
