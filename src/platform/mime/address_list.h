#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmora::mime {

/// A list of addresses with what means nothing to its grammar masked, byte for byte: comments by blanks, what is quoted
/// by quotation marks.
struct MaskedList {
  std::string Text;
  bool IsClosed = true;  ///< no quotation mark, comment or angle bracket is left open
};

MaskedList maskList(std::string_view list);

/// The places where a masked list is cut: at the commas and semicolons that stand outside of angle brackets, where
/// those are closed.
struct ListPiece {
  std::size_t Begin;
  std::size_t Size;
};

std::vector<ListPiece> splitList(std::string_view masked);

}  // namespace velmora::mime
