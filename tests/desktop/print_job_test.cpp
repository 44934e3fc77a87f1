#include "platform/qt/services/print_job.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <functional>

#include "platform/qt/services/printer_reasons.h"
#include "support/print_service.h"

namespace velmora {
namespace {

using test::outputOf;
using testing::HasSubstr;

constexpr int patience = 30'000;

PrintText lines(int count, const std::string& title = "A title") {
  PrintText text{.title = title, .font = "DejaVu Sans", .runs = {}, .area = {1000, 1000, 9000, 14000}};
  for (int i = 0; i < count; ++i) text.runs.push_back({"line " + std::to_string(i) + "\n", i == 0});
  return text;
}

/// A job, with a text for it as soon as it is found, and followed to a place.
class Job {
 public:
  explicit Job(PrintText text = lines(3)) : text_(std::move(text)) {}

  bool follow(const std::function<bool(const PrintState&)>& wanted) {
    return QTest::qWaitFor(
        [&] {
          state = job_->goOn();
          if (wanted(state)) return true;
          if (state.stage == PrintStage::Found) job_->print(std::exchange(text_, {}));
          return false;
        },
        patience);
  }
  bool reaches(PrintStage stage) {
    return follow([stage](const PrintState& now) { return now.stage == stage; });
  }
  bool waitsFor(const std::string& words) {
    return follow([&words](const PrintState& now) {
      return now.stage == PrintStage::HandedOver && now.trouble == PrintTrouble::Waiting && now.words == words;
    });
  }

  PrintState state;

