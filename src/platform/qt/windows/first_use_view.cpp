#include "platform/qt/windows/first_use_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/first_use_window.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/icons.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

FirstUseView::FirstUseView(FirstUseWindow& window, QWidget* mainWindow)
    : FormView(window, mainWindow, Qt::Dialog), window_(window) {
  constexpr QMargins margins(24, 20, 24, 16);
  constexpr int spacing = 16;
  setObjectName("frmFirstUse");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margins);
  column->setSpacing(spacing);
  column->addWidget(makeHead());
  column->addWidget(makeSteps());
  auto* buttons = makeToolbar(window_.tbrButtons, "tbrFirstUse", ButtonLook::TextBesideIcon, this);
  column->addWidget(buttons, 0, Qt::AlignRight);
  column->setSizeConstraint(QLayout::SetFixedSize);
  followForm();
}

QWidget* FirstUseView::makeHead() {
  constexpr int pictureSize = 64;
  constexpr int gap = 16;
  auto* head = new QWidget(this);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(gap);
  auto* picture = new QLabel(head);
  picture->setPixmap(applicationIcon().pixmap(QSize(pictureSize, pictureSize), devicePixelRatioF()));
  row->addWidget(picture);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(4);
  auto* welcome = makeLabel(window_.lblWelcome, "lblWelcome", head);
  QFont large = welcome->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  welcome->setFont(large);
  texts->addWidget(welcome);
  texts->addWidget(makeLabel(window_.lblVersion, "lblVersion", head));
  texts->addWidget(makeLabel(window_.lblNotice, "lblNotice", head));
  texts->addStretch(1);
  row->addLayout(texts, 1);
  return head;
}

/// Lines that are easy to read are not long ones.
QWidget* FirstUseView::makeSteps() {
  constexpr int lineWidth = 460;
  constexpr int gap = 10;
  auto* steps = new QWidget(this);
  steps->setFixedWidth(lineWidth);
  auto* column = new QVBoxLayout(steps);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(gap);
  for (Label& label : window_.lblSteps) {
    auto* step = makeLabel(label, "lblSteps", steps);
    step->setWordWrap(true);
    column->addWidget(step);
  }
  return steps;
}

/// The main window may not have found its place yet.
void FirstUseView::arrange() {
  adjustSize();
  centreOnScreen();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
