#include "platform/pop/exchange.h"

#include <vector>

namespace velmora::pop {
namespace {

constexpr std::size_t maximumUnderWay = 100;
constexpr std::int64_t maximumBytesUnderWay = std::int64_t{4} << 20U;

class Window {
 public:
  Window(Conversation& conversation, std::span<const Request> requests, bool pipelined)
      : conversation_(conversation), requests_(requests), pipelined_(pipelined) {}

  /// Each batch costs the system as much as a single command would.
  void fill() {
    if (sent_ - answered_ > maximumUnderWay / 2) return;
    std::vector<std::string> commands;
    while (sent_ < requests_.size() && fits(requests_[sent_])) {
      commands.push_back(requests_[sent_].command);
      bytesUnderWay_ += requests_[sent_++].answerBytes;
    }
    if (!commands.empty()) conversation_.send(commands);
  }

  void answered() { bytesUnderWay_ -= requests_[answered_++].answerBytes; }

 private:
  bool fits(const Request& request) const {
    const std::size_t underWay = sent_ - answered_;
    if (underWay == 0) return true;
    return pipelined_ && underWay < maximumUnderWay && bytesUnderWay_ + request.answerBytes <= maximumBytesUnderWay;
  }

  Conversation& conversation_;
  std::span<const Request> requests_;
  bool pipelined_;
  std::size_t sent_ = 0;
  std::size_t answered_ = 0;
  std::int64_t bytesUnderWay_ = 0;
};

}  // namespace

void exchange(Conversation& conversation, std::span<const Request> requests, bool pipelined, const OnAnswer& onAnswer) {
  Window window(conversation, requests, pipelined);
  for (std::size_t index = 0; index < requests.size(); ++index) {
    window.fill();
    onAnswer(index, conversation.reply());
    window.answered();
    conversation.breathe();
  }
}

}  // namespace velmora::pop
