#include "platform/qt/help/help_window.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>

#include "platform/qt/help/help_browser.h"
#include "platform/qt/widgets/hint_colour.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/room.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

constexpr QSize startSize(960, 680);
constexpr int contentsWidth = 230;
constexpr int longestSearch = 200;

/// A small button with an arrow, which also answers to keys everywhere in the window.
QToolButton* makeArrow(Qt::ArrowType arrow, const QString& name, const QString& tip, QKeySequence::StandardKey keys,
                       QWidget* window) {
  auto* action = new QAction(name, window);
  action->setShortcut(keys);
  action->setToolTip(tip + " (" + action->shortcut().toString(QKeySequence::NativeText) + ')');
  action->setEnabled(false);
  window->addAction(action);
  auto* button = new QToolButton(window);
  button->setDefaultAction(action);
  button->setArrowType(arrow);
  button->setAccessibleName(name);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

/// Few desktops show by themselves whether the keys go to a list or a text.
void showFocus(QFrame& part) {
  QObject::connect(qApp, &QApplication::focusChanged, &part, [&part](const QWidget* /*old*/, const QWidget* now) {
    part.setFrameStyle(now == &part ? QFrame::Box | QFrame::Plain : QFrame::Panel | QFrame::Sunken);
  });
}

}  // namespace

HelpWindow::HelpWindow(const QString& folder) : pages_(readHelpPages(folder)) {
  setObjectName("frmHelp");
  setWindowTitle("Velmora Help");
  setWindowIcon(applicationIcon());
  browser_ = new HelpBrowser(folder, pages_, this);
  auto* splitter = new QSplitter(this);
  splitter->addWidget(makeContents());
  splitter->addWidget(makePage());
  splitter->setChildrenCollapsible(false);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({contentsWidth, startSize.width() - contentsWidth});
  (new QVBoxLayout(this))->addWidget(splitter);
  resize(inFontOf(*this, startSize).boundedTo(roomFor(*this)));
  followPalette();
  connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::followPage);
  for (QFrame* part : std::initializer_list<QFrame*>{contents_, browser_}) showFocus(*part);
  addShortcuts();
}

QWidget* HelpWindow::makeContents() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  search_ = new QLineEdit(side);
  search_->setPlaceholderText("Search");
  search_->setAccessibleName("Search");
  search_->setClearButtonEnabled(true);
  search_->setMaxLength(longestSearch);
  noneFound_ = new QLabel("No page holds these words.", side);
  noneFound_->setWordWrap(true);
  noneFound_->hide();
  contents_ = new QListWidget(side);
  contents_->setAccessibleName("Contents");
  for (const HelpPage& page : pages_) contents_->addItem(page.title);
  for (QWidget* part : std::initializer_list<QWidget*>{search_, noneFound_, contents_}) column->addWidget(part);
  connect(search_, &QLineEdit::textChanged, this, &HelpWindow::narrow);
  connect(search_, &QLineEdit::returnPressed, this, &HelpWindow::openFirstFound);
  connect(contents_, &QListWidget::currentRowChanged, browser_, &HelpBrowser::showPage);
  return side;
}

QWidget* HelpWindow::makePage() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  auto* back = makeArrow(Qt::LeftArrow, "Back", "Back to the page before", QKeySequence::Back, this);
  auto* forward = makeArrow(Qt::RightArrow, "Forward", "Forward again", QKeySequence::Forward, this);
  auto* row = new QHBoxLayout;
  row->addWidget(back);
  row->addWidget(forward);
  row->addStretch(1);
  column->addLayout(row);
  browser_->setAccessibleName("Help page");
  setTabOrder(forward, browser_);
  column->addWidget(browser_, 1);
  connect(back->defaultAction(), &QAction::triggered, browser_, &QTextBrowser::backward);
  connect(forward->defaultAction(), &QAction::triggered, browser_, &QTextBrowser::forward);
  connect(browser_, &QTextBrowser::backwardAvailable, back->defaultAction(), &QAction::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward->defaultAction(), &QAction::setEnabled);
  return side;
}

void HelpWindow::followPalette() {
  QPalette colours = search_->palette();
  colours.setColor(QPalette::PlaceholderText, hintColour(palette()));
  search_->setPalette(colours);
}

void HelpWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && search_ != nullptr) followPalette();
}

void HelpWindow::addShortcuts() {
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &HelpWindow::leave);
}

void HelpWindow::showTopic(int context) {
  search_->clear();
  const auto found = std::find_if(pages_.begin(), pages_.end(),
                                  [context](const HelpPage& page) { return context > 0 && page.context == context; });
  browser_->showPage(found == pages_.end() ? 0 : static_cast<int>(found - pages_.begin()));
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  browser_->setFocus();
}

void HelpWindow::narrow() {
  words_ = searchWords(search_->text());
  bool none = true;
  for (int row = 0; row < contents_->count(); ++row) {
    const bool found = holdsAll(pages_[static_cast<std::size_t>(row)], words_);
    contents_->item(row)->setHidden(!found);
    none = none && !found;
  }
  noneFound_->setVisible(none);
  followPage();
}

void HelpWindow::followPage() {
  const QSignalBlocker quiet(contents_);
  const int page = browser_->shownPage();
  const bool listed = page >= 0 && !contents_->item(page)->isHidden();
  contents_->setCurrentRow(listed ? page : -1);
  browser_->mark(words_);
}

void HelpWindow::openFirstFound() {
  for (int row = 0; row < contents_->count(); ++row) {
    if (contents_->item(row)->isHidden()) continue;
    contents_->setCurrentRow(row);
    contents_->setFocus();
    return;
  }
}

void HelpWindow::leave() {
  if (search_->text().isEmpty()) {
    close();
  } else {
    search_->clear();
  }
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
