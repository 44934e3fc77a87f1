#include "platform/qt/windows/rule_fits_view.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/room.h"
#include "platform/qt/windows/message_list_view.h"
#include "rules/rule_fits_window.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// The rule in it may have a name of any length, behind which the count stands.
QString shortened(const std::string& sentence) {
  constexpr qsizetype longest = 4000;
  constexpr qsizetype half = 200;
  constexpr qsizetype widestWord = 30;
  const QString line = harmlessLine(sentence, longest);
  return breakable(line.size() > 2 * half ? line.left(half) + "…" + line.right(half) : line, widestWord);
}

}  // namespace

RuleFitsView::RuleFitsView(RuleFitsWindow& window, QWidget* mainWindow) : FormView(window, mainWindow, Qt::Dialog) {
  constexpr QSize startSize(640, 360);
  setObjectName("frmRuleFits");
  auto* column = new QVBoxLayout(this);
  auto* label = makeLabel(window.lblRuleFits, "lblRuleFits", this);
  label->setWordWrap(true);
  window.lblRuleFits.Caption.watch([label](const std::string& sentence) { label->setText(shortened(sentence)); });
  column->addWidget(label);
  auto* list = new MessageListView(window.lvwRuleFits, window.tipRuleFits, ImageList("imlListViewIcons"),
                                   ImageList("imlListViewColumnHeader"), this);
  list->setObjectName("lvwRuleFits");
  list->setAccessibleName("Messages that the rule fits");
  column->addWidget(list, 1);
  column->addWidget(makeToolbar(window.tbrButtons, "tbrButtons", ButtonLook::TextBesideIcon, this), 0, Qt::AlignRight);
  resize(inFontOf(*this, startSize).boundedTo(roomFor(*this)));
  window.lvwRuleFits.Columns[0].Width = width() / 5;
  window.lvwRuleFits.Columns[1].Width = width() * 2 / 5;
  list->header()->setStretchLastSection(true);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setFocus();
  followForm();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
