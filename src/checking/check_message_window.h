#pragma once

#include <cstdint>

#include "platform/controls/count_down.h"
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// The Auto Check Message: the small window that tells what a timed check found, and closes by itself when its time is
/// over.
struct CheckMessageWindow : Form {
  bool AutoMessageOpen = false;

  Frame fraMsg;  ///< its caption is the headline
  Label lblMsg;
  Property<std::int16_t> LabelLines = std::int16_t{0};  ///< accounts that lblMsg has room for, below its heading
  Label lblAutoCheck;
  Label lblMsgCountDown;
  Image imgHourGlass{"HourGlass"};
  Toolbar tbrButtons{"imlRuleReport", {{"Close", "Close   ", "Close Auto Check Message", "Exit"}}};
  Timer tmrMessage{1000, false};
  CountDown countDown{tmrMessage, lblMsgCountDown};
};

}  // namespace velmora
