#include "platform/qt/rule_report_view.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QVBoxLayout>

#include "platform/qt/bind.h"
#include "platform/qt/icons.h"
#include "platform/qt/strings.h"
#include "rules/rule_report_window.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

QLabel* makeLabel(Label& label, const char* name, QWidget* parent) {
  auto* widget = new QLabel(parent);
  widget->setObjectName(name);
  bind(label, *widget);
  return widget;
}

QLabel* makePicture(Image& image, const char* name, QWidget* parent) {
  auto* widget = new QLabel(parent);
  widget->setObjectName(name);
  constexpr QSize size(32, 32);
  widget->setPixmap(ImageList("imlListViewIcons").icon(image.Key).pixmap(size, parent->devicePixelRatioF()));
  widget->setAlignment(Qt::AlignTop);
  image.Visible.watch([widget](bool on) { widget->setVisible(on); });
  return widget;
}

}  // namespace

RuleReportView::RuleReportView(RuleReportWindow& window) : FormView(window, nullptr, Qt::Dialog), window_(window) {
  setObjectName("frmRuleReport");
  auto* column = new QVBoxLayout(this);
  column->addWidget(makeHead());
  column->addWidget(makeLabel(window_.lblRuleReport, "lblRuleReport", this));
  tabs_ = new QTabBar(this);
  tabs_->setObjectName("TabStripRuleReport");
  tabs_->setExpanding(false);
  tabs_->setDocumentMode(true);
  bind(window_.TabStripRuleReport, *tabs_, "");
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
  auto* seconds = makeLabel(window_.lblRuleReportCountDown, "lblRuleReportCountDown", head);
  seconds->setToolTip("Seconds until the Rule Report closes");
  QFont large = seconds->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  seconds->setFont(large);
  row->addWidget(seconds);
  return head;
}

/// The texts of both tabs take the same place. What it has no room for can be scrolled to.
QScrollArea* RuleReportView::makeReport() {
  auto* area = new QScrollArea(this);
  area->setObjectName("fraRuleReport");
  area->setAccessibleName("Accounts");
  auto* content = new QWidget(area);
  auto* row = new QHBoxLayout(content);
  for (auto& [image, name] :
       {std::pair{&window_.imgRuleDelete, "imgRuleDelete"}, {&window_.imgRuleSpam, "imgRuleSpam"}}) {
    row->addWidget(makePicture(*image, name, content));
  }
  for (auto& [label, name] :
       {std::pair{&window_.lblRuleDelete, "lblRuleDelete"}, {&window_.lblRuleSpam, "lblRuleSpam"}}) {
    auto* text = makeLabel(*label, name, content);
    text->setAlignment(Qt::AlignTop);
    text->setWordWrap(true);
    row->addWidget(text, 1);
  }
  area->setWidget(content);
  area->setWidgetResizable(true);
  return area;
}

/// A label of so many lines knows how high they are, in whatever font and scaling.
void RuleReportView::makeRoomForLines() {
  constexpr int pictureHeight = 32;
  const QLabel lines(QString("x\n").repeated(window_.LabelLines).chopped(1), report_);
  const QMargins margins = report_->widget()->layout()->contentsMargins();
  report_->setFixedHeight(std::max(lines.sizeHint().height(), pictureHeight) + margins.top() + margins.bottom() +
                          2 * report_->frameWidth());
}

/// In the corner where it hides the least. Only where the user is at work with the program does it take the keyboard,
/// which is settled when a window is made; and then keys that he goes on typing must not delete anything.
void RuleReportView::arrange() {
  destroy();
  setAttribute(Qt::WA_ShowWithoutActivating, QApplication::activeWindow() == nullptr);
  tabs_->setFocus();
  makeRoomForLines();
  adjustSize();
  constexpr QPoint distance(24, 48);
  QRect place(QPoint(), size());
  place.moveBottomRight(screen()->availableGeometry().bottomRight() - distance);
  move(place.topLeft());
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
