#pragma once

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <cups/cups.h>

#include <memory>

#include "platform/qt/services/print_errand.h"

namespace velmora {

class PrintLink;
struct JobNews;

/// Carries an errand out at the print service of the user's settings, in the thread of its caller, which it blocks.
class PrintService {
 public:
  /// `paper` is what is usual where the printer tells of none.
  PrintService(PrintErrand& errand, const Paper& paper);

  /// Returns when the errand's end is told, or soon after it was let go of.
  void run();

 private:
  bool find();
  bool send(const PrintErrand::Document& document);
  bool create(PrintLink& link, const char* title);
  bool transfer(PrintLink& link, const QByteArray& pages, const char* title);
  void watch();
  void judge(const JobNews& news);
  void judgeWait(const JobNews& news);
  void takeBack();

  bool tell(PrintStage stage, PrintTrouble trouble = PrintTrouble::None, const std::string& words = {});
  bool fail(const PrintLink& link, PrintTrouble trouble);

  PrintErrand& errand_;
  PrintState state_;
  std::unique_ptr<cups_dinfo_t, decltype(&cupsFreeDestInfo)> abilities_;
  std::unique_ptr<cups_dest_t, void (*)(cups_dest_t*)> printer_;
  int job_ = 0;
  int asksInVain_ = 0;  ///< in a row at which the printer was still being looked for
};

}  // namespace velmora
#endif
