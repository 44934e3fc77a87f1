#pragma once

#include <string>

#include "platform/controls/check_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/toolbar.h"

namespace velmora {

struct Options;

/// The section Desktop and Security of the Options page: choices that are off at first. Each has a text that says what
/// its present setting means.
struct DesktopSection {
  CheckBox chkNotifyNew{"Tell of New Messages in a Notification"};
  Label lblNotifyNew;
  CheckBox chkNotifyFailures{"Tell of failures of timed checks in a notification"};
  Label lblNotifyFailures;
  CheckBox chkFollowMachine{"Check soon after sleep, and not while offline"};
  Label lblFollowMachine;
  CheckBox chkKeepInterval{"Keep the interval across the end of a month"};
  Label lblKeepInterval;
  CheckBox chkUseKeyring{"Keep passwords in the desktop's keyring"};
  Label lblUseKeyring;
  CheckBox chkRefuseUntrusted{"Refuse servers whose certificate can't be trusted"};
  Label lblRefuseUntrusted;
  CheckBox chkProtocolLog{"Write a protocol log until Velmora ends"};
  Label lblProtocolLog;
  Toolbar tbrProtocolLog{"imlButtons", {{"ShowLog", "Show Log  ", "Show the Protocol Log", "ShowLog"}}};
  Label lblMove{"Accounts, options and rules in one file, to take to another machine:"};
  Toolbar tbrOptMove{
      "imlButtons",
      {{"Export", "Export...  ", "Write Accounts, Options and Rules into a File", "Export"},
       {"Import", "Import...  ", "Take Accounts, Options and Rules from a File that was Exported", "Import"}}};
};

/// Writes the texts of these settings.
void ShowChoiceTexts(DesktopSection& section, const Options& edit);

/// Adds where the protocol log is written.
void ShowLogPlace(DesktopSection& section, const std::string& path);

}  // namespace velmora
