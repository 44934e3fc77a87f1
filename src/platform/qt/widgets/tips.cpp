#include "platform/qt/widgets/tips.h"

#include <QPoint>
#include <QRect>
#include <QStringList>
#include <QToolTip>

#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

constexpr qsizetype widest = 100;

}  // namespace

QString plainTip(std::string_view text) {
  constexpr int mostLines = 30;
  constexpr qsizetype mostCharacters = 2000;
  QStringList lines;
  bool isWide = false;
  for (qsizetype left = mostCharacters; left > 0;) {
    const auto end = text.find("\r\n");
    const QString line = harmlessLine(text.substr(0, end), left);
    left -= line.size() + 1;
    isWide = isWide || line.size() > widest;
    lines += breakable(line, widest).toHtmlEscaped();
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 2);
    if (left <= 0 || lines.size() == mostLines) {
      lines += QStringLiteral("…");
      break;
    }
  }
  // A tip that may wrap makes itself narrow even where its lines are short.
  const QString space = isWide ? "pre-wrap" : "pre";
  return "<div style=\"white-space: " + space + "\">" + lines.join("<br>") + "</div>";
}

void showTip(std::string_view text, const QPoint& globalPosition, QWidget& widget, const QRect& area,
             int milliseconds) {
  if (text.empty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(globalPosition, plainTip(text), &widget, area, milliseconds);
  }
}

}  // namespace velmora
