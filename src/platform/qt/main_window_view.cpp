#include "platform/qt/main_window_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>
#include <array>
#include <vector>

#include "app/main_window.h"
#include "platform/qt/bind.h"
#include "platform/qt/icons.h"
#include "platform/qt/message_view.h"
#include "platform/qt/options_page_view.h"
#include "platform/qt/status_bar_view.h"
#include "platform/qt/strings.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// As wide as the five columns of the list at their usual widths, and a scroll bar.
constexpr QSize designSize(924, 600);

constexpr int leastHeight = 235;

/// The small toolbars under each page, from left to right.
const std::array<std::vector<std::size_t>, pageCount> buttonRows = {{
    {checkAllBar, stopRetrievalBar, pauseStartUpBar, startClientBar, closeBar, helpBar},
    {6, 7, accountsHelpBar},
    {9, 10, rulesHelpBar},
    {12, 13, 11},
}};

/// A box without margins of its own, for parts that stand in other parts.
template <class Layout>
Layout* plainLayout(QWidget* parent) {
  auto* layout = new Layout(parent);
  layout->setContentsMargins(0, 0, 0, 0);
  return layout;
}

class KeyForwarder : public QWidget {
 public:
  KeyForwarder(QWidget& target, QWidget* parent) : QWidget(parent), target_(target) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!target_.isVisible() || !target_.isEnabled() || event->key() == Qt::Key_Escape) {
      event->ignore();
      return;
    }
    target_.setFocus(Qt::ShortcutFocusReason);
    QCoreApplication::sendEvent(&target_, event);
  }

 private:
  QWidget& target_;
};

QTabBar* makeTabBar(TabStrip& strip, const char* name, const char* accessibleName, QWidget* parent) {
  auto* bar = new QTabBar(parent);
  bar->setObjectName(name);
  bar->setAccessibleName(accessibleName);
  bar->setExpanding(false);
  bar->setDocumentMode(true);
  bar->setElideMode(Qt::ElideRight);
  bind(strip, *bar, "imlTabIcons");
  return bar;
}

}  // namespace

MainWindowView::MainWindowView(MainWindow& window) : window_(window) {
  setObjectName("frmMain");
  setWindowIcon(applicationIcon());
  auto* body = new QWidget(this);
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(6, 4, 6, 4);
  column->addWidget(makeHead());
  column->addWidget(makeBanner());
  column->addWidget(makePage(emailPage, makeEmailPage()), 1);
  column->addWidget(makePage(accountsPage, makeAccountsPage()), 1);
  column->addWidget(makePage(rulesPage, makeRulesPage()), 1);
  column->addWidget(makePage(optionsPage, makeOptionsPage(window_, this)), 1);
  column->addWidget(new StatusBarView(window_.StatusBar, window_.ProgressBar, body));
  setCentralWidget(body);
  addFocusTaker();
  addShortcuts();
  resize(designSize);
  setMinimumSize(designSize.width(), leastHeight);
  followForm();
  startTimers();
}

QWidget* MainWindowView::makeHead() {
  auto* head = new QWidget(this);
  head->setObjectName("fraMainButtons");
  bind(window_.fraMainButtons, *head);
  auto* row = plainLayout<QHBoxLayout>(head);
  row->addWidget(makeToolbar(window_.tbrMainButtons, "tbrMainButtons", ButtonLook::TextUnderIcon, head));
  row->addStretch(1);
  auto* banner = new QLabel(head);
  banner->setObjectName("lblBanner");
  QFont large = banner->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  banner->setFont(large);
  bind(window_.lblBanner, *banner);
  row->addWidget(banner);
  return head;
}

QWidget* MainWindowView::makeBanner() {
  auto* frame = new QFrame(this);
  frame->setObjectName("fraNoAcntsBanner");
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  auto* label = new QLabel(frame);
  label->setObjectName("lblNoAcntsBanner");
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  bind(window_.lblNoAcntsBanner, *label);
  (new QVBoxLayout(frame))->addWidget(label);
  bind(window_.fraNoAcntsBanner, *frame);
  return frame;
}

QWidget* MainWindowView::makePage(std::size_t page, QWidget* content) {
  auto* frame = new QWidget(this);
  frame->setObjectName(QStringLiteral("fraMain%1").arg(page));
  auto* column = plainLayout<QVBoxLayout>(frame);
  column->addWidget(content, 1);
  column->addWidget(makeButtonRow(page));
  // What has the focus would pass it on to some button when it goes.
  window_.fraMain.at(page).Visible.watch([this, frame](bool on) {
    if (!on && frame->isAncestorOf(focusWidget())) window_.cmdTakeFocus.SetFocus();
  });
  bind(window_.fraMain.at(page), *frame);
  return frame;
}

QWidget* MainWindowView::makeEmailPage() {
  auto* page = new QWidget(this);
  auto* column = plainLayout<QVBoxLayout>(page);
  auto* tools = new QWidget(page);
  tools->setObjectName("fraEmailToolBar");
  bind(window_.fraEmailToolBar, *tools);
  auto* row = plainLayout<QHBoxLayout>(tools);
  row->addWidget(makeToolbar(window_.tbrEmail, "tbrEmail", ButtonLook::TextBesideIcon, tools));
  row->addStretch(1);
  column->addWidget(tools);
  auto* list = plainLayout<QVBoxLayout>(nullptr);
  list->setSpacing(0);
  list->addWidget(makeTabBar(window_.TabStripEmail, "TabStripEmail", "Accounts", page));
  auto* view = new MessageView(window_.lvwEmail, window_.tipEmail, ImageList("imlListViewIcons"),
                               ImageList("imlListViewColumnHeader"), page);
  view->setObjectName("lvwEmail");
  view->setAccessibleName("Messages");
  list->addWidget(view, 1);
  column->addLayout(list, 1);
  bind(window_.mnuEmailPopMenu, *new QMenu(view));
  bind(window_.mnuColumns, *new QMenu(view));
  window_.TextWidth = [view](const std::string& text, bool bold) { return view->textWidth(text, bold); };
  list_ = view;
  return page;
}

