#include "platform/mime/body.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/mail_bounds.h"
#include "platform/mime/html_text.h"
#include "platform/mime/part_text.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// The plain part of some HTML mail holds nothing but line breaks, or blanks of any kind.
bool isBlank(Reading& reading, std::string_view text) {
  constexpr std::array<std::string_view, 9> blanks = {" ",      "\t",     "\r",     "\n",    "\u00A0",
                                                      "\u200B", "\u200C", "\u200D", "\uFEFF"};
  while (!text.empty()) {
    const auto found = std::find_if(blanks.begin(), blanks.end(), [&](auto blank) { return text.starts_with(blank); });
    if (found == blanks.end()) return false;
    text.remove_prefix(found->size());
    reading.worked(found->size());
  }
  return true;
}

/// As many bytes as the text is likely to take. A character of one byte may become one of three, and more.
std::size_t likelySize(const Parts& parts) {
  constexpr std::size_t most = mail_bounds::message + 8 * Reading::slice;
  constexpr std::size_t large = mail_bounds::message / 4;
  std::size_t size = 0;
  for (const Part& part : parts)
    if (part.Is == Role::Plain) size += part.Content.size();
  return size > large ? most : 3 * size;
}

/// Decodes each text once at most: what turns out to be blank is taken back.
class BodyWriter {
 public:
  BodyWriter(Reading& reading, const Parts& parts) : reading_(reading), parts_(parts), lines_(likelySize(parts)) {}

  /// Writes the part at this place and what it holds. Returns whether that has any text.
  bool write(std::size_t place) {
    switch (parts_[place].Is) {
      case Role::Sequence:
        return writeAll(place);
      case Role::Alternatives:
        return writeOne(place);
      case Role::Plain:
      case Role::Html:
        return writeText(parts_[place]);
      default:
        return false;
    }
  }

  std::string take() { return lines_.take(); }

 private:
  bool hasRoom() const { return lines_.text().size() <= mail_bounds::message; }

  std::vector<std::size_t> childrenOf(std::size_t place) const {
    std::vector<std::size_t> children;
    for (std::size_t child = place + 1; child < parts_[place].End; child = parts_[child].End) children.push_back(child);
    return children;
  }

  bool isPlain(std::size_t place) const {
    const std::span inside(parts_.begin() + static_cast<std::ptrdiff_t>(place), parts_[place].End - place);
    const auto holds = [&](Role role) { return std::ranges::find(inside, role, &Part::Is) != inside.end(); };
    return holds(Role::Plain) && !holds(Role::Html);
  }

  bool writeAll(std::size_t place) {
    bool hasText = false;
    for (const std::size_t child : childrenOf(place)) hasText = write(child) || hasText;
    return hasText;
  }

  bool writeOne(std::size_t place) {
    std::vector<std::size_t> children = childrenOf(place);
    const auto isPlainText = [this](std::size_t child) { return isPlain(child); };
    std::reverse(std::stable_partition(children.begin(), children.end(), isPlainText), children.end());
    return std::ranges::any_of(children, [this](std::size_t child) { return write(child); });
  }

  bool writeText(const Part& part) {
    if (!hasRoom()) return false;
    const std::size_t before = lines_.text().size();
    if (before > 0) lines_.add("\n");
    const std::size_t begin = lines_.text().size();
    if (part.Is == Role::Html)
      addHtml(part);
    else
      addPlain(part);
    const bool hasText = !isBlank(reading_, std::string_view(lines_.text()).substr(begin));
    if (!hasText) lines_.cutTo(before);
    return hasText;
  }

  void addPlain(const Part& part) {
    decodeText(reading_, part, [this](std::string_view text) {
      lines_.add(text);
      return hasRoom();
    });
  }

  void addHtml(const Part& part) {
    const auto [html, isWhole] = decodeHtml(reading_, part);
    const std::string text = htmlToText(reading_, html);
    for (std::string_view rest = text; !rest.empty() && hasRoom();) {
      const std::string_view slice = text::leftBytes(rest, Reading::slice);
      lines_.add(slice);
      reading_.worked(slice.size());
      rest.remove_prefix(slice.size());
    }
    if (!isWhole) lines_.add(mail_bounds::bodyMark);
  }

  Reading& reading_;
  const Parts& parts_;
  LineWriter lines_;
};

}  // namespace

std::string bodyOf(Reading& reading, const Parts& parts) {
  BodyWriter writer(reading, parts);
  writer.write(0);
  std::string body = writer.take();
  mail_bounds::cut(body, mail_bounds::message, mail_bounds::bodyMark);
  return body;
}

}  // namespace velmora::mime
