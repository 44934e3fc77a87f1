#pragma once

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <cups/cups.h>

#include <string>
#include <vector>

namespace velmora {

class PrintLink;

/// What the print service tells of a job that it has, and of the job's printer.
struct JobNews {
  ipp_jstate_t job = IPP_JSTATE_PENDING;
  ipp_pstate_t printer = IPP_PSTATE_IDLE;
  int sheets = 0;          ///< that are printed
  std::string words = {};  ///< that the job's printer has left
  std::vector<std::string> jobReasons = {};
  std::vector<std::string> printerReasons = {};

  bool operator==(const JobNews&) const = default;
};

/// Asks for them and returns whether an answer came. A job that the service no longer knows is a completed one.
bool ask(PrintLink& link, int job, JobNews& news);

}  // namespace velmora
#endif
