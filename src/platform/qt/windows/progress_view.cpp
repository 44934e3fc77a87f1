#include "platform/qt/windows/progress_view.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "messages/progress_window.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/room.h"
#include "platform/text.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

/// What a printer or a server says may be in it.
QString shownOf(const std::string& caption) {
  constexpr std::size_t longest = 600;
  constexpr qsizetype mostLines = 6;
  constexpr qsizetype widestWord = 30;
  const QStringList lines = harmlessText(text::left(caption, longest)).trimmed().split('\n');
  return breakable(lines.mid(0, mostLines).join('\n'), widestWord);
}

/// What the user may be writing in.
bool takesLetters(const QWidget* widget) {
  return widget != nullptr && widget->testAttribute(Qt::WA_InputMethodEnabled);
}

/// The first thing in the window: no key that the user goes on pressing sets it off, as one would a button.
QLabel* makeText(Label& label, QWidget* parent) {
  auto* text = makeLabel(label, "lblProgress", parent);
  text->setWordWrap(true);
  text->setFixedWidth(lineWidthIn(*parent));
  text->setMinimumHeight(2 * text->fontMetrics().lineSpacing());
  text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  text->setFocusPolicy(Qt::TabFocus);
  text->setFocus();
  label.Caption.watch([text](const std::string& caption) { text->setText(shownOf(caption)); });
  return text;
}

}  // namespace

ProgressView::ProgressView(ProgressWindow& window, const QString& name, QWidget* parent)
    : FormView(window, parent, Qt::Dialog) {
  setObjectName(name);
  auto* column = new QVBoxLayout(this);
  column->addWidget(makeText(window.lblProgress, this));
  auto* bar = new QProgressBar(this);
  bar->setObjectName("ProgressBar");
  bar->setAccessibleName("Progress");
  bind(window.ProgressBar, *bar);
  column->addWidget(bar);
  column->addWidget(makeToolbar(window.tbrProgress, "tbrProgress", ButtonLook::TextBesideIcon, this), 0,
                    Qt::AlignRight);
  column->setSizeConstraint(QLayout::SetFixedSize);
  followForm();
}

/// Whether a window takes the keyboard is settled when it is made.
void ProgressView::arrange() {
  destroy();
  setAttribute(Qt::WA_ShowWithoutActivating,
               QApplication::activeWindow() == nullptr || takesLetters(QApplication::focusWidget()));
  adjustSize();
  centreOnScreen();
}

/// One that came and went at once would only flicker, and the desktop may give it the keyboard when it has gone
/// already.
std::chrono::milliseconds ProgressView::patience() const { return std::chrono::milliseconds(300); }

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
