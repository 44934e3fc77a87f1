#include "options/option_inputs.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "options/decisions/edited_options.h"
#include "options/decisions/options.h"
#include "options/options_page.h"

namespace velmora {

namespace {

using Page = OptionsPage;

/// A control, and the option that it sets.
template <class Control, class Value>
struct Input {
  Control Page::*control;
  Value Options::*option;

  Control& of(Page& page) const { return page.*control; }
};
using Tick = Input<CheckBox, std::int16_t>;
using Number = Input<NumberBox, std::int16_t>;
using Words = Input<TextBox, std::string>;
using Colour = Input<ColourBox, std::int32_t>;

/// A number that is in the options stands for each button. Of any other number, none is chosen.
struct Choice : Input<OptionGroup, std::int16_t> {
  std::array<std::int16_t, 7> numbers = {0, 1, 2, 3, 4, 5, 6};
};

struct Time {
  std::size_t item;
  std::string Options::*option;

  TimeBox& of(Page& page) const { return page.txtNoCheckTime.at(item); }
};

using AnyInput = std::variant<Tick, Number, Words, Colour, Choice, Time>;

/// Each option of the page beside its control.
const auto inputs = std::to_array<AnyInput>({
    Tick{&Page::chkRunStartUp, &Options::RunStartUp},
    Tick{&Page::chkEmailCheckStartUp, &Options::EmailCheckStartUp},
    Number{&Page::txtStartUpDelay, &Options::StartUpDelay},
    Tick{&Page::chkMinimizeStartUp, &Options::MinimizeStartUp},
    Tick{&Page::chkUseInterval, &Options::UseInterval},
    Number{&Page::txtHours, &Options::Hours},
    Number{&Page::txtMinutes, &Options::Minutes},
    Tick{&Page::chkNoCheck, &Options::NoCheck},
    Time{0, &Options::NoCheckTimeBegin},
    Time{1, &Options::NoCheckTimeEnd},
    Tick{&Page::chkShowEmailMsgBox, &Options::ShowEmailMsgBox},
    Choice{{&Page::optShowEmail, &Options::ShowEmail}},
    Number{&Page::txtMsgBoxTime, &Options::MsgBoxTime},
    Words{&Page::txtDefaultClient, &Options::DefaultClient},
    Choice{{&Page::optRunSize, &Options::RunSize}, {1, 3}},
    Words{&Page::txtDefaultSound, &Options::DefaultSound},
    Tick{&Page::chkPlaySound, &Options::PlaySound},
    Number{&Page::txtConnectTimeOut, &Options::ConnectTimeOut},
    Tick{&Page::chkQuickCheck, &Options::QuickCheck},
    Tick{&Page::chkDeleteConfirmation, &Options::DeleteConfirmation},
    Tick{&Page::chkCloseButton, &Options::CloseButton},
    Tick{&Page::chkSuppressConnectErrors, &Options::SuppressConnectErrors},
    Tick{&Page::chkSuppressRetrieveErrors, &Options::SuppressRetrieveErrors},
    Choice{{&Page::opt3DTheme, &Options::DTheme}},
    Colour{&Page::lbl3DTopColour, &Options::TopColour},
    Colour{&Page::lbl3DMiddleColour, &Options::MiddleColour},
    Colour{&Page::lbl3DBottomColour, &Options::BottomColour},
    Tick{&Page::chkShowNewOnly, &Options::ShowNewOnly},
    Tick{&Page::chkRestoreColWidth, &Options::RestoreColWidth},
    Tick{&Page::chkButtonStyle, &Options::ButtonStyle},
    Choice{{&Page::optApplyStyle, &Options::ApplyStyle}},
    Tick{&Page::chkFromToolTips, &Options::FromToolTips},
    Tick{&Page::chkToToolTips, &Options::ToToolTips},
    Tick{&Page::chkSubjectToolTips, &Options::SubjectToolTips},
    Tick{&Page::chkMessageSort, &Options::MessageSort},
    Choice{{&Page::optSortColumn, &Options::SortColumn}},
    Choice{{&Page::optSortOrder, &Options::SortOrder}},
    Tick{&Page::chkNotifyNew, &Options::NotifyNew},
    Tick{&Page::chkNotifyFailures, &Options::NotifyFailures},
    Tick{&Page::chkFollowMachine, &Options::FollowMachine},
    Tick{&Page::chkKeepInterval, &Options::KeepInterval},
    Tick{&Page::chkUseKeyring, &Options::UseKeyring},
    Tick{&Page::chkRefuseUntrusted, &Options::RefuseUntrusted},
    Tick{&Page::chkProtocolLog, &Options::ProtocolLog},
});

/// Any order but 0 is descending.
std::int16_t meantBy(const Choice& choice, std::int16_t number) {
  return choice.option == &Options::SortOrder && number != 0 ? std::int16_t{1} : number;
}

std::int16_t buttonOf(const Choice& choice, std::int16_t number) {
  const auto found = std::ranges::find(choice.numbers, meantBy(choice, number));
  return static_cast<std::int16_t>(found == choice.numbers.end() ? 0 : found - choice.numbers.begin() + 1);
}

/// A box may stand for a value that is neither 0 nor 1: that is off.
void show(CheckBox& box, const Tick& input, const Options& options) {
  box.Value = static_cast<std::int16_t>(options.*input.option == 1 ? 1 : 0);
}
void show(NumberBox& box, const Number& input, const Options& options) { box.Value = options.*input.option; }
void show(TextBox& box, const Words& input, const Options& options) { box.Text = options.*input.option; }
void show(TimeBox& box, const Time& input, const Options& options) { box.Text = options.*input.option; }
void show(ColourBox& box, const Colour& input, const Options& options) { box.BackColour = options.*input.option; }
void show(OptionGroup& group, const Choice& input, const Options& options) {
  group.Value = buttonOf(input, options.*input.option);
}

void take(const CheckBox& box, const Tick& input, Options& options) { options.*input.option = box.Value; }
void take(const NumberBox& box, const Number& input, Options& options) { options.*input.option = box.Value; }
void take(const TextBox& box, const Words& input, Options& options) { options.*input.option = box.Text; }
void take(const TimeBox& box, const Time& input, Options& options) { options.*input.option = box.Text; }
void take(const OptionGroup& group, const Choice& input, Options& options) {
  options.*input.option = input.numbers.at(static_cast<std::size_t>(group.Value.get() - 1));
}

void watch(CheckBox& box, std::function<void()> changed) {
  box.Value.watch([changed = std::move(changed)](std::int16_t) { changed(); });
}
void watch(NumberBox& box, std::function<void()> changed) {
  box.Value.watch([changed = std::move(changed)](std::int16_t) { changed(); });
}
void watch(TextBox& box, std::function<void()> changed) {
  box.Text.watch([changed = std::move(changed)](const std::string&) { changed(); });
}
void watch(TimeBox& box, std::function<void()> changed) {
  box.Text.watch([changed = std::move(changed)](const std::string&) { changed(); });
}
void watch(OptionGroup& group, std::function<void()> changed) { group.Click = std::move(changed); }

void showMinuteBounds(NumberBox& box, std::int16_t hours) {
  const MinuteBounds bounds = minuteBounds(hours);
  box.Least = bounds.least;
  box.Most = bounds.most;
  box.WhenEmpty = bounds.whenEmpty;
}

}  // namespace

void ShowOptionInputs(OptionsPage& page, const Options& options) {
  showMinuteBounds(page.txtMinutes, options.Hours);
  for (const AnyInput& any : inputs) {
    std::visit([&](const auto& input) { show(input.of(page), input, options); }, any);
  }
}

/// A colour is not changed on its box: a dialog picks it.
void WatchOptionInputs(OptionsPage& page, const InputChanged& changed) {
  for (const AnyInput& any : inputs) {
    std::visit(
        [&](const auto& input) {
          if constexpr (!std::is_same_v<std::decay_t<decltype(input)>, Colour>) {
            auto& control = input.of(page);
            watch(control, [&control, &input, changed] {
              changed(control.Enabled, [&control, &input](Options& options) { take(control, input, options); });
            });
          }
        },
        any);
  }
}

}  // namespace velmora
