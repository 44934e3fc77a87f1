#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "options/desktop_section.h"
#include "platform/controls/check_box.h"
#include "platform/controls/colour_box.h"
#include "platform/controls/number_box.h"
#include "platform/controls/option_group.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/text_box.h"
#include "platform/controls/time_box.h"
#include "platform/controls/toolbar.h"
#include "platform/controls/tree_view.h"

namespace velmora {

struct Options;
struct Program;

/// The sections of the Options page, by node of its tree.
inline constexpr std::int16_t startUpSection = 1;
inline constexpr std::int16_t autoCheckSection = 2;
inline constexpr std::int16_t defaultsSection = 3;
inline constexpr std::int16_t coloursSection = 4;
inline constexpr std::int16_t miscellaneousSection = 5;
inline constexpr std::int16_t aboutSection = 6;
inline constexpr std::int16_t desktopSection = 7;
inline constexpr std::size_t sectionCount = 7;

/// The controls of the Options page: a tree of sections, of which one shows, and what sets the options. The page edits
/// a working copy that takes effect when the user saves it.
struct OptionsPage : DesktopSection {
  Frame fraOptionsPage;
  velmora::TreeView TreeView{"imlTreeView",
                             {{"StartUp", "StartUp"},
                              {"Auto Check", "AutoCheck"},
                              {"Defaults", "Defaults"},
                              {"Menu Colours", "MenuColours"},
                              {"Miscellaneous", "Miscellaneous"},
                              {"About", "About"},
                              {"Desktop and Security", "Desktop"}}};
  Label lblOptionsTitle;
  std::array<Image, 2> imgOptionsTitle;  ///< of the list imlTreeView, on both sides of the title
  std::array<Frame, sectionCount> fraOptions;

  // StartUp
  CheckBox chkRunStartUp{"Run at StartUp"};
  Label lblRunStartUp;  ///< what the present setting means, as are others named after a control
  CheckBox chkEmailCheckStartUp{"Check for Email at StartUp"};
  Label lblEmailCheckStartUp;
  Label lblStartUpDelay{"Delay for"};
  NumberBox txtStartUpDelay{std::int16_t{0}, std::int16_t{59}};
  Label lblStartUpSeconds{"seconds."};
  CheckBox chkMinimizeStartUp{"Minimize Velmora at StartUp"};
  Label lblMinimizeStartUp;

  // Auto Check
  CheckBox chkUseInterval{"Enable Auto Check Timing Interval"};
  Label lblUseInterval;
  Label lblHours{"Check for Email every"};
  NumberBox txtHours{std::int16_t{0}, std::int16_t{12}};
  Label lblMinutes{"hours and"};
  NumberBox txtMinutes{std::int16_t{0}, std::int16_t{59}, 0, true};
  Label lblMinutesEnd{"minutes."};
  CheckBox chkNoCheck{"Do Not Check between"};
  std::array<TimeBox, 2> txtNoCheckTime;
  CheckBox chkShowEmailMsgBox{"Show Auto Check Message after Checking for Email"};
  OptionGroup optShowEmail{
      {"Only when New Messages are found", "When any Messages are found", "Always Show Auto Check Message Box"}};
  Label lblMsgBoxTime{"Show  Auto Check Message for"};
  NumberBox txtMsgBoxTime{std::int16_t{0}, std::int16_t{59}};
  Label lblMsgBoxSeconds{"seconds."};
  Label lblMsgBoxNote{"Note: 0 seconds keeps Auto Check Message open indefinitely."};

  // Defaults
  TextBox txtDefaultClient;
  Label lblDefaultClient;
  OptionGroup optRunSize{{"Normal", "Maximized"}};
  TextBox txtDefaultSound;
  CheckBox chkPlaySound{"Sound On"};
  std::array<Label, 2> lblPlaySound;  ///< the second stands in the section Auto Check
  NumberBox txtConnectTimeOut{std::int16_t{1}, std::int16_t{120}, 1};
  Label lblConnectTimeOut{"Default is 10 seconds."};
  CheckBox chkQuickCheck{"Allow Quick Checking"};
  CheckBox chkDeleteConfirmation{"Delete Messages Confirmation"};
  CheckBox chkCloseButton{"X Button Minimizes instead of Closing Program"};
  CheckBox chkSuppressConnectErrors{"Suppress Connection Error Messages"};
  CheckBox chkSuppressRetrieveErrors{"Suppress Retrieve Error Messages"};

