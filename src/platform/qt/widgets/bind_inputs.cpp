#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalBlocker>

#include "platform/controls/check_box.h"
#include "platform/controls/option_group.h"
#include "platform/controls/text_box.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/password_edit.h"
#include "platform/qt/widgets/text_view.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// An exclusive group lets go of none of its buttons once it has one. The key Tab leads to the one that is chosen.
void showOption(std::int16_t value, QButtonGroup& group) {
  const QSignalBlocker quiet(group);
  const QAbstractButton* chosen = group.button(value);
  group.setExclusive(false);
  for (QAbstractButton* button : group.buttons()) {
    button->setChecked(button == chosen);
    button->setFocusPolicy(chosen == nullptr || button == chosen ? Qt::StrongFocus : Qt::ClickFocus);
  }
  group.setExclusive(true);
}

/// As much of a text as a box can be asked to show. What the user doesn't change must not change: tabs stay.
constexpr qsizetype mostInput = 10000;

/// Also while it is shown in letters: nothing of it is a blank or a picture that stands for something else.
bool isPassword(const QLineEdit& widget) { return dynamic_cast<const PasswordEdit*>(&widget) != nullptr; }

QString inputText(std::string_view text) { return harmlessText(text::left(text, mostInput)).replace(u'\n', u' '); }

/// A line that was copied with its end brings that along, and nobody would see it. What can't be seen at all loses it.
void takeLineEndsOut(QLineEdit& widget) {
  static const QRegularExpression lineEnds(R"([\r\n\x{0}\x{85}\x{2028}\x{2029}]+)");
  static const QRegularExpression last(lineEnds.pattern() + '$');
  QString text = widget.text();
  if (!text.contains(lineEnds)) return;
  const QSignalBlocker quiet(widget);
  const int cursor = widget.cursorPosition();
  text.remove(last).replace(lineEnds, isPassword(widget) ? "" : " ");
  widget.setText(text);
  widget.setCursorPosition(cursor);
}

}  // namespace

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
  widget.setMaxLength(box.MaxLength > 0 ? box.MaxLength : int{mostInput});
  box.Text.watch([&widget](const std::string& text) {
    if (utf8(widget.text()) == text) return;
    const QSignalBlocker quiet(widget);
    widget.setText(isPassword(widget) ? qt(text) : inputText(text));
    widget.setCursorPosition(0);
  });
  box.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  QObject::connect(&widget, &QLineEdit::returnPressed, &widget, [&box] {
    if (box.Enter) box.Enter();
  });
  box.focus.watch([&widget] {
    if (!widget.isVisible()) return;  // it would get the keys, and nobody see it
    widget.setFocus();
    widget.selectAll();
  });
  QObject::connect(&widget, &QLineEdit::textChanged, &widget, [&box, &widget] {
    takeLineEndsOut(widget);
    box.Text = utf8(widget.text());
  });
}

/// A value of a third kind that the program sets stays until the user changes it.
void bind(CheckBox& box, QCheckBox& widget) {
  box.Value.watch([&widget](std::int16_t value) {
    const QSignalBlocker quiet(widget);
    widget.setChecked(value == 1);
  });
  box.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  box.Enabled.watch([&widget](bool on) { widget.setEnabled(on); });
  QObject::connect(&widget, &QCheckBox::toggled, &widget, [&box](bool on) { box.Value = std::int16_t{on}; });
}

void bind(RichTextBox& box, TextView& widget) {
  box.Text.watch([&widget](const std::string& text) { widget.showText(text); });
  box.Visible.watch([&widget](bool on) { widget.setVisible(on); });
  box.focus.watch([&widget] { widget.setFocus(); });
}

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents
QCheckBox* makeTick(CheckBox& tick, const QString& name, char letter, QWidget* parent) {
  auto* box = new QCheckBox(withShortcut(tick.Caption, letter), parent);
  box->setObjectName(name);
  box->setAccessibleName(qt(tick.Caption));
  bind(tick, *box);
  return box;
}

QWidget* makeOptions(OptionGroup& options, const QString& name, std::string_view letters, Qt::Orientation orientation,
                     QWidget* parent) {
  constexpr int gapInRow = 16;
  auto* frame = new QWidget(parent);
  auto* group = new QButtonGroup(frame);
  const bool isRow = orientation == Qt::Horizontal;
  auto* layout = new QBoxLayout(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, frame);
  layout->setContentsMargins(0, 0, 0, 0);
  if (isRow) layout->setSpacing(gapInRow);
  for (std::size_t i = 0; i < options.Captions.size(); ++i) {
    auto* button = new QRadioButton(withShortcut(options.Captions[i], letters.at(i)), frame);
    const int number = static_cast<int>(i) + 1;
    button->setObjectName(name + QString::number(number));
    button->setAccessibleName(qt(options.Captions[i]));
    group->addButton(button, number);
    layout->addWidget(button);
  }
  options.Value.watch([group](std::int16_t value) { showOption(value, *group); });
  options.Enabled.watch([frame](bool on) { frame->setEnabled(on); });
  // Unlike a click, this is also raised by a screen reader and by the arrow keys.
  QObject::connect(group, &QButtonGroup::idToggled, frame, [&options](int number, bool on) {
    if (on) options.Choose(static_cast<std::int16_t>(number));
  });
  return frame;
}
// NOLINTEND(cppcoreguidelines-owning-memory)

}  // namespace velmora
