#include "platform/qt/windows/rules_page_view.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/check_list_view.h"
#include "platform/qt/widgets/choice_box.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/number_edit.h"
#include "platform/qt/widgets/plain_layout.h"
#include "platform/qt/widgets/prompt.h"
#include "platform/qt/widgets/scrolled.h"
#include "platform/qt/widgets/text_view.h"
#include "platform/qt/widgets/titled_frame.h"
#include "rules/rules_page.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

QLineEdit* makeBox(TextBox& box, const char* name, QWidget* parent) {
  auto* widget = new QLineEdit(parent);
  widget->setObjectName(name);
  bindInput(box, *widget);
  return widget;
}

QWidget* makeTools(RulesPage& page, QWidget* parent) {
  auto* tools = new QWidget(parent);
  tools->setObjectName("fraRulesToolbar");
  auto* row = plainLayout<QHBoxLayout>(tools);
  row->addWidget(makeToolbar(page.tbrRules, "tbrRules", ButtonLook::TextBesideIcon, tools));
  row->addStretch(1);
  bind(page.fraRulesToolbar, *tools);
  return tools;
}

QWidget* makeNoRules(Label& label, QWidget* parent) {
  constexpr int margin = 8;
  auto* banner = makeLabel(label, "lblNoRules", parent);
  banner->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  banner->setMargin(margin);
  banner->setAlignment(Qt::AlignCenter);
  banner->setWordWrap(true);
  return banner;
}

/// The file may have any name.
QLabel* makeFileName(Label& label, QWidget* parent) {
  constexpr qsizetype longest = 260;
  constexpr qsizetype widestWord = 12;
  auto* name = makeLabel(label, "lblRulesFileName", parent);
  name->setWordWrap(true);
  label.Caption.watch([name](const std::string& caption) {
    name->setText(breakable(harmlessLine(caption, longest), widestWord));
    name->setAccessibleName(harmlessLine(caption));
  });
  return name;
}

QWidget* makeRuleList(RulesPage& page, QWidget* parent) {
  constexpr int leastLength = 16;
  auto* side = new QWidget(parent);
  auto* column = plainLayout<QVBoxLayout>(side);
  auto* list = new CheckListView(page.lstRules, "lstRules", side);
  list->setMinimumSize(list->fontMetrics().averageCharWidth() * leastLength, 0);
  column->addWidget(makePrompt("&Rules:", list));
  column->addWidget(list, 1);
  column->addWidget(makeToolbar(page.tbrMoveRule, "tbrMoveRule", ButtonLook::TextBesideIcon, side), 0, Qt::AlignLeft);
  column->addWidget(makeFileName(page.lblRulesFileName, side));
  return side;
}

/// What the criteria is of changes with the field, and what is to be said of it with all of the builder.
void followPrompt(RulesPage& page, QLabel& prompt, QLineEdit& criteria) {
  page.lblCriteria.Caption.watch([&prompt, &criteria](const std::string& caption) {
    prompt.setText(withShortcut(caption, 'E'));
    nameInput(prompt, criteria);
    if (caption.empty()) criteria.setAccessibleName("Criteria");
  });
  page.lblCriteriaNotice.Caption.watch(
      [&criteria](const std::string& notice) { criteria.setAccessibleDescription(qt(notice)); });
}

QWidget* makeUpdateRow(RulesPage& page, QWidget* parent) {
  constexpr int gap = 12;
  auto* part = new QWidget(parent);
  auto* row = plainLayout<QHBoxLayout>(part);
  row->addWidget(makeToolbar(page.tbrRuleUpdate[0], "tbrRuleUpdate0", ButtonLook::TextBesideIcon, part));
  row->addSpacing(gap);
  auto* notice = makeLabel(page.lblCriteriaNotice, "lblCriteriaNotice", part);
  notice->setWordWrap(true);
  notice->setMinimumHeight(notice->fontMetrics().lineSpacing() * 2);  // else all below it would move
  row->addWidget(notice, 1);
  return part;
}

