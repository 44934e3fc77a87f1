#include "platform/qt/services/print_link.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <system_error>

namespace velmora {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;
constexpr std::chrono::milliseconds connecting = 10s;
constexpr double secondsBetweenLooks = 0.2;

}  // namespace

PrintLink::PrintLink(PrintErrand* errand)
    : errand_(errand),
      http_(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                         static_cast<int>(connecting.count()), errand == nullptr ? nullptr : errand->cancelFlag()),
            &httpClose) {
  if (!http_) return;
  const auto waitOn = [](http_t* /*http*/, void* link) { return static_cast<PrintLink*>(link)->isPatient() ? 1 : 0; };
  httpSetTimeout(http_.get(), secondsBetweenLooks, waitOn, this);
}

http_t* PrintLink::http() {
  end_ = std::chrono::steady_clock::now() + patience;
  return http_.get();
}

std::string PrintLink::failure() const {
  const int error = http_ ? httpError(http_.get()) : 0;
  return error == 0 ? cupsLastErrorString() : std::system_category().message(error);
}

bool PrintLink::isPatient() const {
  return (errand_ == nullptr || !errand_->isLetGo()) && std::chrono::steady_clock::now() < end_;
}

}  // namespace velmora
#endif
