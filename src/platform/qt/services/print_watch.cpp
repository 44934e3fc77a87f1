#include "platform/qt/services/print_watch.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <algorithm>
#include <array>
#include <memory>

#include "platform/qt/services/print_link.h"

namespace velmora {

namespace {

using Answer = std::unique_ptr<ipp_t, decltype(&ippDelete)>;

template <std::size_t Count>
Answer request(PrintLink& link, ipp_op_t operation, const char* about, const std::string& uri,
               const std::array<const char*, Count>& wanted) {
  ipp_t* question = ippNewRequest(operation);
  ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_URI, about, nullptr, uri.c_str());
  ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  ippAddStrings(question, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", static_cast<int>(Count), nullptr,
                wanted.data());
  return {cupsDoRequest(link.http(), question, "/"), &ippDelete};
}

int numberIn(const Answer& answer, const char* name, ipp_tag_t kind, int otherwise) {
  ipp_attribute_t* found = ippFindAttribute(answer.get(), name, kind);
  return found == nullptr ? otherwise : ippGetInteger(found, 0);
}

std::vector<std::string> wordsIn(const Answer& answer, const char* name) {
  constexpr int most = 20;
  std::vector<std::string> words;
  ipp_attribute_t* found = ippFindAttribute(answer.get(), name, IPP_TAG_ZERO);
  const int count = found == nullptr ? 0 : std::min(ippGetCount(found), most);
  for (int i = 0; i < count; ++i) {
    if (const char* word = ippGetString(found, i, nullptr)) words.emplace_back(word);
  }
  return words;
}

std::string wordIn(const Answer& answer, const char* name) {
  const auto words = wordsIn(answer, name);
  return words.empty() ? std::string() : words.front();
}

void askPrinter(PrintLink& link, const std::string& uri, JobNews& news) {
  constexpr std::array wanted = {"printer-state", "printer-state-reasons"};
  const Answer answer = request(link, IPP_OP_GET_PRINTER_ATTRIBUTES, "printer-uri", uri, wanted);
  news.printer =
      static_cast<ipp_pstate_t>(numberIn(answer, "printer-state", IPP_TAG_ENUM, static_cast<int>(IPP_PSTATE_IDLE)));
  news.printerReasons = wordsIn(answer, "printer-state-reasons");
}

}  // namespace

bool ask(PrintLink& link, int job, JobNews& news) {
  constexpr std::array wanted = {"job-state", "job-state-reasons", "job-printer-uri", "job-printer-state-message",
                                 "job-media-sheets-completed"};
  const std::string uri = "ipp://localhost/jobs/" + std::to_string(job);
  const Answer answer = request(link, IPP_OP_GET_JOB_ATTRIBUTES, "job-uri", uri, wanted);
  if (cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) {
    news.job = IPP_JSTATE_COMPLETED;
    return true;
  }
  const int state = numberIn(answer, "job-state", IPP_TAG_ENUM, 0);
  if (state == 0) return false;
  news.job = static_cast<ipp_jstate_t>(state);
  news.jobReasons = wordsIn(answer, "job-state-reasons");
  news.words = wordIn(answer, "job-printer-state-message");
  news.sheets = numberIn(answer, "job-media-sheets-completed", IPP_TAG_INTEGER, 0);
  const std::string printer = wordIn(answer, "job-printer-uri");
  if (!printer.empty()) askPrinter(link, printer, news);
  return true;
}

}  // namespace velmora
#endif