/// Lays out from left to right and from top to bottom, which is also the order of the key Tab.
void addBuilder(RulesPage& page, QGridLayout& grid, QWidget* frame) {
  auto* name = makeBox(page.txtRuleName, "txtRuleName", frame);
  auto* account = new ChoiceBox(page.cboRuleAccount, "cboRuleAccount", frame);
  grid.addWidget(makePrompt("&Name:", name), 0, 0);
  grid.addWidget(name, 0, 1);
  grid.addWidget(makePrompt("&Account:", account), 0, 2);
  grid.addWidget(account, 0, 3, 1, 2);
  auto* where = new ChoiceBox(page.cboWhere, "cboWhere", frame);
  auto* condition = new ChoiceBox(page.cboCondition, "cboCondition", frame);
  grid.addWidget(makePrompt("&Where:", where), 1, 0);
  grid.addWidget(where, 1, 1);
  grid.addWidget(makePrompt("&Condition:", condition, page.cboCondition.Enabled), 1, 2);
  grid.addWidget(condition, 1, 3);
  grid.addWidget(makeTick(page.chkNot, "chkNot", 't', frame), 1, 4);
  auto* criteria = makeBox(page.txtCriteria, "txtCriteria", frame);
  auto* prompt = makeLabel(page.lblCriteria, "lblCriteria", frame);
  followPrompt(page, *prompt, *criteria);
  auto* boolean = new ChoiceBox(page.cboBoolean, "cboBoolean", frame);
  grid.addWidget(prompt, 2, 0, 1, 3);
  grid.addWidget(makePrompt("&Join with:", boolean, page.cboBoolean.Enabled), 2, 3, 1, 2);
  grid.addWidget(criteria, 3, 0, 1, 3);
  grid.addWidget(boolean, 3, 3);
  grid.addWidget(makeUpdateRow(page, frame), 4, 0, 1, -1);
}

QWidget* makeDescriptionHead(RulesPage& page, QWidget* parent) {
  constexpr int gap = 12;
  auto* part = new QWidget(parent);
  auto* row = plainLayout<QHBoxLayout>(part);
  row->addWidget(makeLabel(page.lblRuleDescription, "lblRuleDescription", part));
  row->addSpacing(gap);
  row->addWidget(makeLabel(page.lblRuleDescEntries, "lblRuleDescEntries", part));
  row->addStretch(1);
  row->addWidget(makeToolbar(page.tbrRuleUpdate[1], "tbrRuleUpdate1", ButtonLook::TextBesideIcon, part));
  return part;
}

TextView* makeDescription(RulesPage& page, QWidget* parent) {
  constexpr int leastLines = 3;
  auto* view = new TextView(parent);
  view->setObjectName("txtRuleDescription");
  const int margins = 2 * (view->frameWidth() + static_cast<int>(view->document()->documentMargin()));
  view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);  // takes what there is, and wants no more
  view->setMinimumHeight(view->fontMetrics().lineSpacing() * leastLines + margins);
  bind(page.txtRuleDescription, *view);
  return view;
}

/// What is said of the rule is a sentence's end.
QWidget* makeFits(RulesPage& page, QWidget* parent) {
  auto* part = new QWidget(parent);
  auto* row = plainLayout<QHBoxLayout>(part);
  auto* fits = makeLabel(page.lblRuleFits, "lblRuleFits", part);
  fits->setWordWrap(true);
  page.lblRuleFits.Caption.watch([fits](const std::string& caption) {
    fits->setText(caption.empty() ? QString() : "This rule " + qt(caption) + '.');
  });
  row->addWidget(fits, 1);
  row->addWidget(makeToolbar(page.tbrRuleFits, "tbrRuleFits", ButtonLook::TextBesideIcon, part));
  return part;
}

