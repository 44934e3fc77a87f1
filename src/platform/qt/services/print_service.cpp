#include "platform/qt/services/print_service.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <algorithm>
#include <chrono>
#include <string_view>

#include "platform/qt/services/print_link.h"
#include "platform/qt/services/print_watch.h"
#include "platform/qt/services/printer_paper.h"
#include "platform/qt/services/printer_reasons.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/text.h"

namespace velmora {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto betweenAsks = 1s;
constexpr auto longestSilence = 10min;

/// Characters of what somebody else says or names.
constexpr qsizetype MostWords = 300;

/// Bytes that a name has room for in the protocol.
constexpr std::size_t MostOfATitle = 255;

std::string titleFrom(const std::string& title) {
  return std::string(text::leftBytes(utf8(harmlessLine(title)), MostOfATitle));
}

/// There is no terminal that the library may ask on, and no dialog: a service that wants a password is none to us.
const char* noPassword(const char* /*prompt*/, http_t* /*http*/, const char* /*method*/, const char* /*resource*/,
                       void* /*user*/) {
  return nullptr;
}

}  // namespace

PrintService::PrintService(PrintErrand& errand, const Paper& paper)
    : errand_(errand),
      state_{.paper = paper},
      abilities_(nullptr, &cupsFreeDestInfo),
      printer_(nullptr, [](cups_dest_t* printer) { cupsFreeDests(1, printer); }) {
  cupsSetPasswordCB2(noPassword, nullptr);
}

void PrintService::run() {
  if (!find()) return;
  const auto document = errand_.waitForDocument();
  if (document && send(*document)) watch();
}

bool PrintService::find() {
  PrintLink link(&errand_);
  if (link.http() == nullptr) return fail(link, PrintTrouble::NoAnswer);
  printer_.reset(cupsGetNamedDest(link.http(), nullptr, nullptr));
  if (!printer_) {
    return fail(link, cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND ? PrintTrouble::NoPrinter : PrintTrouble::NoAnswer);
  }
  state_.printer = utf8(harmlessLine(printer_->name, MostWords));
  const char* accepting = cupsGetOption("printer-is-accepting-jobs", printer_->num_options, printer_->options);
  if (accepting != nullptr && std::string_view(accepting) == "false") {
    tell(PrintStage::Failed, PrintTrouble::QueueShut);
    return false;
  }
  abilities_.reset(cupsCopyDestInfo(link.http(), printer_.get()));
  if (!abilities_) return fail(link, PrintTrouble::NoAnswer);
  state_.paper = paperOf(link.http(), *printer_, *abilities_, state_.paper);
  tell(PrintStage::Found);
  return true;
}

bool PrintService::send(const PrintErrand::Document& document) {
  PrintLink link(&errand_);
  if (link.http() == nullptr) return fail(link, PrintTrouble::NoAnswer);
  const std::string title = titleFrom(document.title);
  if (!create(link, title.c_str())) return false;
  if (transfer(link, document.pages, title.c_str()) && tell(PrintStage::HandedOver)) return true;
  fail(link, PrintTrouble::Refused);
  takeBack();
  return false;
}

/// What is begun must not be printed, also where nobody asks for it any more.
void PrintService::takeBack() {
  PrintLink link(nullptr);
  if (link.http() != nullptr) cupsCancelDestJob(link.http(), printer_.get(), job_);
}

bool PrintService::create(PrintLink& link, const char* title) {
  const ipp_status_t status = cupsCreateDestJob(link.http(), printer_.get(), abilities_.get(), &job_, title,
                                                printer_->num_options, printer_->options);
  if (status <= IPP_STATUS_OK_EVENTS_COMPLETE) return true;
  return fail(link, status == IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS ? PrintTrouble::QueueShut : PrintTrouble::Refused);
}

bool PrintService::transfer(PrintLink& link, const QByteArray& pages, const char* title) {
  constexpr qsizetype most = 65'536;
  auto status =
      cupsStartDestDocument(link.http(), printer_.get(), abilities_.get(), job_, title, CUPS_FORMAT_PDF, 0, nullptr, 1);
  for (qsizetype at = 0; at < pages.size() && status == HTTP_STATUS_CONTINUE && !errand_.isLetGo(); at += most) {
    const auto size = static_cast<std::size_t>(std::min(most, pages.size() - at));
    status = cupsWriteRequestData(link.http(), pages.constData() + at, size);
  }
  if (status != HTTP_STATUS_CONTINUE || errand_.isLetGo()) return false;
  return cupsFinishDestDocument(link.http(), printer_.get(), abilities_.get()) <= IPP_STATUS_OK_EVENTS_COMPLETE;
}

void PrintService::watch() {
  JobNews last;
  auto end = Clock::now() + longestSilence;
  while (state_.stage == PrintStage::HandedOver && errand_.pause(betweenAsks)) {
    PrintLink link(&errand_);
    JobNews news;
    const bool answered = link.http() != nullptr && ask(link, job_, news);
    if (answered && news != last) end = Clock::now() + longestSilence;
    if (answered) judge(last = news);
    if (state_.stage == PrintStage::HandedOver && Clock::now() > end) tell(PrintStage::Printed);
  }
  if (errand_.isLetGo() && !errand_.handedOverIsKnown()) takeBack();
}

void PrintService::judge(const JobNews& news) {
  if (news.job == IPP_JSTATE_COMPLETED) {
    tell(PrintStage::Printed);
  } else if (news.job == IPP_JSTATE_CANCELED || news.job == IPP_JSTATE_ABORTED) {
    tell(PrintStage::Failed, PrintTrouble::Unfinished, news.words);
  } else {
    judgeWait(news);
  }
}

void PrintService::judgeWait(const JobNews& news) {
  const bool jobStands = news.job == IPP_JSTATE_HELD || news.job == IPP_JSTATE_STOPPED;
  const bool printerStands = news.printer == IPP_PSTATE_STOPPED;
  // A printer that is off is looked for without end.
  constexpr int asksForThePrinter = 45;
  const bool outOfReach = std::ranges::find(news.printerReasons, "connecting-to-device") != news.printerReasons.end();
  asksInVain_ = outOfReach ? asksInVain_ + 1 : 0;
  std::string words = troubleOf(news.printerReasons, printerStands || asksInVain_ > asksForThePrinter);
  if (words.empty() && jobStands) words = troubleOf(news.jobReasons, true);
  const bool waiting = jobStands || printerStands || !words.empty();
  tell(PrintStage::HandedOver, waiting ? PrintTrouble::Waiting : PrintTrouble::None, words);
}

bool PrintService::tell(PrintStage stage, PrintTrouble trouble, const std::string& words) {
  state_.stage = stage;
  state_.trouble = trouble;
  state_.words = utf8(harmlessLine(words, MostWords));
  return errand_.tell(state_);
}

bool PrintService::fail(const PrintLink& link, PrintTrouble trouble) {
  tell(PrintStage::Failed, trouble, link.failure());
  return false;
}

}  // namespace velmora
#endif