 private:
  PrintWork work_;
  std::unique_ptr<PrintJob> job_ = makePrintJob(work_);
  PrintText text_;
};

/// A thread of a job that was let go of may still be at work.
auto threads() { return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(); }

/// Bytes of the jobs that wait.
int lengthInQueue() {
  const auto words = outputOf("lpstat", {"-o"}).simplified().split(' ');
  return words.size() > 2 ? words[2].toInt() : 0;
}

class Printing : public testing::Test {
 protected:
  test::PrintService service_;
};

TEST_F(Printing, PutsTheTextOnThePrintersPaperAsTheUserWishes) {
  outputOf("lpoptions", {"-p", "Robin", "-o", "media=Letter", "-o", "sides=two-sided-long-edge"});
  Job job(lines(1000, "From Ann\n\x1B: " + std::string(400, 'x')));
  ASSERT_TRUE(job.reaches(PrintStage::Found));
  EXPECT_EQ(job.state.paper, (Paper{12240, 15840, 360, 360, 360, 360}));
  EXPECT_EQ(job.state.printer, "Robin");
  ASSERT_TRUE(job.reaches(PrintStage::Printed));
  EXPECT_EQ(job.state.percent, 100);
  EXPECT_EQ(service_.printed(), QStringList{"1"});
  const auto wishes = service_.wishes("1").toStdString();
  EXPECT_THAT(wishes, testing::StartsWith("From Ann ␛: xxx"));
  EXPECT_THAT(wishes, HasSubstr(" media=Letter "));
  EXPECT_THAT(wishes, HasSubstr(" sides=two-sided-long-edge "));
  const auto about = outputOf("pdfinfo", {service_.pages("1")}).toStdString();
  EXPECT_THAT(about, HasSubstr("Pages:           " + std::to_string(job.state.pages)));
  EXPECT_THAT(about, HasSubstr("(letter)"));
  EXPECT_THAT(outputOf("pdftotext", {service_.pages("1"), "-"}).toStdString(), HasSubstr("line 998\nline 999\n"));
}

TEST_F(Printing, FailsWhereNoPrinterTakesIt) {
  const struct {
    std::function<void()> before;
    PrintTrouble trouble;
  } cases[] = {{[] { outputOf("cupsreject", {"Robin"}); }, PrintTrouble::QueueShut},
               {[] {
                  outputOf("lpadmin", {"-x", "Robin"});
                },
                PrintTrouble::NoPrinter},
               {[this] { service_.end(); }, PrintTrouble::NoAnswer}};
  for (const auto& [before, trouble] : cases) {
    before();
    Job job;
    EXPECT_TRUE(job.reaches(PrintStage::Failed));
    EXPECT_EQ(job.state.trouble, trouble);
  }
}

TEST_F(Printing, TellsWhatThePrinterWaitsFor) {
  outputOf("cupsdisable", {"Robin"});
  Job job;
  EXPECT_TRUE(job.waitsFor("paused")) << static_cast<int>(job.state.trouble) << job.state.words;
  service_.hold("media-jam-error,door-open-report");
  outputOf("cupsenable", {"Robin"});
  EXPECT_TRUE(job.waitsFor("media-jam"));
  EXPECT_EQ(service_.printed(), QStringList());
  service_.goOn();
  EXPECT_TRUE(job.reaches(PrintStage::Printed));
  EXPECT_EQ(job.state.trouble, PrintTrouble::None);
  service_.hold("media-empty");
  Job other;
  EXPECT_TRUE(other.waitsFor("media-empty")) << static_cast<int>(other.state.stage) << other.state.words;
  outputOf("cancel", {"-a"});
  EXPECT_TRUE(other.reaches(PrintStage::Failed));
  EXPECT_EQ(other.state.trouble, PrintTrouble::Unfinished);
}

TEST_F(Printing, PrintsNothingOfWhatWasLetGoOfEarlier) {
  const auto before = threads();
  outputOf("cupsdisable", {"Robin"});
  for (const auto stage : {PrintStage::Finding, PrintStage::Found, PrintStage::Painting, PrintStage::Sending}) {
    Job job(lines(5000));
    EXPECT_TRUE(job.follow([stage](const PrintState& now) { return now.stage >= stage; }));
  }
  {
    Job job(lines(5000));
    EXPECT_TRUE(job.reaches(PrintStage::Sending));
    EXPECT_TRUE(QTest::qWaitFor([] { return lengthInQueue() > 1000; }, patience)) << "unknown to its owner";
  }
  EXPECT_TRUE(Job(lines(1)).reaches(PrintStage::HandedOver));
  EXPECT_TRUE(QTest::qWaitFor([before] { return threads() == before; }, patience));
  outputOf("cupsenable", {"Robin"});
  EXPECT_TRUE(Job(lines(2)).reaches(PrintStage::Printed));
  std::vector<std::string> texts;
  for (const QString& job : service_.printed())
    texts.push_back(outputOf("pdftotext", {service_.pages(job), "-"}).toStdString());
  EXPECT_THAT(texts, testing::ElementsAre("line 0\n\n\f", "line 0\nline 1\n\n\f"));
}

TEST(PrintServices, ThatNeverAnswerHoldNobody) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  qputenv("CUPS_SERVER", QString("127.0.0.1:%1").arg(server.serverPort()).toUtf8());
  const auto before = threads();
  {
    Job job;
    EXPECT_TRUE(job.follow([&server](const PrintState&) { return server.hasPendingConnections(); }));
    EXPECT_EQ(job.state.stage, PrintStage::Finding);
    QElapsedTimer clock;
    clock.start();
    job = Job();
    EXPECT_LT(clock.elapsed(), 1000);
  }
  EXPECT_TRUE(QTest::qWaitFor([before] { return threads() == before; })) << "its thread ends soon";
}

TEST(PrinterReasons, AreThoseThatNeedAPerson) {
  const struct {
    std::vector<std::string> reasons;
    const char* moving;
    const char* still;
  } cases[] = {{{"none"}, "", ""},
               {{"media-empty", "door-open-error"}, "media-empty door-open", "media-empty door-open"},
               {{"connecting-to-device", "media-low"}, "", "connecting-to-device media-low"},
               {{"toner-low-warning", "offline-report", "cups-waiting-for-job-completed"}, "", "toner-low"},
               {{}, "", ""}};
  for (const auto& [reasons, moving, still] : cases) {
    EXPECT_EQ(troubleOf(reasons, false), moving);
    EXPECT_EQ(troubleOf(reasons, true), still);
  }
}

}  // namespace
}  // namespace velmora
