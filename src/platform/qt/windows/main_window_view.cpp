#include "platform/qt/windows/main_window_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>
#include <array>
#include <chrono>
#include <vector>

#include "app/decisions/shortcuts.h"
#include "app/main_window.h"
#include "platform/qt/services/come_forward.h"
#include "platform/qt/services/wayland.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/coloured_menu.h"
#include "platform/qt/widgets/forget_minimised.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/plain_layout.h"
#include "platform/qt/widgets/room.h"
#include "platform/qt/widgets/tab_bar.h"
#include "platform/qt/windows/accounts_page_view.h"
#include "platform/qt/windows/message_list_view.h"
#include "platform/qt/windows/options_page_view.h"
#include "platform/qt/windows/rules_page_view.h"
#include "platform/qt/windows/status_bar_view.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// As wide as the five columns of the list at their usual widths, and a scroll bar.
constexpr QSize designSize(924, 600);

constexpr int leastHeight = 235;

/// The small toolbars under each page, from left to right.
const std::array<std::vector<std::size_t>, pageCount> buttonRows = {{
    {checkAllBar, stopRetrievalBar, pauseStartUpBar, startClientBar, closeBar, emailHelpBar},
    {saveAccountBar, cancelAccountBar, accountsHelpBar},
    {saveRulesBar, cancelRulesBar, rulesHelpBar},
    {saveOptionsBar, cancelOptionsBar, optionsHelpBar},
}};

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

}  // namespace

MainWindowView::MainWindowView(MainWindow& window) : window_(window) {
  setObjectName("frmMain");
  setWindowIcon(applicationIcon());
  // What the columns' usual widths are parts of.
  window_.lvwEmail.Width = inFontOf(*this, QSize(window_.lvwEmail.Width, 0)).width();
  auto* body = new QWidget(this);
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(6, 4, 6, 4);
  column->addWidget(makeHead());
  column->addWidget(makeBanner());
  column->addWidget(makePage(emailPage, makeEmailPage()), 1);
  column->addWidget(makePage(accountsPage, makeAccountsPage(window_, window_, this)), 1);
  column->addWidget(makePage(rulesPage, makeRulesPage(window_, this)), 1);
  column->addWidget(makePage(optionsPage, makeOptionsPage(window_, window_, this)), 1);
  column->addWidget(new StatusBarView(window_.StatusBar, window_.ProgressBar, body));
  setCentralWidget(body);
  for (const auto bar : {saveRulesBar, cancelRulesBar}) {
    setHeir(*body->findChild<QWidget*>(QStringLiteral("tbrButtons%1").arg(bar)),
            *body->findChild<QWidget*>("lstRules"));
  }
  addFocusTaker();
  addShortcuts();
  resize(startSize());
  setMinimumSize(leastSize());
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
  auto* banner = makeLabel(window_.lblBanner, "lblBanner", head);
  QFont large = banner->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  banner->setFont(large);
  row->addWidget(banner);
  return head;
}

