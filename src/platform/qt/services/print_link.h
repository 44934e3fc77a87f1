#pragma once

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <cups/cups.h>

#include <chrono>
#include <memory>
#include <string>

#include "platform/qt/services/print_errand.h"

namespace velmora {

/// A connection to the print service of the user's settings. Its waits end when nothing has come for half a minute, and
/// when the errand, if there is one, is let go of.
class PrintLink {
 public:
  explicit PrintLink(PrintErrand* errand);
  PrintLink(const PrintLink&) = delete;
  PrintLink& operator=(const PrintLink&) = delete;

  /// For the library; null where the service can't be reached. To be asked for anew before each call, which begins the
  /// half minute.
  http_t* http();

  /// What the library says of the call that failed, or the system of the connection that did.
  std::string failure() const;

 private:
  bool isPatient() const;

  PrintErrand* errand_;
  std::chrono::steady_clock::time_point end_;
  std::unique_ptr<http_t, decltype(&httpClose)> http_;
};

}  // namespace velmora
#endif
