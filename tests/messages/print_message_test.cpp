#include "messages/print_message.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "messages/decisions/print_text.h"
#include "messages/preview.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr Paper a4{.width = 11'906, .height = 16'838, .left = 240, .top = 300, .right = 200, .bottom = 400};

TEST(PrintedText, HasTheFieldsTheRuleAndTheTab) {
  MailMessage message;
  message.From = "Ann";
  message.To = "me";
  message.Date = "today";
  message.Subject = "Lunch";
  message.Body = "Hello\r\n";
  message.Raw = "From: Ann\r\nX: y";
  const std::string rule(97, '_');
  std::vector<PrintRun> runs = {{"From:  ", true},    {"Ann\r\n", false},   {"To:  ", true},
                                {"me\r\n", false},    {"Date:  ", true},    {"today\r\n", false},
                                {"Subject:  ", true}, {"Lunch\r\n", false}, {rule + "\r\n\r\n", false},
                                {"Hello\r\n", false}};
  EXPECT_EQ(printRuns(message, false), runs);
  runs.back().text = "From: Ann\r\nX: y\r\n\r\nHello\r\n";
  EXPECT_EQ(printRuns(message, true), runs);
}

TEST(PrintedText, StandsAtThePrintableEdgeInLinesForMargins) {
  const PrintMargins quarterInch{360, 360, 360, 360};
  EXPECT_EQ(fitRichTextToPrinter(a4, quarterInch), 11'186);
  EXPECT_EQ(printArea(a4, 11'186, {}), (PrintArea{240, 300, 11'186, 16'138}));
  const Paper wideMargins{.width = 11'906, .height = 16'838, .left = 900, .top = 0, .right = 500, .bottom = 0};
  EXPECT_EQ(printArea(wideMargins, 11'186, {}), (PrintArea{900, 0, 10'506, 16'838})) << "no more than can be printed";
  EXPECT_EQ(printArea(a4, 11'186, quarterInch), (PrintArea{360, 360, 11'186, 16'078}));
}

class PrintedMessage : public test::RunningProgram {
 protected:
  void SetUp() override {
    option("UseInterval", "1");
    addAccount("Work").messages = {test::message("one"), test::message("two")};
    start();
    check();
    preview(1);
  }

  void preview(std::int32_t row) {
    clickRow(row);
    PreviewMessage(program);
  }
  void press() { program.frmPreview.tbrButtons["Print"].click(); }
  bool mayPrint() { return program.frmPreview.tbrButtons["Print"].Enabled; }
  void tick(PrintStage stage, PrintTrouble trouble = PrintTrouble::None) {
    platform.printState.stage = stage;
    platform.printState.trouble = trouble;
    program.frmPreview.tmrPrint.tick();
    program.frmPreview.tmrPrinter.tick();
  }
};

TEST_F(PrintedMessage, GoesOnWhateverTheWindowsDo) {
  program.frmPreview.TabStrip.SelectTab(2);
  press();
  EXPECT_FALSE(mayPrint());
  press();
  EXPECT_EQ(platform.printJobs, 1) << "one at a time";
  tick(PrintStage::Finding);
  preview(2);
  program.frmPreview.TabStrip.SelectTab(1);
  frmPreview_Unload(program);
  platform.printState.paper = a4;
  tick(PrintStage::Found);
  tick(PrintStage::Painting);
  ASSERT_THAT(platform.printed, SizeIs(1));
  EXPECT_EQ(platform.printed[0].runs.back().text, "From: a@example.org\r\nSubject: one\r\n\r\nText of one\r\n");
  EXPECT_EQ(platform.printed[0].area, (PrintArea{240, 300, 11'186, 16'138}));
  EXPECT_EQ(platform.printed[0].font, "MS Sans Serif");
  preview(1);
  EXPECT_FALSE(mayPrint());
  tick(PrintStage::HandedOver);
  EXPECT_TRUE(mayPrint()) << "the queue has it";
  tick(PrintStage::Printed);
  EXPECT_EQ(platform.printJobs, 0);
  EXPECT_TRUE(platform.asked.empty());
}

TEST_F(PrintedMessage, ShowsAWindowOnlyWhereItTakesLong) {
  press();
  ProgressWindow& window = program.frmPrinting;
  tick(PrintStage::Finding);
  EXPECT_FALSE(window.Visible);
  platform.printState.pages = 7;
  platform.printState.percent = 30;
  for (int i = 0; i < 100; ++i) tick(PrintStage::Painting);
  EXPECT_TRUE(window.Visible);
  EXPECT_EQ(window.lblProgress.Caption.get(), "Making page 7...");
  EXPECT_EQ(window.ProgressBar.Value.get(), 30);
  window.tbrProgress["Stop"].click();
  EXPECT_FALSE(window.Visible);
  EXPECT_EQ(platform.printJobs, 0);
  EXPECT_TRUE(mayPrint());
}

TEST_F(PrintedMessage, TellsOfTroubleOnceAndNotInTheMiddleOfSomethingElse) {
  platform.printState.printer = "Office";
  for (const auto& [trouble, words] : {std::pair{PrintTrouble::NoPrinter, "There is no printer to print on."},
                                       {PrintTrouble::NoAnswer, "does not answer"},
                                       {PrintTrouble::QueueShut, "'Office' takes no jobs"},
                                       {PrintTrouble::Refused, "'Office' did not take the message"}}) {
    press();
    tick(PrintStage::Failed, trouble);
    EXPECT_THAT(platform.asked.back().text, HasSubstr(words));
    EXPECT_EQ(platform.printJobs, 0);
    EXPECT_TRUE(mayPrint());
  }
  platform.asked.clear();
  press();
  platform.printState.words = "media-empty";
  program.dialogs.count = 1;
  tick(PrintStage::HandedOver, PrintTrouble::Waiting);
  EXPECT_TRUE(platform.asked.empty());
  program.dialogs.count = 0;
  platform.onAsked = [this] { EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled); };
  for (int i = 0; i < 3; ++i) tick(PrintStage::HandedOver, PrintTrouble::Waiting);
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled) << "the preview is still open";
  EXPECT_THAT(titles(), ElementsAre("Velmora - Printer Waits"));
  EXPECT_THAT(platform.asked[0].text, HasSubstr("media-empty"));
  tick(PrintStage::HandedOver);
  EXPECT_EQ(platform.printJobs, 1) << "it may go on";
  tick(PrintStage::HandedOver, PrintTrouble::Waiting);
  EXPECT_EQ(platform.asked.size(), 1U) << "some trouble comes and goes";
  for (int i = 0; i < calmForNews; ++i) tick(PrintStage::HandedOver);
  tick(PrintStage::HandedOver, PrintTrouble::Waiting);
  EXPECT_EQ(platform.asked.size(), 2U) << "and stand still anew";
  tick(PrintStage::Failed, PrintTrouble::Unfinished);
  EXPECT_THAT(platform.asked.back().text, HasSubstr("did not print the whole message"));
  EXPECT_EQ(platform.printJobs, 0);
}

TEST_F(PrintedMessage, IsAskedAboutBeforeItWouldBeLost) {
  press();
  tick(PrintStage::Painting);
  platform.answers = {Answer::No, Answer::Yes};
  QuitApplication(program);
  EXPECT_FALSE(platform.hasQuit);
  EXPECT_EQ(platform.printJobs, 1);
  tick(PrintStage::HandedOver);
  press();
  tick(PrintStage::Finding);
  EXPECT_EQ(platform.printJobs, 1) << "what the queue has is not looked at any more";
  QuitApplication(program);
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_EQ(platform.printJobs, 0);
  EXPECT_THAT(titles(), ElementsAre("Velmora - Still Printing", "Velmora - Still Printing"));
}

}  // namespace
}  // namespace velmora
