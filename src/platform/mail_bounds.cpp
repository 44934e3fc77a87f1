#include "platform/mail_bounds.h"

#include "platform/text.h"

namespace velmora::mail_bounds {

void cut(std::string& text, std::size_t most, std::string_view mark) {
  if (text.size() <= most) return;
  const std::size_t kept = most > mark.size() ? most - mark.size() : 0;
  text.resize(text::leftBytes(text, kept).size());
  // The mark brings the end of the line before it.
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  text += mark;
}

}  // namespace velmora::mail_bounds
