#include "platform/mime/date_zone.h"

#include <algorithm>

#include "platform/ascii.h"
#include "platform/mime/date_names.h"

namespace velmora::mime {

namespace {

/// No zone is farther from UTC, in minutes.
constexpr int FarthestZone = 14 * 60;

}  // namespace

std::optional<int> takeOffset(Pieces& pieces) {
  const bool isBehind = pieces.take() == '-';
  pieces.skipBlanks();
  const Element first = pieces.takeNumber();
  int minutes = first.Digits <= 2 ? first.Value * 60 : first.Value / 100 * 60 + first.Value % 100;
  bool isZone = first.Digits > 0 && first.Digits <= 4 && (first.Digits <= 2 || first.Value % 100 < 60);
  if (pieces.takeBeforeDigit(':')) {
    const Element second = pieces.takeNumber();
    isZone = first.Digits <= 2 && second.Digits == 2 && second.Value < 60;
    minutes += second.Value;
  }
  if (!isZone || minutes > FarthestZone) return std::nullopt;
  return isBehind ? -minutes : minutes;
}

std::optional<int> zoneInComment(std::string_view comment) {
  Pieces pieces(comment);
  pieces.skipBlanks();
  const std::string_view word = pieces.takeWord();
  pieces.skipBlanks();
  if (pieces.atEnd()) return std::ranges::all_of(word, ascii::isCapital) ? zoneNamed(word) : std::nullopt;
  const bool isSign = pieces.front() == '+' || pieces.front() == '-';
  if (!isSign || !(word.empty() || word == "GMT" || word == "UTC")) return std::nullopt;
  const auto minutes = takeOffset(pieces);
  return pieces.atEnd() ? minutes : std::nullopt;
}

}  // namespace velmora::mime
