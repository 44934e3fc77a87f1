#pragma once

#include <memory>

#include "platform/printing.h"

namespace velmora {

struct Program;

/// Looks at a printer without trouble after which the user is told of one anew: some come and go.
inline constexpr int calmForNews = 10;

/// The message that is being printed, if one is.
struct Printing {
  std::unique_ptr<PrintJob> job;
  PrintText rtbPrint;      ///< taken when Print was pressed, whatever is shown meanwhile
  int ticks = 0;           ///< of the timer, since the job began
  int calm = calmForNews;  ///< looks at the queue since the printer stood still
};

/// Sets the handlers of what goes on while a message is printed.
void ConnectPrinting(Program& program);

/// Begins to print the selected message: its text, or its raw form where that shows. Not while another one is on its
/// way to the printer's queue.
void PrintMessage(Program& program);

/// A message is on its way to the printer's queue, and would be lost with the program.
bool isPrinting(const Program& program);

/// Lets go of the job, and with it of what the printer's queue hasn't got yet.
void StopPrinting(Program& program);

/// Asks, where a message is on its way, whether to quit all the same.
bool SettlePrinting(Program& program);

}  // namespace velmora
