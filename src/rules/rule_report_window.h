#pragma once

#include <cstdint>
#include <string>

#include "platform/controls/count_down.h"
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// The small window that tells after a check what the rules have marked, and deletes it at a click. It closes by itself
/// when its time is over.
struct RuleReportWindow : Form {
  bool RuleReportOpen = false;

  TabStrip TabStripRuleReport;
  Image imgRuleDelete{"Delete"};  ///< a picture of the message list's
  Image imgRuleSpam{"Spam"};      ///< a picture of the message list's
  Label lblRuleDelete;
  Label lblRuleSpam;
  Property<std::int16_t> LabelLines = std::int16_t{1};  ///< what the two labels above have room for

  Label lblRuleReport;
  Label lblRuleReportCountDown;
  Label lblRuleReportCaution{"Caution: Deleting messages will not display any confirmation warning."};

  Toolbar tbrRuleReport{"imlRuleReport",
                        {{"Timer", "Stop Timer   ", "Start or Stop the Timer", "Timer"},
                         {"DeleteNow", "Delete Now   ", "Delete Messages Now", "DeleteNow"},
                         {"Exit", "Exit  ", "Exit Rule Report", "Exit"}}};
  Timer tmrRuleReport{1000, false};
  CountDown countDown{tmrRuleReport, lblRuleReportCountDown};

  std::int16_t DeleteAccounts = 0;  ///< accounts with messages to delete when the window opened; none after Delete Now
  std::int16_t SpamAccounts = 0;    ///< accounts with spam when the window opened; none after Delete Now
  std::string CurrentTab;           ///< caption of the tab that Delete Now works on
  bool CanDelete = false;           ///< Delete Now has something to do, once nothing else is under way
};

}  // namespace velmora
