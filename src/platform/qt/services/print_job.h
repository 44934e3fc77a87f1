#pragma once

#include <memory>

#include "platform/printing.h"

namespace velmora {

/// Lives for as long as anything of a job is at work, be it after the job was let go of.
using PrintWork = std::weak_ptr<const void>;

/// A job for the default printer of the desktop's print service.
std::unique_ptr<PrintJob> makePrintJob(PrintWork& work);

}  // namespace velmora
