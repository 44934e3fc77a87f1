#include "platform/qt/windows/status_bar_view.h"

#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QProgressBar>
#include <array>

#include "platform/controls/simple_controls.h"
#include "platform/controls/status_bar.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/tips.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// Share of the bar's width, by panel. The longest texts are "Terminating Connection...Please Wait" in the first and
/// "Retrieving... (32767 of 32767)" in the fourth.
constexpr std::array stretches = {34, 9, 22, 24, 20};

constexpr int pictureSize = 16;

/// What a panel has room for in any font, where the window is wide enough for its design.
constexpr std::array leastTexts = {"", "", "Checked at: 12:44 PM", "Auto Check at 12:44 PM", "Nov 30/26 12:44 PM"};

/// A label that shows as much of its text as there is room for, and at least one like `least`.
class PanelText : public QLabel {
 public:
  PanelText(const char* least, QWidget* parent) : QLabel(parent), least_(least) {}
  QSize minimumSizeHint() const override {
    return {fontMetrics().horizontalAdvance(least_), QLabel::minimumSizeHint().height()};
  }

 private:
  QString least_;
};

}  // namespace

StatusBarView::StatusBarView(StatusBar& bar, ProgressBar& progress, QWidget* parent) : QFrame(parent), bar_(bar) {
  setObjectName("StatusBar");
  setAccessibleName("Status");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(2, 2, 2, 2);
  row->setSpacing(2);
  for (int number = 1; number <= StatusBar::panelCount; ++number) {
    panels_.push_back(makePanel(number));
    row->addWidget(panels_.back(), stretches.at(static_cast<std::size_t>(number - 1)));
  }
  addProgress(progress, *panels_.front());
}

QWidget* StatusBarView::makePanel(int number) {
  auto* panel = new QFrame(this);
  panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);  // which has all its lines at every scaling
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(6, 2, 6, 2);
  row->addStrut(pictureSize);  // also while there is no picture
  auto* picture = new QLabel(panel);
  auto* text = new PanelText(leastTexts.at(static_cast<std::size_t>(number - 1)), panel);
  text->setTextFormat(Qt::PlainText);
  text->setObjectName(QStringLiteral("StatusBar%1").arg(number));
  row->addWidget(picture);
  row->addWidget(text, 1);
  bar_.Panels(number).Text.watch([text](const std::string& shown) { text->setText(harmlessLine(shown)); });
  const ImageList images("imlListViewIcons");
  bar_.Panels(number).Picture.watch([picture, images](const std::string& key) {
    picture->setPixmap(images.icon(key).pixmap(QSize(pictureSize, pictureSize), picture->devicePixelRatioF()));
    picture->setVisible(!key.empty());
  });
  return panel;
}

void StatusBarView::addProgress(ProgressBar& progress, QWidget& panel) {
  auto* bar = new QProgressBar(this);
  bar->setObjectName("ProgressBar");
  bar->setAccessibleName("Progress");
  bar->setTextVisible(false);
  constexpr int height = 4;
  bar->setFixedHeight(height);
  bind(progress, *bar);
  const auto place = [bar, &panel](int width) {
    bar->setGeometry(panel.x(), panel.geometry().bottom() - height, width, height);
    bar->raise();
  };
  // It may show before the first progress gives it a width.
  progress.Visible.watch([place, &panel](bool on) {
    if (on) place(panel.width());
  });
  progress.Width.watch(place);
}

/// The pointer rests on the bar. The tip goes when it leaves the panel.
bool StatusBarView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QFrame::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  bar_.Left = x();
  if (bar_.MouseMove) bar_.MouseMove(help->pos().x() + x(), help->pos().y() + y());
  const int number = bar_.PanelAt(help->pos().x() + x());
  const QRect area = number == 0 ? QRect() : panels_[static_cast<std::size_t>(number - 1)]->geometry();
  showTip(bar_.ToolTipText.get(), help->globalPos(), *this, area);
  return true;
}

void StatusBarView::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  for (int number = 1; number <= StatusBar::panelCount; ++number) {
    const QWidget* panel = panels_[static_cast<std::size_t>(number - 1)];
    bar_.Panels(number).Left = panel->x();
    bar_.Panels(number).Width = panel->width();
  }
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
