#include "platform/qt/windows/options_page_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>

#include "options/options_page.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/plain_layout.h"
#include "platform/qt/widgets/scrolled.h"
#include "platform/qt/widgets/section_tree.h"
#include "platform/qt/windows/option_sections.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

QWidget* makeHead(OptionsPage& page, QWidget* parent) {
  constexpr int gap = 12;
  constexpr double larger = 1.4;
  auto* head = new QWidget(parent);
  auto* row = plainLayout<QHBoxLayout>(head);
  row->setSpacing(gap);
  auto* title = makeLabel(page.lblOptionsTitle, "lblOptionsTitle", head);
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * larger);
  font.setBold(true);
  title->setFont(font);
  const auto makeSide = [&](std::size_t side) {
    return makePicture(page.imgOptionsTitle.at(side), page.TreeView.ImageList,
                       QStringLiteral("imgOptionsTitle%1").arg(side), head);
  };
  row->addStretch(1);
  row->addWidget(makeSide(0));
  row->addWidget(title);
  row->addWidget(makeSide(1));
  row->addStretch(1);
  return head;
}

/// The sections stand in the same place, and one of them shows.
QWidget* makeSections(OptionsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* place = new QWidget(parent);
  auto* grid = plainLayout<QGridLayout>(place);
  for (std::size_t section = 0; section < page.fraOptions.size(); ++section) {
    auto* frame = makeScrolled(makeSection(static_cast<std::int16_t>(section + 1), page, bars, place), place);
    frame->setObjectName(QStringLiteral("fraOptions%1").arg(section));
    grid->addWidget(frame, 0, 0);
    bind(page.fraOptions[section], *frame);
  }
  return place;
}

}  // namespace

QWidget* makeOptionsPage(OptionsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* widget = new QWidget(parent);
  widget->setObjectName("fraOptionsPage");
  auto* row = plainLayout<QHBoxLayout>(widget);
  auto* tree = new SectionTree(page.TreeView, "TreeView", widget);
  tree->setAccessibleName("Sections");
  row->addWidget(tree);
  auto* column = plainLayout<QVBoxLayout>(nullptr);
  row->addLayout(column, 1);
  column->addWidget(makeHead(page, widget));
  column->addWidget(makeSections(page, bars, widget), 1);
  bind(page.fraOptionsPage, *widget);
  return widget;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
