#include "platform/qt/windows/section_parts.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/controls/simple_controls.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/plain_layout.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

SectionParts::SectionParts(QWidget* section) : section_(section), column_(new QVBoxLayout(section)) {}

void SectionParts::add(QWidget* part) { column_->addWidget(part); }

void SectionParts::addCentred(QWidget* part) { column_->addWidget(part, 0, Qt::AlignHCenter); }

void SectionParts::addUnderTick(QWidget* part) {
  const QStyle& style = *section_->style();
  const int box = style.pixelMetric(QStyle::PM_IndicatorWidth) + style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
  auto* row = plainLayout<QHBoxLayout>(nullptr);
  row->setContentsMargins(box, 0, 0, 0);
  row->addWidget(part);
  column_->addLayout(row);
}

void SectionParts::addTick(CheckBox& tick, const char* name, char letter) {
  column_->addWidget(makeTick(tick, name, letter, section_), 0, Qt::AlignLeft);
}

void SectionParts::addGap() {
  constexpr int gap = 10;
  column_->addSpacing(gap);
}

void SectionParts::addStretch() { column_->addStretch(1); }

QLabel* SectionParts::makeNote(Label& label, const char* name) {
  auto* note = makeLabel(label, name, section_);
  note->setWordWrap(true);
  return note;
}

QLabel* SectionParts::makeWords(Label& label, const char* name, char letter, QWidget* input, const char* spoken) {
  auto* words = makeLabel(label, name, section_);
  words->setText(withShortcut(label.Caption, letter));
  words->setBuddy(input);
  input->setAccessibleName(spoken);
  return words;
}

QWidget* SectionParts::makeRow(std::initializer_list<QWidget*> parts) {
  auto* row = new QWidget(section_);
  auto* layout = plainLayout<QHBoxLayout>(row);
  for (QWidget* part : parts) layout->addWidget(part);
  layout->addStretch(1);
  return row;
}

QWidget* SectionParts::nameOptions(QWidget* options, const char* spoken) {
  for (auto* button : options->findChildren<QRadioButton*>()) {
    button->setAccessibleName(QString(spoken) + ": " + button->accessibleName());
  }
  return options;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
