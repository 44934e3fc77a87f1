#include "platform/qt/services/print_job.h"

namespace velmora {

namespace {

class NoPrinter : public PrintJob {
 public:
  const PrintState& goOn() override { return state_; }
  void print(PrintText /*text*/) override {}

 private:
  PrintState state_{.stage = PrintStage::Failed, .trouble = PrintTrouble::NoPrinter};
};

}  // namespace

std::unique_ptr<PrintJob> makePrintJob() { return std::make_unique<NoPrinter>(); }

}  // namespace velmora
