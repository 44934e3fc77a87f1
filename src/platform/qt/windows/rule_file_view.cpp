#include "platform/qt/windows/rule_file_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <initializer_list>
#include <utility>

#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/room.h"
#include "platform/qt/widgets/tips.h"
#include "platform/qt/widgets/titled_frame.h"
#include "rules/rule_file_window.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

constexpr int spacing = 12;

/// Of a path too long for the window the ends are seen, and in a tip all of it.
QLabel* makeElided(Label& label, const char* name, int room, QWidget* parent) {
  auto* text = makeLabel(label, name, parent);
  label.Caption.watch([text, room](const std::string& whole) {
    const QString line = harmlessLine(whole);
    text->setText(text->fontMetrics().elidedText(line, Qt::ElideMiddle, room));
    text->setToolTip(plainTip(whole));
    text->setAccessibleName(line);
  });
  return text;
}

}  // namespace

RuleFileView::RuleFileView(RuleFileWindow& window, QWidget* mainWindow)
    : FormView(window, mainWindow, Qt::Dialog), window_(window), lineWidth_(lineWidthIn(*this)) {
  setObjectName("frmRuleFile");
  setWindowModality(Qt::ApplicationModal);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(spacing);
  column->addWidget(makeIntro());
  column->addWidget(makeNames());
  column->addWidget(makeToolbar(window_.tbrButtons, "tbrRuleFile", ButtonLook::TextBesideIcon, this), 0,
                    Qt::AlignRight);
  column->setSizeConstraint(QLayout::SetFixedSize);
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, this);
    enter->setAutoRepeat(false);
    connect(enter, &QShortcut::activated, this, &RuleFileView::pressEnter);
  }
  followForm();
}

/// The button that has the keyboard is the one that is meant.
void RuleFileView::pressEnter() {
  if (auto* button = qobject_cast<QToolButton*>(focusWidget())) {
    button->click();
  } else {
    window_.txtRuleFileName.Enter();
  }
}

QWidget* RuleFileView::makeIntro() {
  auto* group = new TitledFrame(window_.fraRuleFileIntro, "fraRuleFileIntro", this);
  auto* intro = makeLabel(window_.lblRuleFileIntro, "lblRuleFileIntro", group);
  intro->setWordWrap(true);
  intro->setFixedWidth(lineWidth_);
  (new QVBoxLayout(group))->addWidget(intro);
  return group;
}

QWidget* RuleFileView::makeNames() {
  auto* names = new QWidget(this);
  auto* grid = new QGridLayout(names);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setColumnStretch(1, 1);
  auto* box = new QLineEdit(names);
  box->setObjectName("txtRuleFileName");
  bindInput(window_.txtRuleFileName, *box);
  auto* label = makeLabel(window_.lblRuleFileNameNew, "lblRuleFileNameNew", names);
  label->setText('&' + label->text());
  label->setBuddy(box);
  const int room = lineWidth_ - label->sizeHint().width();
  const std::initializer_list<std::pair<QLabel*, QWidget*>> rows = {
      {makeLabel(window_.lblRuleFile, "lblRuleFile", names),
       makeElided(window_.lblRuleFilePathCurrent, "lblRuleFilePathCurrent", room, names)},
      {makeLabel(window_.lblRuleFileName, "lblRuleFileName", names),
       makeElided(window_.lblRuleFileNameCurrent, "lblRuleFileNameCurrent", room, names)},
      {label, box}};
  for (const auto& [text, value] : rows) {
    const int row = grid->rowCount();
    grid->addWidget(text, row, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(value, row, 1);
  }
  return names;
}

void RuleFileView::arrange() {
  adjustSize();
  centreOnScreen();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
