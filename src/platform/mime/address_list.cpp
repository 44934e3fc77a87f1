#include "platform/mime/address_list.h"

#include <cstddef>

namespace velmora::mime {

namespace {

/// The angle bracket at `open` is closed before another one opens.
bool isClosed(std::string_view masked, std::size_t open) {
  for (const char c : masked.substr(open + 1))
    if (c == '<' || c == '>') return c == '>';
  return false;
}

bool areAllClosed(std::string_view masked) {
  for (auto open = masked.find('<'); open != masked.npos; open = masked.find('<', open + 1))
    if (!isClosed(masked, open)) return false;
  return true;
}

}  // namespace

MaskedList maskList(std::string_view list) {
  std::string masked(list);
  std::size_t comments = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const char c = list[i];
    if (c == '\\') {
      masked[i] = comments > 0 ? ' ' : '"';
      if (++i < list.size()) masked[i] = masked[i - 1];
    } else if (quoted || (c == '"' && comments == 0)) {
      quoted = quoted != (c == '"');
      masked[i] = '"';
    } else if (c == '(' || comments > 0) {
      if (c == '(') ++comments;
      if (c == ')') --comments;
      masked[i] = ' ';
    }
  }
  const bool isClosed = comments == 0 && !quoted && areAllClosed(masked);
  return {std::move(masked), isClosed};
}

std::vector<ListPiece> splitList(std::string_view masked) {
  std::vector<ListPiece> pieces;
  std::size_t begin = 0;
  bool angled = false;
  for (std::size_t i = 0; i < masked.size(); ++i) {
    const char c = masked[i];
    if (c == '<' || c == '>') {
      angled = c == '<' && isClosed(masked, i);
    } else if ((c == ';' || c == ',') && !angled) {
      pieces.push_back({begin, i - begin});
      begin = i + 1;
    }
  }
  pieces.push_back({begin, masked.size() - begin});
  return pieces;
}

}  // namespace velmora::mime
