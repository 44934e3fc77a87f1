#include "options/decisions/option_texts.h"

namespace velmora {

namespace {

constexpr auto off = "(Off)  ";

std::string sentence(std::string_view before, std::string_view appTitle, std::string_view behind) {
  return std::string(before).append(appTitle).append(behind);
}

std::string whoSounds(const Options& edit, bool DefaultSoundValid) {
  if (edit.PlaySound != 1) return "No Sound will Play for any Accounts.";
  return DefaultSoundValid ? "The Default Sound will Play for all Enabled Accounts."
                           : "Sound Controlled by Individual Accounts.";
}

std::string whoseClient(const Options& edit, bool isValid) {
  if (isValid) return "The Default Email Client will start for all Accounts.";
  return edit.DefaultClient.empty()
             ? "Email Client Controlled by Individual Accounts."
             : "Email Client Controlled by Individual Accounts, since there is no such file that ends with '.exe'.";
}

}  // namespace

OptionTexts optionTexts(const Options& edit, const ValidDefaults& valid, std::string_view appTitle) {
  return {
      .RunStartUp = edit.RunStartUp == 1
                        ? sentence("Start ", appTitle, " automatically when you logon to your computer.")
                        : off + sentence("Start ", appTitle, " manually from the Start Menu."),
      .EmailCheckStartUp = edit.EmailCheckStartUp == 1
                               ? sentence("Automatically check for messages when ", appTitle, " starts.")
                               : off + sentence("Manually check for messages after starting ", appTitle, "."),
      .MinimizeStartUp = edit.MinimizeStartUp == 1 ? sentence("", appTitle, " will start Minimized to the System Tray.")
                                                   : off + sentence("", appTitle, " will start with a Normal Window."),
      .UseInterval = edit.UseInterval == 1
                         ? "Set the Timing Interval below to Auto Check for messages in all Enabled Accounts."
                         : std::string(off) +
                               "Do not use an Auto Check Timing Interval. Checking for messages must be done manually.",
      .DefaultClient = whoseClient(edit, valid.client),
      .PlaySound = {whoSounds(edit, valid.sound),
                    edit.PlaySound == 1
                        ? "Sound Files will play based on these settings even if the Auto Check Message is not "
                          "displayed."
                        : "No Sound will play for these settings since Sound has been turned off.\r\n"
                          "See Defaults/Sound On."},
      .MenuColours = {sentence("3D Effect Menu Colours are visible by Right Clicking the ", appTitle,
                               " icon in the System Tray or in the Email Messages window."),
                      "You may choose one of the six preset colours below.",
                      "To set your own colours select 'User Colours', then click one of the 3 colour boxes below."},
  };
}

Question optionsNotSaved() {
  return {
      "The changes made to the Options\r\nhave not been saved.\r\n\r\nHow would you like to proceed?\r\n\r\n"
      "'Yes' to save the Options now.\r\n'No' to just return to the Options.\r\n"
      "'Cancel' to discard all changes to the Options.          \r\n\r\n",
      "Changes Not Saved!", Question::Icon::Critical, Question::Buttons::YesNoCancel};
}

Question soundError(std::string_view appTitle) {
  return {"The Sound File failed!\r\n\r\nIt appears the path and/or sound file" + std::string(20, ' ') +
              "\r\ndo not exist or have changed location.\r\n\r\nThe Sound File must have a file extension\r\n"
              "that ends with '.wav' to work properly.\r\n\r\n",
          std::string(appTitle) + " - Sound Error"};
}

Question soundUnheard(std::string_view appTitle) {
  return {
      "The Sound File could not be played.\r\n\r\nEither no sound device was found on this computer,\r\n"
      "or the file holds no sound that can be played here.\r\n\r\n",
      std::string(appTitle) + " - Sound Error"};
}

Question protocolLogError(std::string_view appTitle, std::string_view path) {
  return {"The Protocol Log can't be written:\r\n" + std::string(path) + "\r\n\r\nNo log is kept.\r\n",
          std::string(appTitle) + " - Protocol Log Error"};
}

}  // namespace velmora
