#include "platform/qt/windows/rule_report_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <utility>

#include "accounts/decisions/account_list.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/tab_bar.h"
#include "rules/rule_report_window.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

RuleReportView::RuleReportView(RuleReportWindow& window)
    : NoticeView(window, Qt::RightEdge | Qt::BottomEdge), window_(window) {
  setObjectName("frmRuleReport");
  auto* column = new QVBoxLayout(this);
  column->addWidget(makeHead());
  column->addWidget(makeLabel(window_.lblRuleReport, "lblRuleReport", this));
  tabs_ = new TabBar(window_.TabStripRuleReport, "TabStripRuleReport", "Parts of the report", this);
  column->addWidget(tabs_);
  report_ = makeReport();
  column->addWidget(report_);
  auto* caution = makeLabel(window_.lblRuleReportCaution, "lblRuleReportCaution", this);
  caution->setWordWrap(true);
  column->addWidget(caution);
  bind(window_.tmrRuleReport, *this);
  followForm();
}

QWidget* RuleReportView::makeHead() {
  auto* head = new QWidget(this);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(makeToolbar(window_.tbrRuleReport, "tbrRuleReport", ButtonLook::TextBesideIcon, head));
  row->addStretch(1);
  row->addWidget(
      makeCountDown(window_.lblRuleReportCountDown, "lblRuleReportCountDown", "Seconds until the Rule Report closes"));
  return head;
}

/// The texts of both tabs take the same place.
QScrollArea* RuleReportView::makeReport() {
  auto* content = new QWidget(this);
  auto* row = new QHBoxLayout(content);
  for (auto& [image, name] :
       {std::pair{&window_.imgRuleDelete, "imgRuleDelete"}, {&window_.imgRuleSpam, "imgRuleSpam"}}) {
    row->addWidget(makePicture(*image, "imlListViewIcons", name, content));
  }
  for (auto& [label, name] :
       {std::pair{&window_.lblRuleDelete, "lblRuleDelete"}, {&window_.lblRuleSpam, "lblRuleSpam"}}) {
    auto* text = makeLabel(*label, name, content);
    text->setAlignment(Qt::AlignTop);
    text->setWordWrap(true);
    label->Caption.watch([text = text](const std::string& list) { text->setText(qt(shownOfAccountList(list, 0))); });
    row->addWidget(text, 1);
  }
  return makeLines("fraRuleReport", content);
}

void RuleReportView::prepare() {
  constexpr int pictureHeight = 32;
  tabs_->setFocus();
  makeRoom(*report_, window_.LabelLines, pictureHeight);
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
