#include "messages/print_message.h"

#include <utility>

#include "app/child_windows.h"
#include "app/interface_state.h"
#include "app/program.h"
#include "messages/decisions/print_text.h"
#include "messages/decisions/print_words.h"

namespace velmora {

namespace {

/// Lines are made for margins that the pages then don't have: what is printed stands at the printable edge.
constexpr PrintMargins layoutMargins{360, 360, 360, 360};
constexpr PrintMargins pageMargins{};

/// The help's topic of printing.
constexpr int printingHelp = 132;

/// A job that is done sooner needs no window.
constexpr int ticksBeforeWindow = 25;

void PrintRichText(Program& program, const Paper& paper) {
  PrintText text = std::exchange(program.printing.rtbPrint, {});
  text.area = printArea(paper, fitRichTextToPrinter(paper, layoutMargins), pageMargins);
  program.printing.job->print(std::move(text));
}

void showProgress(Program& program, const PrintState& state) {
  ProgressWindow& window = program.frmPrinting;
  window.lblProgress.Caption = printProgress(state);
  window.ProgressBar.Max = state.stage == PrintStage::Painting ? 100 : 0;
  window.ProgressBar.Value = state.percent;
  if (++program.printing.ticks == ticksBeforeWindow) ShowChildWindow(program, window);
}

/// From here on another message may be printed. The queue is looked at now and then, for what becomes of this one.
void leaveToQueue(Program& program) {
  if (!isPrinting(program)) return;
  program.frmPrinting.Visible = false;
  program.frmPreview.tmrPrint.Enabled = false;
  program.frmPreview.tmrPrinter.Enabled = true;
  SetInterfaceState(program);
}

/// Nothing is told in the middle of something else. The job is asked again until it may be.
void tellOutcome(Program& program, const PrintState& state) {
  if (program.activity != Activity::Idle || program.dialogs.count > 0) return;
  const bool waits = state.trouble == PrintTrouble::Waiting;
  const bool isNews = std::exchange(program.printing.calm, waits ? 0 : program.printing.calm + 1) >= calmForNews;
  if (state.stage != PrintStage::HandedOver) StopPrinting(program);
  if (state.trouble == PrintTrouble::None || (waits && !isNews)) return;
  const HoldTimers hold(program);
  program.platform.MsgBox(printFailure(program.AppTitle, state));
}

/// What the job tells is copied, since the box about it may outlive it.
void goOn(Program& program) {
  const PrintState state = program.printing.job->goOn();
  if (state.stage == PrintStage::Found && !program.printing.rtbPrint.runs.empty()) PrintRichText(program, state.paper);
  if (state.stage < PrintStage::HandedOver) return showProgress(program, state);
  leaveToQueue(program);
  tellOutcome(program, state);
}

}  // namespace

void ConnectPrinting(Program& program) {
  program.frmPreview.tmrPrint.Tick = [&program] { goOn(program); };
  program.frmPreview.tmrPrinter.Tick = [&program] { goOn(program); };
  program.frmPrinting.Caption = program.AppTitle + " - Printing";
  program.frmPrinting.Help = [&program] { program.platform.showHelp(printingHelp); };
  program.frmPrinting.Close = [&program] { StopPrinting(program); };
  program.frmPrinting.tbrProgress.ButtonClick = [&program](Button&) { StopPrinting(program); };
}

void PrintMessage(Program& program) {
  const MailMessage* message = selectedMail(program);
  if (message == nullptr || isPrinting(program)) return;
  StopPrinting(program);
  const bool rawShown = program.frmPreview.rtbRawMsg.Visible;
  program.printing = {.job = program.platform.startPrinting(),
                      .rtbPrint = {.title = program.AppTitle + " - Message",
                                   .font = "MS Sans Serif",
                                   .points = 10,
                                   .runs = printRuns(*message, rawShown),
                                   .area = {}}};
  program.frmPreview.tmrPrint.Enabled = true;
  SetInterfaceState(program);
}

bool isPrinting(const Program& program) { return program.frmPreview.tmrPrint.Enabled; }

void StopPrinting(Program& program) {
  program.printing = {};
  program.frmPrinting.Visible = false;
  program.frmPreview.tmrPrint.Enabled = false;
  program.frmPreview.tmrPrinter.Enabled = false;
  SetInterfaceState(program);
}

bool SettlePrinting(Program& program) {
  return !isPrinting(program) || program.platform.MsgBox(quitWhilePrinting(program.AppTitle)) == Answer::Yes;
}

}  // namespace velmora
