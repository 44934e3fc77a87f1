#include "platform/qt/widgets/bind.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QCursor>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QStyleOptionFocusRect>
#include <QTimer>
#include <QToolButton>

#include "platform/controls/check_box.h"
#include "platform/controls/menu.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/text_box.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/focus_keeper.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/text_view.h"

namespace velmora {

namespace {

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

/// A press by a screen reader returns at once. What the button does may wait for the user's answer in a box, and the
/// reader must be able to tell him of it.
class PlainButtonAccess : public QAccessibleWidget {
 public:
  explicit PlainButtonAccess(QWidget* button) : QAccessibleWidget(button, QAccessible::Button) {}

  QStringList actionNames() const override { return QStringList(pressAction()) + QAccessibleWidget::actionNames(); }
  void doAction(const QString& name) override {
    if (name != pressAction()) {
      QAccessibleWidget::doAction(name);
    } else if (auto* button = qobject_cast<QToolButton*>(widget())) {
      QMetaObject::invokeMethod(button, &QToolButton::click, Qt::QueuedConnection);
    }
  }
};

QAccessibleInterface* plainButtonAccess(const QString& /*className*/, QObject* object) {
  auto* button = dynamic_cast<PlainToolButton*>(object);
  return button == nullptr ? nullptr : new PlainButtonAccess(button);  // NOLINT(cppcoreguidelines-owning-memory): Qt's
}

QToolButton* makeButton(Button& button, const ImageList& images, ButtonLook look, QWidget* parent) {
  QAccessible::installFactory(plainButtonAccess);  // once, however often it is called
  auto* widget = new PlainToolButton(parent);      // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  const bool under = look == ButtonLook::TextUnderIcon;
  widget->setToolButtonStyle(under ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
  widget->setIconSize(under ? QSize(32, 32) : QSize(16, 16));
  if (under) widget->setMinimumWidth(72);
  widget->setAutoRaise(true);
  bindButton(button, images, *widget);
  return widget;
}

void bindEntry(MenuEntry& entry, const ImageList& images, QMenu& menu) {
  if (entry.Caption == "-") {
    menu.addSeparator();
    return;
  }
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

QString literal(const std::string& text) { return qt(text).replace("&", "&&"); }

void bind(Frame& frame, QWidget& widget) {
  keepFocus(frame.Visible, widget);
  keepFocus(frame.Enabled, widget);
  frame.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  frame.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
}

void bind(Frame& frame, QGroupBox& widget) {
  bind(frame, static_cast<QWidget&>(widget));
  frame.Caption.watch([&widget](const std::string& caption) { widget.setTitle(literal(caption)); });
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

/// A text that the box shows otherwise, such as one too long for it, stays as it is until the user changes it.
void bindInput(TextBox& box, QLineEdit& widget) {
  constexpr qsizetype most = 10000;
  widget.setMaxLength(box.MaxLength > 0 ? box.MaxLength : int{most});
  box.Text.watch([&widget](const std::string& text) {
    if (utf8(widget.text()) == text) return;
    const QSignalBlocker quiet(widget);
    const bool isSeen = widget.echoMode() == QLineEdit::Normal;
    widget.setText(isSeen ? harmlessLine(text, most) : qt(text));
    widget.setCursorPosition(0);
  });
  box.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  box.focus.watch([&widget] {
    if (!widget.isVisible()) return;  // it would get the keys, and nobody see it
    widget.setFocus();
    widget.selectAll();
  });
  QObject::connect(&widget, &QLineEdit::textChanged, &widget, [&box](const QString& text) { box.Text = utf8(text); });
}

void bind(CheckBox& box, QCheckBox& widget) {
  box.Value.watch([&widget](std::int16_t value) { widget.setChecked(value == 1); });
  box.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  QObject::connect(&widget, &QCheckBox::toggled, &widget, [&box](bool on) { box.Value = std::int16_t{on}; });
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

void bind(PopupMenu& menu, QMenu& widget, std::function<QPoint()> place) {
  const ImageList images(menu.ImageList);
  for (MenuEntry* entry : menu.Entries) bindEntry(*entry, images, widget);
  menu.opened.watch([&widget, place = std::move(place)] { widget.popup(place ? place() : QCursor::pos()); });
}

void bind(Timer& timer, QObject& owner) {
  auto* clock = new QTimer(&owner);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  clock->setInterval(timer.Interval);
  QObject::connect(clock, &QTimer::timeout, clock, [&timer] { timer.tick(); });
  timer.Enabled.watch([clock](bool on) { on ? clock->start() : clock->stop(); });
}

QLabel* makeLabel(Label& label, const QString& name, QWidget* parent) {
  auto* widget = new QLabel(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  widget->setObjectName(name);
  bind(label, *widget);
  return widget;
}

QLabel* makePicture(Image& image, std::string_view imageList, const QString& name, QWidget* parent) {
  constexpr QSize size(32, 32);
  auto* widget = new QLabel(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  widget->setObjectName(name);
  widget->setPixmap(ImageList(std::string(imageList)).icon(image.Key).pixmap(size, parent->devicePixelRatioF()));
  widget->setAlignment(Qt::AlignTop);
  image.Visible.watch([widget](bool on) { widget->setVisible(on); });
  return widget;
}

QWidget* makeToolbar(Toolbar& toolbar, const QString& name, ButtonLook look, QWidget* parent) {
  auto* row = new QWidget(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  row->setObjectName(name);
  auto* layout = new QHBoxLayout(row);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  const ImageList images(toolbar.ImageList);
  for (Button& button : toolbar.Buttons) layout->addWidget(makeButton(button, images, look, row));
  keepFocus(toolbar.Enabled, *row);
  toolbar.Visible.watch([row](bool on) { row->setVisible(on); });
  toolbar.Enabled.watch([row](bool on) { row->setEnabled(on); });
  return row;
}

}  // namespace velmora
