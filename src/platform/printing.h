#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

/// A printer's sheet of paper. All lengths are in twips, 1/1440 of an inch.
struct Paper {
  std::int32_t width = 0;
  std::int32_t height = 0;
  // The strips along its edges that the printer can't print on.
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  bool operator==(const Paper&) const = default;
};

/// Where on each sheet text is printed, in twips from the sheet's upper left corner.
struct PrintArea {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool operator==(const PrintArea&) const = default;
};

/// Text in one weight, any bytes taken as UTF-8. It goes on where the run before it ended.
struct PrintRun {
  std::string text;
  bool bold = false;

  bool operator==(const PrintRun&) const = default;
};

/// A text to print: long lines are broken, and pages where they are full.
struct PrintText {
  std::string title;  ///< that the queue shows of the job
  std::string font;   ///< the family, or the nearest that the system has
  int points = 10;
  std::vector<PrintRun> runs;
  PrintArea area;
};

/// What a job is doing.
enum class PrintStage {
  Finding,     ///< it asks for the default printer
  Found,       ///< it waits for its text
  Painting,    ///< it lays out pages, of which nothing has left the program yet
  Sending,     ///< the pages go to the printer's queue
  HandedOver,  ///< the queue has them, whatever becomes of the program
  Printed,     ///< the printer has taken them all
  Failed,      ///< nothing was printed, or not all
};

/// What stands in a job's way.
enum class PrintTrouble {
  None,
  NoPrinter,   ///< there is no default one
  NoAnswer,    ///< the print service can't be reached
  QueueShut,   ///< the printer's queue takes no jobs
  Refused,     ///< the print service didn't take this one
  Waiting,     ///< the printer stands still, and the job waits in its queue
  Unfinished,  ///< the job ended before all was printed
  TooLong,     ///< the text takes more pages than anybody prints
};

struct PrintState {
  PrintStage stage = PrintStage::Finding;
  Paper paper = {};          ///< from Found on
  std::int32_t percent = 0;  ///< of the text that is painted
  std::int32_t pages = 0;    ///< that are painted, the one at work among them
  std::string printer = {};  ///< its name, once it is known
  PrintTrouble trouble = PrintTrouble::None;
  std::string words = {};  ///< what the print service says of the trouble, or its keywords with blanks between
};

/// Pages of the longest text that is printed.
inline constexpr std::int32_t mostPages = 5000;

/// One text on its way to the default printer. A job that is let go of before it is HandedOver prints nothing; from
/// there on it is the queue's, and the job only watches it.
class PrintJob {
 public:
  virtual ~PrintJob() = default;

  /// Goes on with the work, for a few hundredths of a second, and tells where it stands; only the end of a text with
  /// thousands of different letters takes longer. To be called again and again until the stage is Printed or Failed;
  /// both are final. Trouble at the stage HandedOver may pass.
  virtual const PrintState& goOn() = 0;

  /// What to print, at the stage Found.
  virtual void print(PrintText text) = 0;
};

}  // namespace velmora
