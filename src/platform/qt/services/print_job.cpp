#include "platform/qt/services/print_job.h"

#include <QElapsedTimer>
#include <chrono>
#include <exception>
#include <optional>
#include <thread>
#include <utility>

#include "platform/qt/services/page_painter.h"
#include "platform/qt/services/print_errand.h"
#include "platform/qt/services/print_service.h"
#include "platform/qt/services/printer_paper.h"

namespace velmora {

namespace {

using namespace std::chrono_literals;

constexpr auto slice = 25ms;

/// A service that answers byte by byte does answer, but not in any useful time.
constexpr std::chrono::milliseconds longestFinding = 60s;

void carryOut(PrintErrand& errand, const Paper& paper) {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
  PrintService(errand, paper).run();
#else
  errand.tell({.stage = PrintStage::Failed, .paper = paper, .trouble = PrintTrouble::NoPrinter});
#endif
}

/// The library that talks to the print service blocks its caller, be it while a machine that never answers is looked
/// up, and has no calls that don't. So it does that in a thread, for which nobody waits: the thread shares nothing with
/// the program but the errand, and ends soon after that was let go of, or with the process.
void startThread(const std::shared_ptr<PrintErrand>& errand) {
  const auto guarded = [errand](auto&& work) {
    try {
      work();
    } catch (const std::exception& fault) {
      errand->tell({.stage = PrintStage::Failed, .trouble = PrintTrouble::NoAnswer, .words = fault.what()});
    }
  };
  const auto work = [errand, guarded, paper = usualPaper()] { guarded([&] { carryOut(*errand, paper); }); };
  guarded([&] { std::thread(work).detach(); });
}

class DefaultPrinterJob : public PrintJob {
 public:
  DefaultPrinterJob() {
    sinceStart_.start();
    startThread(errand_);
  }
  ~DefaultPrinterJob() override { errand_->letGo(); }
  DefaultPrinterJob(const DefaultPrinterJob&) = delete;
  DefaultPrinterJob& operator=(const DefaultPrinterJob&) = delete;

  const PrintState& goOn() override {
    if (painter_) {
      paint();
    } else {
      follow();
    }
    return state_;
  }

  PrintWork work() const { return errand_; }

  void print(PrintText text) override {
    if (state_.stage != PrintStage::Found) return;
    title_ = text.title;
    painter_.emplace(std::move(text), state_.paper);
    state_.stage = PrintStage::Painting;
    state_.pages = 1;
  }

 private:
  void paint() {
    const bool complete = painter_->paint(slice);
    state_.percent = painter_->percent();
    state_.pages = painter_->pages();
    if (state_.pages > mostPages) return giveUp(PrintTrouble::TooLong);
    if (!complete) return;
    errand_->send({painter_->takeDocument(), std::move(title_)});
    painter_.reset();
    state_.stage = PrintStage::Sending;
  }

  void giveUp(PrintTrouble trouble) {
    painter_.reset();
    errand_->letGo();
    state_.stage = PrintStage::Failed;
    state_.trouble = trouble;
    errand_->tell(state_);
  }

  void follow() {
    if (state_.stage == PrintStage::Failed) return;
    if (state_.stage == PrintStage::Finding && sinceStart_.hasExpired(longestFinding.count())) {
      return giveUp(PrintTrouble::NoAnswer);
    }
    PrintState told = errand_->state();
    told.percent = state_.percent;
    told.pages = state_.pages;
    state_ = std::move(told);
  }

  std::shared_ptr<PrintErrand> errand_ = std::make_shared<PrintErrand>();
  QElapsedTimer sinceStart_;
  std::optional<PagePainter> painter_;  ///< at the stage Painting
  std::string title_;
  PrintState state_;
};

}  // namespace

std::unique_ptr<PrintJob> makePrintJob(PrintWork& work) {
  auto job = std::make_unique<DefaultPrinterJob>();
  work = job->work();
  return job;
}

}  // namespace velmora
