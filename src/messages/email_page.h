#pragma once

#include "platform/controls/list_view.h"
#include "platform/controls/menu.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
#include "platform/controls/toolbar.h"

namespace velmora {

struct Program;

/// The columns of the list that offer tips are its zones, numbered from 0; the rest of a row is none. The picture of a
/// marked message, which stands in the first column, is a zone of its own.
inline constexpr std::int16_t noZone = 3;
inline constexpr std::int16_t markZone = 4;

/// The controls of the Email page: one tab an account, and the messages of the account whose tab is selected.
struct EmailPage {
  Frame fraEmailToolBar;
  Toolbar tbrEmail{"imlEmailIcons",
                   {{"EmailPreview", "Preview ", "Preview Selected Message", "EmailPreview"},
                    {"EmailDelete", "Delete   ", "Delete Selected Message from Server", "EmailDelete"},
                    {"EmailSpam", "Spam    ", "Delete All Spam Messages from Server", "EmailSpam"},
                    {"EmailReply", "Reply    ", "Reply to Sender using Email Client", "EmailReply"},
                    {"EmailOpen", "Open    ", "Open Message in Email Client", "EmailOpen"},
                    {"EmailNew", "New      ", "New Message using Email Client", "EmailNew"},
                    {"EmailCheck", "Check   ", "Check Account for Messages", "EmailCheck"}}};
  TabStrip TabStripEmail;
  ListView lvwEmail{"From", "To", "Subject", "Date", "Size"};
  ToolTip tipEmail{"", 5000};  ///< of the list

  MenuEntry mnuEmailPreview{"&Preview|#Preview"};
  MenuEntry mnuEmailDelete{"&Delete|#Delete"};
  MenuEntry mnuEmailReply{"&Reply|#Reply"};
  MenuEntry mnuEmailOpen{"&Open|#Open"};
  MenuEntry mnuEmailSaveOriginal{"&Save Original...|#Save"};
  PopupMenu mnuEmailPopMenu{
      "imlPopMenu", {&mnuEmailPreview, &mnuEmailDelete, &mnuEmailReply, &mnuEmailOpen, &mnuEmailSaveOriginal}, {}};

  MenuEntry mnuRestoreColWidth{"&Restore Column Width Now"};
  PopupMenu mnuColumns{"imlPopMenu", {&mnuRestoreColWidth}, {}};  ///< of the list's headers
};

/// Sets the handlers of the page's controls.
void ConnectEmailPage(Program& program);

/// Shows the account of the selected tab, unless it is the one showing.
void TabStripEmail_Click(Program& program);

/// Selects an account's tab and fills the list anew, even where it is the one showing.
void ShowTabAnew(Program& program, std::int16_t account);

/// Gives the list its columns' widths, from the settings where the user keeps them.
void SetColumnWidths(Program& program);

/// Gives every column the width that it had in the design.
void RestoreColumnWidths(Program& program);

/// Keeps the columns' widths for the next start, where the user wants that.
void SaveColumnWidths(Program& program);

}  // namespace velmora
