#include "platform/qt/windows/check_message_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "accounts/decisions/account_list.h"
#include "checking/check_message_window.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/titled_frame.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

constexpr int headings = 1;

/// A long name leaves room for what is said of its account, and for the accounts below it.
QString shortened(const std::string& lines, const QLabel& label) {
  constexpr int widest = 480;
  QStringList shown = harmlessText(shownOfAccountList(lines, headings)).split('\n');
  for (QString& line : shown) line = label.fontMetrics().elidedText(line, Qt::ElideMiddle, widest);
  return shown.join('\n');
}

}  // namespace

/// In another corner than the Rule Report, which may come up beside it.
CheckMessageView::CheckMessageView(CheckMessageWindow& window)
    : NoticeView(window, Qt::RightEdge | Qt::TopEdge), window_(window) {
  setObjectName("frmMessage");
  auto* column = new QVBoxLayout(this);
  column->addWidget(makeFrame());
  column->addWidget(makeLabel(window_.lblAutoCheck, "lblAutoCheck", this));
  column->addWidget(makeFoot());
  bind(window_.tmrMessage, *this);
  followForm();
}

QWidget* CheckMessageView::makeFrame() {
  auto* frame = new TitledFrame(window_.fraMsg, "fraMsg", this);
  QFont bold = frame->font();
  bold.setBold(true);
  frame->setFont(bold);
  auto* content = new QWidget(this);
  bold.setBold(false);
  content->setFont(bold);
  auto* text = makeLabel(window_.lblMsg, "lblMsg", content);
  text->setAlignment(Qt::AlignTop);
  window_.lblMsg.Caption.watch([text](const std::string& lines) { text->setText(shortened(lines, *text)); });
  auto* row = new QHBoxLayout(content);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(text);
  lines_ = makeLines("lines", content);
  lines_->setFrameShape(QFrame::NoFrame);
  lines_->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  (new QVBoxLayout(frame))->addWidget(lines_);
  return frame;
}

QWidget* CheckMessageView::makeFoot() {
  auto* foot = new QWidget(this);
  auto* row = new QHBoxLayout(foot);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(makePicture(window_.imgHourGlass, "imlMessage", "imgHourGlass", foot));
  row->addWidget(makeCountDown(window_.lblMsgCountDown, "lblMsgCountDown", "Seconds until this message closes"));
  row->addStretch(1);
  row->addWidget(makeToolbar(window_.tbrButtons, "tbrMessage", ButtonLook::TextBesideIcon, foot));
  return foot;
}

void CheckMessageView::prepare() {
  lines_->setFocus();
  makeRoom(*lines_, window_.LabelLines + headings, 0);
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
