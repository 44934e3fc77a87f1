#include "messages/decisions/print_words.h"

namespace velmora {

namespace {

std::string whatHappened(const PrintState& state) {
  const std::string printer = "The printer '" + state.printer + "' ";
  switch (state.trouble) {
    case PrintTrouble::NoPrinter:
      return "There is no printer to print on.\r\n\r\n"
             "Please set up a printer in the settings of your desktop,\r\nand make it the default one.";
    case PrintTrouble::NoAnswer:
      return "The print service of this computer does not answer.\r\nNothing was printed.";
    case PrintTrouble::QueueShut:
      return printer + "takes no jobs at present.\r\nNothing was printed.";
    case PrintTrouble::Refused:
      return printer + "did not take the message.\r\nNothing was printed.";
    case PrintTrouble::Waiting:
      return printer +
             "stands still.\r\n\r\n"
             "The message waits in its queue and is printed when the printer goes on.";
    case PrintTrouble::Unfinished:
      return printer + "did not print the whole message.";
    case PrintTrouble::TooLong:
      return "The message is too long to be printed: it would take more than " + std::to_string(mostPages) +
             " pages.\r\nNothing was printed.";
    case PrintTrouble::None:
      break;
  }
  return "The message could not be printed.";
}

}  // namespace

std::string printProgress(const PrintState& state) {
  if (state.stage < PrintStage::Painting) return "Looking for the printer...";
  if (state.stage == PrintStage::Painting) return "Making page " + std::to_string(state.pages) + "...";
  return "Sending " + std::to_string(state.pages) + (state.pages == 1 ? " page" : " pages") + " to the printer '" +
         state.printer + "'...";
}

Question printFailure(std::string_view appTitle, const PrintState& state) {
  const std::string words = state.words.empty() ? "" : "\r\n\r\nThe print service says:\r\n" + state.words;
  const bool waits = state.trouble == PrintTrouble::Waiting;
  return {whatHappened(state) + words + "\r\n",
          std::string(appTitle) + (waits ? " - Printer Waits" : " - Printing Failed")};
}

Question quitWhilePrinting(std::string_view appTitle) {
  return {"A message is on its way to the printer.\r\n\r\nWould you like to quit, and leave it unprinted?\r\n",
          std::string(appTitle) + " - Still Printing", Question::Icon::Critical, Question::Buttons::YesNo};
}

}  // namespace velmora
