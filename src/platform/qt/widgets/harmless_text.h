#pragma once

#include <QString>
#include <string_view>

namespace velmora {

/// Any bytes, taken as UTF-8, as text that shows what it holds and cannot disguise it: lines end with LF, tabs stay,
/// other control characters are seen as their pictures, what turns the direction of writing is gone or a replacement
/// character, and no letter carries more than a few marks. Bytes that are no UTF-8 are replacement characters. The
/// result has no more UTF-16 units than there were bytes.
QString harmlessText(std::string_view utf8);

/// The beginning of it as one line of at most `most` UTF-16 units, for a cell, a label or a tool tip: line ends and
/// tabs are blanks, and what is longer ends with "…". Takes time by `most`, not by the size of the text. A label or a
/// tool tip that takes HTML needs it escaped.
QString harmlessLine(std::string_view utf8, qsizetype most = 1000);

/// The same text, with places to break at in words of more than `widest` characters.
QString breakable(const QString& text, qsizetype widest);

}  // namespace velmora