QWidget* makeRule(RulesPage& page, QWidget* parent) {
  constexpr int columnGap = 10;
  constexpr int descriptionRow = 6;
  auto* frame = new TitledFrame(page.fraRule, "fraRule", parent);
  auto* grid = new QGridLayout(frame);
  grid->setHorizontalSpacing(columnGap);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(descriptionRow, 1);
  addBuilder(page, *grid, frame);
  auto* head = makeDescriptionHead(page, frame);
  auto* description = makeDescription(page, frame);
  auto* label = head->findChild<QLabel*>("lblRuleDescription");
  label->setText(withShortcut(page.lblRuleDescription.Caption, 'D'));
  nameInput(*label, *description);
  grid->addWidget(head, descriptionRow - 1, 0, 1, -1);
  grid->addWidget(description, descriptionRow, 0, 1, -1);
  grid->addWidget(makeFits(page, frame), descriptionRow + 1, 0, 1, -1);
  return frame;
}

QWidget* makeAction(RulesPage& page, QWidget* parent) {
  auto* frame = new TitledFrame(page.fraAction, "fraAction", parent);
  auto* row = new QHBoxLayout(frame);
  row->addWidget(makeOptions(page.optRuleAction, "optRuleAction", "lMI", Qt::Horizontal, frame));
  row->addStretch(1);
  return frame;
}

QWidget* makeNotify(RulesPage& page, QWidget* parent) {
  constexpr int gap = 16;
  auto* frame = new TitledFrame(page.fraNotify, "fraNotify", parent);
  auto* row = new QHBoxLayout(frame);
  row->addWidget(makeTick(page.chkRuleNotify, "chkRuleNotify", 'S', frame));
  row->addSpacing(gap);
  row->addWidget(makeTick(page.chkRuleNotifyNew, "chkRuleNotifyNew", 'O', frame));
  row->addSpacing(gap);
  auto* time = new NumberEdit(page.txtRuleNotifyTime, "txtRuleNotifyTime", frame);
  auto* prompt = makeLabel(page.lblRuleNotifyTime, "lblRuleNotifyTime", frame);
  prompt->setText(withShortcut(page.lblRuleNotifyTime.Caption, 'f'));
  nameInput(*prompt, *time);
  time->setAccessibleName("Seconds for which the Rule Report shows");
  row->addWidget(prompt);
  row->addWidget(time);
  row->addWidget(makeLabel(page.lblRuleNotifySeconds, "lblRuleNotifySeconds", frame));
  row->addStretch(1);
  return frame;
}

QWidget* makeRuleParts(RulesPage& page, QWidget* parent) {
  auto* parts = new QWidget(parent);
  auto* column = plainLayout<QVBoxLayout>(parts);
  column->addWidget(makeRule(page, parts), 1);
  column->addWidget(makeAction(page, parts));
  column->addWidget(makeNotify(page, parts));
  return parts;
}

QWidget* makeRules(RulesPage& page, QWidget* parent) {
  constexpr int partOfList = 2;
  constexpr int partOfRule = 7;
  auto* rules = new QWidget(parent);
  rules->setObjectName("fraRules");
  auto* row = plainLayout<QHBoxLayout>(rules);
  row->addWidget(makeRuleList(page, rules), partOfList);
  row->addWidget(makeScrolled(makeRuleParts(page, rules), rules), partOfRule);
  bind(page.fraRules, *rules);
  return rules;
}

}  // namespace

QWidget* makeRulesPage(RulesPage& page, QWidget* parent) {
  auto* widget = new QWidget(parent);
  auto* column = plainLayout<QVBoxLayout>(widget);
  column->addWidget(makeTools(page, widget));
  column->addWidget(makeNoRules(page.lblNoRules, widget));
  column->addWidget(makeRules(page, widget), 1);
  auto& list = *widget->findChild<QWidget*>("lstRules");
  for (auto* bar : {"tbrRules", "tbrMoveRule", "tbrRuleFits"}) setHeir(*widget->findChild<QWidget*>(bar), list);
  for (auto* bar : {"tbrRuleUpdate0", "tbrRuleUpdate1"}) {
    setHeir(*widget->findChild<QWidget*>(bar), *widget->findChild<QWidget*>("cboWhere"));
  }
  return widget;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
