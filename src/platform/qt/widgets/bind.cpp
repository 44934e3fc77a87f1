#include "platform/qt/widgets/bind.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCursor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOptionFocusRect>
#include <QTimer>
#include <QToolButton>

#include "platform/controls/menu.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/coloured_menu.h"
#include "platform/qt/widgets/focus_keeper.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/legible_colour.h"

namespace velmora {

namespace {

constexpr const char* heirProperty = "heir";
constexpr const char* keysProperty = "keys";

/// Behind a question the window may not be the active one again yet.
bool isFocus(const QWidget& widget) { return widget.window()->focusWidget() == &widget; }

/// Qt would give it to the next one, where the same key does something else.
void passFocusOn(const QWidget& widget) {
  auto* heir = widget.property(heirProperty).value<QWidget*>();
  if (heir != nullptr && heir->isEnabled()) heir->setFocus();
}

/// As the user's keyboard has them.
QString nativeKeys(const std::string& keys) { return QKeySequence(qt(keys)).toString(QKeySequence::NativeText); }

/// A button that shows no text is named by its tip.
void bindButton(Button& button, const ImageList& images, QToolButton& widget) {
  widget.setObjectName(qt(button.Key));
  const auto name = [&button, &widget] {
    widget.setAccessibleName(trimmed(widget.text().isEmpty() ? button.ToolTipText.get() : button.Caption.get()));
  };
  button.Caption.watch([&widget, name](const std::string& caption) {
    widget.setText(trimmed(caption));
    name();
  });
  const auto tell = [&button, &widget, name] {
    const QString keys = nativeKeys(button.Keys);
    widget.setToolTip(qt(button.ToolTipText.get()) + (keys.isEmpty() ? keys : " (" + keys + ')'));
    widget.setProperty(keysProperty, keys);
    name();
  };
  button.ToolTipText.watch([tell](const std::string&) { tell(); });
  button.Keys.watch([tell](const std::string&) { tell(); });
  button.Image.watch([&widget, images](const std::string& key) { widget.setIcon(images.icon(key)); });
  button.Enabled.watch([&widget](bool on) {
    if (!on && isFocus(widget)) passFocusOn(widget);
    widget.setEnabled(on);
  });
  QObject::connect(&widget, &QToolButton::clicked, &widget, [&button] { button.click(); });
}

/// A button that shows clearly where the keyboard is, which many styles hardly do for flat ones, and that Enter
/// presses.
class PlainToolButton : public QToolButton {
 public:
  using QToolButton::QToolButton;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
      if (!event->isAutoRepeat()) click();  // a key that is held must not answer what the press has asked
    } else {
      QToolButton::keyPressEvent(event);
    }
  }

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
  QStringList keyBindingsForAction(const QString& name) const override {
    const QString keys = widget()->property(keysProperty).toString();
    return name == pressAction() && !keys.isEmpty() ? QStringList(keys) : QStringList();
  }
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
  bindButton(button, images, *widget);
  return widget;
}

void bindEntry(MenuEntry& entry, const ImageList& images, QMenu& menu) {
  if (entry.Caption == "-") {
    menu.addSeparator();
    return;
  }
  QAction* action = menu.addAction(QString());
  const auto tell = [&entry, action, images] {
    const std::string& caption = entry.Caption;
    const auto mark = caption.find("|#");
    const QString keys = nativeKeys(entry.Keys);
    action->setText(qt(caption.substr(0, mark)) + (keys.isEmpty() ? keys : '\t' + keys));
    if (mark != std::string::npos) action->setIcon(images.icon(caption.substr(mark + 2)));
  };
  entry.Caption.watch([tell](const std::string&) { tell(); });
  entry.Keys.watch([tell](const std::string&) { tell(); });
  entry.Enabled.watch([action](bool on) { action->setEnabled(on); });
  QObject::connect(action, &QAction::triggered, &menu, [&entry] {
    if (entry.Click) entry.Click();
  });
}

