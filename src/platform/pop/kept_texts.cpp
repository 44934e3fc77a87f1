#include "platform/pop/kept_texts.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "platform/mail_bounds.h"

namespace velmora::pop {
namespace {

struct Text {
  std::string ReadMail::*text;
  std::size_t least;  ///< bytes that are kept where there is no room
  std::string_view mark;
};

constexpr std::size_t line = 256;

constexpr std::array texts = {
    Text{&ReadMail::From, line, "..."},
    Text{&ReadMail::To, line, "..."},
    Text{&ReadMail::Subject, line, "..."},
    Text{&ReadMail::Raw, mail_bounds::rawMark.size(), mail_bounds::rawMark},
    Text{&ReadMail::Body, mail_bounds::bodyMark.size(), mail_bounds::bodyMark},
};

}  // namespace

void keepWithin(std::size_t& room, ReadMail& mail) {
  for (const Text& each : texts) {
    std::string& text = mail.*each.text;
    mail_bounds::cut(text, std::max(room, each.least), each.mark);
    room -= std::min(room, text.size());
    // A text that grew piece by piece may hold twice the memory.
    text.shrink_to_fit();
  }
}

}  // namespace velmora::pop
