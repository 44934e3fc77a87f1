#include "platform/qt/bind.h"

#include <QCursor>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QStyleOptionFocusRect>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>

#include "platform/controls/frame.h"
#include "platform/controls/menu.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"
#include "platform/qt/focus_watcher.h"
#include "platform/qt/harmless_text.h"
#include "platform/qt/icons.h"
#include "platform/qt/strings.h"
#include "platform/qt/text_view.h"

namespace velmora {

namespace {

/// "&" is a letter like any other in the names that users give.
QString literal(const std::string& text) { return qt(text).replace("&", "&&"); }

void bindButton(Button& button, const ImageList& images, QToolButton& widget) {
  widget.setObjectName(qt(button.Key));
  button.Caption.watch([&widget](const std::string& caption) {
    widget.setText(trimmed(caption));
    widget.setAccessibleName(trimmed(caption));
  });
  button.ToolTipText.watch([&widget](const std::string& tip) { widget.setToolTip(qt(tip)); });
  button.Image.watch([&widget, images](const std::string& key) { widget.setIcon(images.icon(key)); });
  button.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  QObject::connect(&widget, &QToolButton::clicked, &widget, [&button] { button.click(); });
}

/// A button that shows clearly where the keyboard is: many styles hardly do for flat ones.
class PlainToolButton : public QToolButton {
 public:
  using QToolButton::QToolButton;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QToolButton::paintEvent(event);
    if (!hasFocus()) return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rect().adjusted(1, 1, -1, -1);
    option.state |= QStyle::State_KeyboardFocusChange;
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
};

QToolButton* makeButton(Button& button, const ImageList& images, ButtonLook look, QWidget* parent) {
  auto* widget = new PlainToolButton(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  const bool under = look == ButtonLook::TextUnderIcon;
  widget->setToolButtonStyle(under ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
  widget->setIconSize(under ? QSize(32, 32) : QSize(16, 16));
  if (under) widget->setMinimumWidth(72);
  widget->setAutoRaise(true);
  bindButton(button, images, *widget);
  return widget;
}

void bindTab(TabStrip::Tab& tab, QTabBar& widget, int index, const ImageList& images) {
  tab.Caption.watch([&widget, index](const std::string& caption) {
    widget.setTabText(index, literal(caption));
    widget.setAccessibleTabName(index, qt(caption));
  });
  tab.Image.watch([&widget, index, images](const std::string& key) { widget.setTabIcon(index, images.icon(key)); });
}

/// Adds the tabs that the strip has and the bar does not.
void addMissingTabs(TabStrip& strip, QTabBar& widget, const ImageList& images) {
  const QSignalBlocker quiet(widget);
  for (int index = widget.count(); index < strip.Count(); ++index) {
    widget.addTab(QString());
    bindTab(strip.Tabs(index + 1), widget, index, images);
  }
  widget.setCurrentIndex(strip.SelectedItem() - 1);
  widget.updateGeometry();  // a hidden bar that a picture lays out would keep the height of none
}

void bindEntry(MenuEntry& entry, const ImageList& images, QMenu& menu) {
  QAction* action = menu.addAction(QString());
  entry.Caption.watch([action, images](const std::string& caption) {
    const auto mark = caption.find("|#");
    action->setText(qt(caption.substr(0, mark)));
    if (mark != std::string::npos) action->setIcon(images.icon(caption.substr(mark + 2)));
  });
  entry.Enabled.watch([action](bool on) { action->setEnabled(on); });
  QObject::connect(action, &QAction::triggered, &menu, [&entry] {
    if (entry.Click) entry.Click();
  });
}

}  // namespace

void bind(Frame& frame, QWidget& widget) {
  frame.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  frame.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
}

/// The last line's break begins no other line.
void bind(Label& label, QLabel& widget) {
  widget.setTextFormat(Qt::PlainText);
  label.Caption.watch([&widget](const std::string& caption) {
    const QString text = qt(caption);
    widget.setText(text.endsWith("\r\n") ? text.chopped(2) : text);
  });
  label.Visible.watch([&widget](bool on) { widget.setVisible(on); });
}

void bindLink(Label& label, QLabel& widget) {
  widget.setTextFormat(Qt::RichText);
  widget.setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  label.Caption.watch([&widget](const std::string& caption) {
    widget.setText("<a href=\"#\">" + qt(caption).toHtmlEscaped() + "</a>");
    widget.setAccessibleName(qt(caption));
  });
  QObject::connect(&widget, &QLabel::linkActivated, &widget, [&label] {
    if (label.Click) label.Click();
  });
}

void bind(TextBox& box, QLineEdit& widget) {
  widget.setReadOnly(true);
  box.Text.watch([&widget](const std::string& text) {
    constexpr qsizetype most = 10000;
    widget.setText(harmlessLine(text, most));
    widget.setCursorPosition(0);
  });
}

void bind(RichTextBox& box, TextView& widget) {
  box.Text.watch([&widget](const std::string& text) { widget.showText(text); });
  box.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  box.focus.watch([&widget] { widget.setFocus(); });
}

void bind(ProgressBar& bar, QProgressBar& widget) {
  bar.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  bar.Min.watch([&widget](std::int32_t value) { widget.setMinimum(value); });
  bar.Max.watch([&widget](std::int32_t value) { widget.setMaximum(value); });
  bar.Value.watch([&widget](std::int32_t value) { widget.setValue(value); });
}

void bind(TabStrip& strip, QTabBar& widget, std::string_view imageList) {
  // A strip is disabled during a check, and its pictures are what tells of it.
  const ImageList images(std::string(imageList), ImageList::WhenDisabled::AsItIs);
  addMissingTabs(strip, widget, images);
  strip.added.watch([&strip, &widget, images] { addMissingTabs(strip, widget, images); });
  strip.selectionChanged.watch([&strip, &widget] {
    const QSignalBlocker quiet(widget);
    widget.setCurrentIndex(strip.SelectedItem() - 1);
  });
  strip.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  QObject::connect(&widget, &QTabBar::currentChanged, &widget, [&strip, &widget](int index) {
    if (strip.Enabled) {
      strip.SelectTab(index + 1);
    } else {  // a screen reader can press tabs that nobody else can
      const QSignalBlocker quiet(widget);
      widget.setCurrentIndex(strip.SelectedItem() - 1);
    }
  });
  QObject::connect(&widget, &QTabBar::tabBarClicked, &widget, [&strip, &widget](int index) {
    if (index >= 0 && index == widget.currentIndex() && strip.Click) strip.Click();
  });
  watchFocus(widget, [&strip] {
    if (strip.GotFocus) strip.GotFocus();
  });
}

void bind(PopupMenu& menu, QMenu& widget) {
  const ImageList images(menu.ImageList);
  for (MenuEntry* entry : menu.Entries) bindEntry(*entry, images, widget);
  menu.opened.watch([&widget] { widget.popup(QCursor::pos()); });
}

void bind(Timer& timer, QObject& owner) {
  auto* clock = new QTimer(&owner);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  clock->setInterval(timer.Interval);
  QObject::connect(clock, &QTimer::timeout, clock, [&timer] { timer.tick(); });
  timer.Enabled.watch([clock](bool on) { on ? clock->start() : clock->stop(); });
}

QWidget* makeToolbar(Toolbar& toolbar, const QString& name, ButtonLook look, QWidget* parent) {
  auto* row = new QWidget(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  row->setObjectName(name);
  auto* layout = new QHBoxLayout(row);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  const ImageList images(toolbar.ImageList);
  for (Button& button : toolbar.Buttons) layout->addWidget(makeButton(button, images, look, row));
  toolbar.Visible.watch([row](bool on) { row->setVisible(on); });
  toolbar.Enabled.watch([row](bool on) { row->setEnabled(on); });
  return row;
}

}  // namespace velmora
