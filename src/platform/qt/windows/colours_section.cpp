#include "platform/qt/windows/colours_section.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <array>

#include "options/options_page.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/colour_patch.h"
#include "platform/qt/widgets/menu_preview.h"
#include "platform/qt/widgets/plain_layout.h"
#include "platform/qt/widgets/prompt.h"
#include "platform/qt/windows/section_parts.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// A colour to choose, what it is of, and the letter that leads to it.
struct ColourRow {
  ColourBox OptionsPage::*box;
  const char* name;
  const char* prompt;
  const char* spoken;
};

constexpr std::array<ColourRow, 3> colourRows = {{
    {&OptionsPage::lbl3DTopColour, "lbl3DTopColour", "&Top", "Top Colour"},
    {&OptionsPage::lbl3DMiddleColour, "lbl3DMiddleColour", "&Middle", "Middle Colour"},
    {&OptionsPage::lbl3DBottomColour, "lbl3DBottomColour", "B&ottom", "Bottom Colour"},
}};

QWidget* makeColourRows(OptionsPage& page, QWidget* parent) {
  auto* frame = new QWidget(parent);
  auto* grid = plainLayout<QGridLayout>(frame);
  int row = 0;
  for (const ColourRow& each : colourRows) {
    auto* patch = new ColourPatch(page.*each.box, ColourPatch::Use::Choose, frame);
    patch->setObjectName(each.name);
    grid->addWidget(patch, row, 0);
    grid->addWidget(makePrompt(each.prompt, patch, (page.*each.box).Enabled), row++, 1);
    patch->setAccessibleName(each.spoken);
  }
  grid->addWidget(makeLabel(page.lblUserColours, "lblUserColours", frame), row++, 0, 1, 2);
  grid->setRowStretch(row, 1);
  return frame;
}

QWidget* makeMenuPreview(OptionsPage& page, QWidget* parent) {
  auto* preview = new MenuPreview(
      [&page] {
        return MenuColours{page.lbl3DTopColour.BackColour, page.lbl3DMiddleColour.BackColour,
                           page.lbl3DBottomColour.BackColour};
      },
      parent);
  for (const ColourRow& each : colourRows) {
    (page.*each.box).BackColour.watch([preview](std::int32_t) { preview->update(); });
  }
  return preview;
}

}  // namespace

void fillColours(SectionParts& parts, OptionsPage& page) {
  constexpr int gap = 24;
  for (std::size_t i = 0; i < page.lblMenuColours.size(); ++i) {
    parts.add(parts.makeNote(page.lblMenuColours[i], qPrintable(QStringLiteral("lblMenuColours%1").arg(i))));
  }
  auto* frame = new QGroupBox("3D Colour Themes", parts.section());
  auto* row = new QHBoxLayout(frame);
  row->setSpacing(gap);
  row->addWidget(
      SectionParts::nameOptions(makeOptions(page.opt3DTheme, "opt3DTheme", "BGrCXVU", Qt::Vertical, frame), "Theme"));
  row->addWidget(makeColourRows(page, frame));
  row->addWidget(makeMenuPreview(page, frame));
  row->addStretch(1);
  parts.addGap();
  parts.add(frame);
  parts.add(parts.makeNote(page.lblTrayMenu, "lblTrayMenu"));
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
