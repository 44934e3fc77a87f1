#include "platform/pop/kept_texts.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

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

std::size_t sizeOf(const std::vector<Attachment>& attached) {
  std::size_t size = 0;
  for (const Attachment& each : attached) size += sizeof(each) + each.name.capacity() + each.kind.capacity();
  return size;
}

}  // namespace

void keepWithin(std::size_t& room, ReadMail& mail) {
  for (const Text& each : texts) {
    std::string& text = mail.*each.text;
    mail_bounds::cut(text, std::max(room, each.least), each.mark);
    room -= std::min(room, text.size());
    // A text that grew piece by piece may hold twice the memory.
    text.shrink_to_fit();
  }
  // Half an address would be another one.
  room -= std::min(room, mail.Sender.size());
  mail.Attached.shrink_to_fit();
  if (sizeOf(mail.Attached) > room) mail.Attached = {};
  room -= sizeOf(mail.Attached);
}

}  // namespace velmora::pop
