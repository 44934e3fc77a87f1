#include "platform/qt/windows/account_colours_view.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <array>

#include "accounts/accounts_page.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/colour_patch.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// The names of the six colours, for those who can't see them.
constexpr std::array colourNames = {"Blue", "Cyan", "Green", "Magenta", "Red", "Black"};

QString boxName(std::size_t box) { return QStringLiteral("lblColourBox%1").arg(box + 1); }

QWidget* makeColourBoxes(AccountsPage& page, QWidget* frame) {
  auto* group = new QGroupBox(frame);
  group->setObjectName("fraColourBox");
  group->setAutoFillBackground(true);
  auto* row = new QHBoxLayout(group);
  for (std::size_t i = 0; i < page.lblColourBox.size(); ++i) {
    auto* patch = new ColourPatch(page.lblColourBox[i], ColourPatch::Use::Choose, group);
    patch->setObjectName(boxName(i));
    patch->setAccessibleName(colourNames[i]);
    patch->setToolTip(colourNames[i]);
    row->addWidget(patch);
  }
  group->setTitle(literal(page.fraColourBox.Caption));
  return group;
}

/// Where the button is. The pointer must get there without crossing the fields' ground.
void showBesideButton(QWidget& boxes, const QWidget& button) {
  const QWidget& bar = *button.parentWidget();
  boxes.adjustSize();
  boxes.move(bar.mapTo(boxes.parentWidget(), QPoint(bar.width(), bar.height() - boxes.height())));
  boxes.show();
  boxes.raise();
}

/// The box of the account's colour, or the first where it has another one.
std::size_t chosenBox(const AccountsPage& page) {
  for (std::size_t box = 0; box < page.lblColourBox.size(); ++box) {
    if (page.lblColourBox[box].BackColour == page.txtAcntColour.BackColour.get()) return box;
  }
  return 0;
}

/// The boxes take the keyboard and hand it back to the button; where the user takes it elsewhere, they go.
void followColours(AccountsPage& page, QWidget& boxes, QToolButton& button) {
  Frame& colours = page.fraColourBox;
  colours.Visible.watch([&page, &boxes, &button](bool on) {
    if (on) {
      showBesideButton(boxes, button);
      boxes.findChild<ColourPatch*>(boxName(chosenBox(page)))->setFocus(Qt::OtherFocusReason);
    } else {
      if (boxes.isAncestorOf(QApplication::focusWidget())) button.setFocus();
      boxes.hide();
    }
  });
  QObject::connect(qApp, &QApplication::focusChanged, &boxes, [&colours, &boxes](QWidget*, QWidget* now) {
    if (now != nullptr && !boxes.isAncestorOf(now)) colours.Visible = false;
  });
}

}  // namespace

void addColourBoxes(AccountsPage& page, QWidget* frame, QToolButton& button) {
  followColours(page, *makeColourBoxes(page, frame), button);
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
