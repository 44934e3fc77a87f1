#include "messages/decisions/mailto.h"

#include <string_view>
#include <utility>

#include "platform/ascii.h"
#include "platform/text.h"

namespace velmora {

namespace {

constexpr std::string_view bodyMark = "\r\n[The message goes on. It is too long to be quoted whole.]\r\n";
constexpr std::string_view subjectMark = "...";

/// What every address may hold as it is (RFC 3986 section 2.3).
bool isUnreserved(char c) {
  constexpr std::string_view marks = "-._~";
  return ascii::isLetter(c) || ascii::isDigit(c) || marks.find(c) != marks.npos;
}

constexpr std::size_t escapeSize = 3;

std::size_t encodedSize(std::string_view text) {
  std::size_t size = 0;
  for (const char c : text) size += isUnreserved(c) ? 1 : escapeSize;
  return size;
}

void appendEncoded(std::string& address, std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  for (const char c : text) {
    if (isUnreserved(c)) {
      address += c;
    } else {
      const auto code = static_cast<unsigned char>(c);
      address.append(1, '%').append(1, digits[code >> 4U]).append(1, digits[code & 0x0FU]);
    }
  }
}

/// As many bytes of the front as take no more than `room` once they are encoded.
std::size_t fitting(std::string_view text, std::size_t room) {
  std::size_t size = 0;
  while (size < text.size()) {
    const std::size_t more = isUnreserved(text[size]) ? 1 : escapeSize;
    if (more > room) break;
    room -= more;
    ++size;
  }
  return size;
}

/// Behind a whole line, or else a whole character.
void cutBody(std::string& body, std::size_t room) {
  if (encodedSize(body) <= room) return;
  const std::size_t mark = encodedSize(bodyMark);
  const std::string_view kept = text::leftBytes(body, fitting(body, room > mark ? room - mark : 0));
  const auto line = kept.rfind("\r\n");
  body.resize(line == std::string_view::npos || kept.size() - line > longestSubject ? kept.size() : line);
  body += bodyMark;
}

}  // namespace

MailDraft handedOn(MailDraft draft) {
  if (draft.subject.size() > longestSubject) {
    draft.subject.resize(text::leftBytes(draft.subject, longestSubject - subjectMark.size()).size());
    draft.subject += subjectMark;
  }
  const std::string body = std::exchange(draft.body, {});
  const std::size_t others = mailtoAddress(draft).size() + std::string_view("&body=").size();
  draft.body = body;
  cutBody(draft.body, longestMailto - others);
  return draft;
}

std::string mailtoAddress(const MailDraft& draft) {
  std::string address = "mailto:";
  // The sign between the two halves of an address is the one that is meant as such.
  const auto at = draft.to.rfind('@');
  appendEncoded(address, std::string_view(draft.to).substr(0, at));
  if (at != std::string::npos) appendEncoded(address.append(1, '@'), std::string_view(draft.to).substr(at + 1));
  char separator = '?';
  const auto add = [&](std::string_view name, const std::string& text) {
    if (text.empty()) return;
    address.append(1, separator).append(name).append(1, '=');
    appendEncoded(address, text);
    separator = '&';
  };
  add("subject", draft.subject);
  add("body", draft.body);
  return address;
}

}  // namespace velmora
