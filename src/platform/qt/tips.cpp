#include "platform/qt/tips.h"

#include <QPoint>
#include <QRect>
#include <QStringList>
#include <QToolTip>

#include "platform/qt/harmless_text.h"

namespace velmora {

QString plainTip(std::string_view text) {
  constexpr int mostLines = 30;
  constexpr qsizetype widest = 100;
  QStringList lines;
  bool isWide = false;
  while (lines.size() < mostLines) {
    const auto end = text.find("\r\n");
    const QString line = harmlessLine(text.substr(0, end));
    isWide = isWide || line.size() > widest;
    lines += line.toHtmlEscaped();
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 2);
    if (lines.size() == mostLines) lines += QStringLiteral("…");
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
