#include "platform/qt/widgets/scrolled.h"

#include <QApplication>
#include <QScrollArea>

namespace velmora {

QScrollArea* makeScrolled(QWidget* content, QWidget* parent) {
  auto* area = new QScrollArea(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(content);
  QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
    if (area->widget()->isAncestorOf(now)) area->ensureWidgetVisible(now, 0);
  });
  return area;
}

}  // namespace velmora
