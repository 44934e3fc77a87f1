#pragma once

#include <memory>

#include "platform/printing.h"

namespace velmora {

/// A job for the default printer of the desktop's print service.
std::unique_ptr<PrintJob> makePrintJob();

}  // namespace velmora