void showColour(std::int32_t colour, QLabel& widget) {
  QPalette own;
  if (colour != ordinaryColour) {
    const QColor seen = legible(colourOf(colour), widget.palette().color(QPalette::Active, QPalette::Window));
    for (const auto group : {QPalette::Active, QPalette::Inactive}) own.setColor(group, QPalette::WindowText, seen);
  }
  widget.setPalette(own);
}

/// Colours a label anew for each ground that the desktop gives it.
class LabelPainter : public QObject {
 public:
  LabelPainter(Label& label, QLabel& widget) : QObject(&widget), label_(label), widget_(widget) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) showColour(label_.ForeColour, widget_);
    return QObject::eventFilter(watched, event);
  }

 private:
  Label& label_;
  QLabel& widget_;
};

}  // namespace

QString literal(const std::string& text) { return qt(text).replace("&", "&&"); }

QString withShortcut(const std::string& text, char letter) {
  const QString shown = literal(text);
  const QLatin1Char wanted(letter);
  auto place = shown.indexOf(wanted);
  if (place < 0) place = shown.indexOf(wanted, 0, Qt::CaseInsensitive);
  return place < 0 ? shown : shown.left(place) + '&' + shown.mid(place);
}

void bind(Frame& frame, QWidget& widget) {
  keepFocus(frame.Visible, widget);
  keepFocus(frame.Enabled, widget);
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
  label.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  label.ForeColour.watch([&widget](std::int32_t colour) { showColour(colour, widget); });
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the widget owns it
  widget.installEventFilter(new LabelPainter(label, widget));
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

void bind(ProgressBar& bar, QProgressBar& widget) {
  bar.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  bar.Min.watch([&widget](std::int32_t value) { widget.setMinimum(value); });
  bar.Max.watch([&widget](std::int32_t value) { widget.setMaximum(value); });
  bar.Value.watch([&widget](std::int32_t value) { widget.setValue(value); });
}

void bind(PopupMenu& menu, ColouredMenu& widget, std::function<QPoint()> place) {
  const ImageList images(menu.ImageList);
  for (MenuEntry* entry : menu.Entries) bindEntry(*entry, images, widget);
  menu.Colours.watch([&widget](const std::optional<MenuColours>& colours) { widget.setColours(colours); });
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
  image.Key.watch([widget, images = ImageList(std::string(imageList)), size](const std::string& key) {
    widget->setPixmap(images.icon(key).pixmap(size, widget->devicePixelRatioF()));
  });
  widget->setAlignment(Qt::AlignTop);
  image.Visible.watch([widget](bool on) { widget->setVisible(on); });
  return widget;
}

void setHeir(QWidget& bar, QWidget& heir) {
  for (auto* button : bar.findChildren<QToolButton*>()) button->setProperty(heirProperty, QVariant::fromValue(&heir));
}

QWidget* makeToolbar(Toolbar& toolbar, const QString& name, ButtonLook look, QWidget* parent) {
  auto* row = new QWidget(parent);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  row->setObjectName(name);
  auto* layout = new QHBoxLayout(row);  // NOLINT(cppcoreguidelines-owning-memory): its parent owns it
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  const ImageList images(toolbar.ImageList);
  for (Button& button : toolbar.Buttons) layout->addWidget(makeButton(button, images, look, row));
  toolbar.Raised.watch([row](bool on) {
    for (auto* button : row->findChildren<QToolButton*>()) button->setAutoRaise(!on);
  });
  toolbar.Enabled.watch([row](bool on) {
    const auto buttons = on ? QList<QToolButton*>() : row->findChildren<QToolButton*>();
    for (const auto* button : buttons) {
      if (isFocus(*button)) passFocusOn(*button);
    }
  });
  keepFocus(toolbar.Enabled, *row);
  toolbar.Visible.watch([row](bool on) { row->setVisible(on); });
  toolbar.Enabled.watch([row](bool on) { row->setEnabled(on); });
  return row;
}

}  // namespace velmora
