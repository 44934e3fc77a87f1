#pragma once

#include <QtGlobal>

#include "platform/printing.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <cups/cups.h>
#endif

namespace velmora {

/// The paper that is usual where the user lives, with the edges that printers need.
Paper usualPaper();

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
/// The paper that a printer takes where a job asks for none, the user's saved wishes heeded; `usual` where it tells of
/// none, or only nonsense. It may ask the print service.
Paper paperOf(http_t* http, cups_dest_t& printer, cups_dinfo_t& abilities, const Paper& usual);
#endif

}  // namespace velmora