QWidget* MainWindowView::makeAccountsPage() {
  auto* page = new QWidget(this);
  auto* column = plainLayout<QVBoxLayout>(page);
  column->addWidget(makeTabBar(window_.TabStripAcnts, "TabStripAcnts", "Accounts", page));
  column->addStretch(1);
  return page;
}

QWidget* MainWindowView::makeRulesPage() {
  auto* page = new QWidget(this);
  auto* column = plainLayout<QVBoxLayout>(page);
  column->addStretch(1);
  auto* file = new QLabel(page);
  file->setObjectName("lblRulesFileName");
  bind(window_.lblRulesFileName, *file);
  column->addWidget(file);
  return page;
}

QWidget* MainWindowView::makeButtonRow(std::size_t page) {
  auto* frame = new QWidget(this);
  frame->setObjectName(QStringLiteral("fraButtons%1").arg(page));
  auto* row = plainLayout<QHBoxLayout>(frame);
  for (const std::size_t bar : buttonRows.at(page)) {
    const auto name = QStringLiteral("tbrButtons%1").arg(bar);
    row->addWidget(makeToolbar(window_.tbrButtons.at(bar), name, ButtonLook::TextBesideIcon, frame));
  }
  row->addStretch(1);
  return frame;
}

/// A widget that cannot be seen. The keys that it gets are meant for the list, the one thing that keys can work on
/// without having the focus.
void MainWindowView::addFocusTaker() {
  auto* taker = new KeyForwarder(*list_, centralWidget());
  taker->setObjectName("cmdTakeFocus");
  taker->resize(0, 0);
  window_.cmdTakeFocus.focus.watch([taker] { taker->setFocus(); });
}

/// What the buttons do, from every page, where they could be pressed.
void MainWindowView::addShortcuts() {
  const auto press = [this](const QKeySequence& keys, Toolbar& bar, const char* button, const Frame* frame = nullptr) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setAutoRepeat(false);  // a key held down would log in over and over
    connect(shortcut, &QShortcut::activated, this, [&bar, button, frame] {
      if (bar.Visible && (frame == nullptr || frame->Enabled)) bar[button].click();
    });
  };
  press(Qt::Key_F5, window_.tbrButtons[checkAllBar], "CheckAll");
  press(Qt::CTRL | Qt::Key_R, window_.tbrEmail, "EmailCheck", &window_.fraEmailToolBar);
  press(Qt::Key_Escape, window_.tbrButtons[stopRetrievalBar], "StopRetrieval");
  press(QKeySequence::Quit, window_.tbrMainButtons, "Quit", &window_.fraMainButtons);
  for (int page = 0; page < static_cast<int>(pageCount); ++page) {
    press(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + page), window_.tbrMainButtons,
          PageBanners.at(static_cast<std::size_t>(page)), &window_.fraMainButtons);
  }
  const auto run = [this](const QKeySequence& keys, const std::function<void()>& event) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [&event] {
      if (event) event();
    });
  };
  run(QKeySequence::HelpContents, window_.Help);
  run(Qt::CTRL | Qt::Key_0, window_.mnuRestoreColWidth.Click);
  for (int column = 0; column < static_cast<int>(window_.lvwEmail.Columns.size()); ++column) {
    connect(new QShortcut(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + column), this), &QShortcut::activated, this,
            [this, column] {
              ListView& list = window_.lvwEmail;
              if (list.ColumnClick) list.ColumnClick(list.Columns[static_cast<std::size_t>(column)].Text);
            });
  }
}

void MainWindowView::followForm() {
  window_.Caption.watch([this](const std::string& caption) { setWindowTitle(qt(caption)); });
  window_.Pointer.watch(
      [this](MousePointer pointer) { pointer == MousePointer::Hourglass ? setCursor(Qt::BusyCursor) : unsetCursor(); });
  window_.State.watch([this](WindowState) { showState(); });
  window_.Visible.watch([this](bool) { showState(); });
  window_.restoreSize.watch([this] { resize(designSize); });
}

void MainWindowView::startTimers() {
  for (Timer* timer : {&window_.tmrStatusBar, &window_.tmrMailTime, &window_.tmrRetrieveMessage}) bind(*timer, *this);
}

/// While no tray icon stands for the program, a hidden window could not be brought back, so that it stays on the task
/// bar instead.
void MainWindowView::showState() {
  if (takingOver_) return;
  if (!window_.Visible && window_.State != WindowState::Minimised) {
    hide();
    return;
  }
  const bool minimised = window_.State == WindowState::Minimised;
  const bool maximised = window_.State == WindowState::Maximised;
  if (isVisible() && isMinimized() == minimised && isMaximized() == maximised) return;
  if (minimised) {
    showMinimized();
  } else if (maximised) {
    showMaximized();
  } else {
    showNormal();
  }
}

void MainWindowView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (window_.Close) window_.Close();
}

void MainWindowView::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange || !isVisible()) return;
  const WindowState state = isMinimized()   ? WindowState::Minimised
                            : isMaximized() ? WindowState::Maximised
                                            : WindowState::Normal;
  if (state == window_.State) return;
  takingOver_ = true;
  window_.State = state;
  if (state != WindowState::Minimised) window_.Visible = true;
  takingOver_ = false;
  if (window_.Resize) window_.Resize();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