  // Menu Colours
  std::array<Label, 3> lblMenuColours;
  OptionGroup opt3DTheme{
      {"Blue", "Gray", "Green", "Classic Windows", "Classic Windows XP", "Velmora Default", "User Colours"}};
  ColourBox lbl3DTopColour{0, {}, "Change Top Colour"};
  ColourBox lbl3DMiddleColour{0, {}, "Change Middle Colour"};
  ColourBox lbl3DBottomColour{0, {}, "Change Bottom Colour"};
  Label lblUserColours{"User Colours Available"};
  Label lblTrayMenu{"The tray of this desktop draws the tray's menu itself, in the colours of the desktop.", false};

  // Miscellaneous
  CheckBox chkShowNewOnly{"Show only New Message Count in the System Tray"};
  CheckBox chkRestoreColWidth{"Always Restore Default Email Message Column Width at StartUp"};
  CheckBox chkButtonStyle{"Raised Buttons"};
  Frame fraApplyStyle{"Apply to"};
  OptionGroup optApplyStyle{{"Lower", "Upper", "Intermediate", "All"}};
  Label lblToolTips{"Allow Email Message ToolTips on the following..."};
  CheckBox chkFromToolTips{"From"};
  CheckBox chkToToolTips{"To"};
  CheckBox chkSubjectToolTips{"Subject"};
  CheckBox chkMessageSort{"Use Message Sorting by Columns"};
  Frame fraSort;
  OptionGroup optSortColumn{{"Last Used", "From", "To", "Subject", "Date", "Size"}};
  OptionGroup optSortOrder{{"Ascending", "Descending"}};
  std::array<Toolbar, 2> tbrOptMisc{{
      {"imlButtons",
       {{"SelectAll", "Select All   ", "Allow ToolTips on all three", "SelectAll"},
        {"SelectNone", "Select None   ", "Allow no ToolTips", "SelectNone"}}},
      {"imlButtons",
       {{"RestoreColWidth", "Restore Column Width Now ", "Restore Message Window Column Widths", "RestoreColWidth"}}},
  }};

  // About
  Label lblAboutTitle;
  Label lblAboutWebSite;
  Label lblAboutEmail;
  Toolbar tbrOptAbout{"imlButtons",
                      {{"ReadMe", "View Read Me  ", "View Read Me Using WordPad", "ReadMe"},
                       {"Update", "Updates  ", "Check WebSite for Updates", "Update"}}};
};

/// What the page keeps beside its controls.
struct OptionsPageState {
  std::int16_t OptionsPage = startUpSection;  ///< the section showing
  bool OptionsLoading = false;                ///< the program fills the controls itself: their changes do nothing
  bool asking = false;                        ///< what is to become of changes
  bool notKept = false;                       ///< the options in force could not be saved
  bool logKept = false;                       ///< a protocol log is being written
  bool logBegun = false;                      ///< one was begun in this run
  std::int16_t logonEntry = 1;                ///< the value of RunStartUp that the entry for the logon follows
  std::int32_t lastColour = 0;                ///< that the user has picked
};

/// Ties the page's controls to what they do.
void ConnectOptionsPage(Program& program);

/// Fills the working copy and the page from the options in force. Changes that were not saved are gone.
void LoadOptionsPage(Program& program);

/// Changes the working copy, and whatever follows from it there, and shows it on the page. Nobody else writes to it.
void ChangeOptions(Program& program, const std::function<void(Options&)>& change);

/// Compares the working copy with the options in force. A page that differs can be left by saving or cancelling only.
void OptionsDirtyCheck(Program& program);

/// Shows a section of the page, by its node, and selects that.
void ShowOptionsPage(Program& program, std::int16_t section);

/// Asks what is to become of changes that were not saved, if there are any. Returns whether the page may be left; not
/// so where the user wants to return to it, where it could not be saved, and while he is asked already.
bool SettleOptions(Program& program);

/// Fills the About section and sets its handlers.
void ConnectAbout(Program& program);

/// Shows where users find news of the program.
void OpenHomePage(Program& program);

}  // namespace velmora