QWidget* MainWindowView::makeBanner() {
  auto* frame = new QFrame(this);
  frame->setObjectName("fraNoAcntsBanner");
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  auto* label = makeLabel(window_.lblNoAcntsBanner, "lblNoAcntsBanner", frame);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
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
  list->addWidget(new TabBar(window_.TabStripEmail, "TabStripEmail", "Accounts", page, "imlTabIcons"));
  auto* view = new MessageListView(window_.lvwEmail, window_.tipEmail, ImageList("imlListViewIcons"),
                                   ImageList("imlListViewColumnHeader"), page);
  view->setObjectName("lvwEmail");
  view->setAccessibleName("Messages");
  list->addWidget(view, 1);
  column->addLayout(list, 1);
  bind(window_.mnuEmailPopMenu, *new ColouredMenu(view), [view] { return view->menuPlace(); });
  bind(window_.mnuColumns, *new ColouredMenu(view));
  window_.TextWidth = [view](const std::string& text, bool bold) { return view->textWidth(text, bold); };
  list_ = view;
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

void MainWindowView::addShortcuts() {
  for (const Shortcut& shortcut : shortcuts) {
    auto* keys = new QShortcut(QKeySequence(shortcut.keys), this);
    keys->setAutoRepeat(false);  // a key held down would log in over and over
    connect(keys, &QShortcut::activated, this, [this, &shortcut] {
      if (window_.KeyPress) window_.KeyPress(shortcut);
    });
  }
}

void MainWindowView::followForm() {
  window_.Caption.watch([this](const std::string& caption) { setWindowTitle(qt(caption)); });
  window_.Pointer.watch(
      [this](MousePointer pointer) { pointer == MousePointer::Hourglass ? setCursor(Qt::BusyCursor) : unsetCursor(); });
  window_.State.watch([this](WindowState) { showState(); });
  window_.Visible.watch([this](bool) { showState(); });
  window_.TrayData.TrayPresent.watch([this](bool) { showState(); });
  window_.restoreSize.watch([this] { resize(startSize()); });
  window_.activate.watch([this] {
    appearAnew(*this);
    raise();
    activateWindow();
    comeForward(*this);
    raiseModal();
  });
}

QSize MainWindowView::startSize() const { return inFontOf(*this, designSize).boundedTo(roomFor(*this)); }

/// A Wayland desktop that lays windows side by side asks for no least width, and one that is insisted on is cut off.
QSize MainWindowView::leastSize() const { return {onWayland() ? 0 : width(), leastHeight}; }

void MainWindowView::startTimers() {
  constexpr std::chrono::milliseconds settling(200);
  settles_.setSingleShot(true);
  settles_.setInterval(settling);
  connect(&settles_, &QTimer::timeout, this, &MainWindowView::notePlace);
  trayMayCome_.setSingleShot(true);
  connect(&trayMayCome_, &QTimer::timeout, this, &MainWindowView::showState);
  trayMayCome_.start(std::chrono::seconds(15));
  for (Timer* timer : {&window_.tmrStatusBar, &window_.tmrMailTime, &window_.tmrMailStartUp,
                       &window_.tmrRetrieveMessage, &window_.tmrDragTab, &window_.tmrRuleFits}) {
    bind(*timer, *this);
  }
}

/// A minimised window is hidden, but only while a tray icon stands for the program: else it could not be brought back,
/// and stays on the task bar. At start it waits for the tray a while.
void MainWindowView::showState() {
  if (takingOver_) return;
  notePlace();
  const bool minimised = window_.State == WindowState::Minimised;
  if (minimised ? window_.TrayData.TrayPresent || trayMayCome_.isActive() : !window_.Visible) {
    hide();
    return;
  }
  trayMayCome_.stop();
  const bool maximised = window_.State == WindowState::Maximised;
  if (isVisible() && isMinimized() == minimised && isMaximized() == maximised) return;
  if (!isVisible() && !maximised) restorePlace();
  if (minimised) {
    showMinimized();
    return;
  }
  forgetMinimised(*this);
  maximised ? showMaximized() : showNormal();
}

void MainWindowView::notePlace() {
  if (isVisible() && !isMinimized() && !isMaximized()) place_ = geometry();
}

/// The desktop would place a window that comes back anew, or where it stood maximised. Its screen may have gone.
void MainWindowView::restorePlace() {
  if (!place_ || QGuiApplication::screenAt(place_->center()) == nullptr) return;
  resize(place_->size());
  // Only a change makes Qt ask for a place.
  windowHandle()->setPosition(place_->topLeft() + QPoint(1, 0));
  windowHandle()->setPosition(place_->topLeft());
}

/// What has moved may be about to be maximised, which comes to be known a moment later.
void MainWindowView::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  settles_.start();
}

void MainWindowView::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  settles_.start();
}

/// What waits for an answer would be gone with the window, and nothing could bring it back.
void MainWindowView::keepOnScreen() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raiseModal();
}

void MainWindowView::raiseModal() {
  QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr) return;
  modal->setWindowState(modal->windowState() & ~Qt::WindowMinimized);
  modal->raise();
  modal->activateWindow();
  comeForward(*modal);
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
  if (state == WindowState::Minimised && QApplication::activeModalWidget() != nullptr) {
    QTimer::singleShot(0, this, &MainWindowView::keepOnScreen);
    return;
  }
  if (state == WindowState::Minimised && window_.State == WindowState::Normal) place_ = geometry();
  takingOver_ = true;
  window_.State = state;
  if (state != WindowState::Minimised) window_.Visible = true;
  takingOver_ = false;
  if (window_.Resize) window_.Resize();
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
