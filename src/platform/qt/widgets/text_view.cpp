#include "platform/qt/widgets/text_view.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <array>

#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/text_lines.h"
#include "platform/text.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): Qt takes what it is given

namespace velmora {

namespace {

using std::chrono::milliseconds;

/// A paragraph costs some 400 bytes and each change of the width takes time for it. So behind the first many, short
/// lines share one; the more there are, the more they share, so that their number grows only with the root of the
/// text's size.
constexpr int UnsharedBlocks = 250'000;
constexpr int BlocksForALength = 4000;

/// What marks a paragraph that goes on with the line of the one before.
constexpr int Continued = 1;

/// What is brought in at a time, in a fraction of a millisecond.
constexpr std::size_t MostOfAPiece = 16'000;

constexpr milliseconds slice{5};

/// Some lines with their ends, or one that has none.
std::string_view firstPiece(std::string_view text) {
  std::size_t size = 0;
  while (size < MostOfAPiece) {
    const std::string_view line = firstLine(text.substr(size));
    if (size == 0 && !isEnded(line)) return line;
    if (!isEnded(line)) break;
    size += line.size();
  }
  return text.substr(0, size);
}

/// Makes paragraphs of at least `length` characters, as far as there are lines.
void joinLines(QString& text, qsizetype length) {
  qsizetype begin = 0;
  for (auto end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n', end + 1)) {
    if (end - begin < length) {
      text[end] = QChar::LineSeparator;
    } else {
      begin = end + 1;
    }
  }
}

bool wantsAll(const QKeyEvent& key) {
  constexpr std::array keys = {QKeySequence::SelectAll, QKeySequence::MoveToEndOfDocument,
                               QKeySequence::SelectEndOfDocument};
  return std::any_of(keys.begin(), keys.end(), [&key](auto wanted) { return key.matches(wanted); });
}

}  // namespace

TextView::TextView(QWidget* parent, std::size_t mostBytes) : QPlainTextEdit(parent), mostBytes_(mostBytes) {
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setAttribute(Qt::WA_InputMethodEnabled, false);  // nobody writes in it
  setTabChangesFocus(true);
  setAcceptDrops(false);
  setLineWrapMode(WidgetWidth);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void TextView::showText(std::string_view text) {
  clear();
  rest_ = text::leftBytes(text, mostBytes_);
  notShown_ = text.size() - rest_.size();
  broken_ = false;
  load(slice);
  if (!rest_.empty()) slices_.start(0, this);
}

void TextView::loadRest() {
  if (!rest_.empty()) load(milliseconds::max());
}

void TextView::selectAll() {
  loadRest();
  QPlainTextEdit::selectAll();
}

void TextView::load(milliseconds longest) {
  const int anchor = textCursor().anchor();
  const int position = textCursor().position();
  QElapsedTimer clock;
  clock.start();
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.beginEditBlock();
  for (bool late = false; !rest_.empty() && !late; late = clock.elapsed() >= longest.count()) appendPiece(end);
  if (rest_.empty()) finish(end);
  end.endEditBlock();
  putCursor(anchor, position);
}

/// An insertion takes with it what the user has at the end of the text so far.
void TextView::putCursor(int anchor, int position) {
  QTextCursor cursor = textCursor();
  if (cursor.anchor() == anchor && cursor.position() == position) return;
  const int line = verticalScrollBar()->value();
  cursor.setPosition(anchor);
  cursor.setPosition(position, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  verticalScrollBar()->setValue(line);
}

void TextView::appendPiece(QTextCursor& end) {
  const std::string_view piece = firstPiece(rest_);
  rest_.remove_prefix(piece.size());
  if (broken_) {
    end.insertBlock();
    end.block().setUserState(Continued);
  }
  QString text = harmlessText(piece);
  if (blockCount() > UnsharedBlocks) joinLines(text, blockCount() / BlocksForALength);
  end.insertText(text);
  broken_ = !isEnded(piece);
}

void TextView::finish(QTextCursor& end) {
  slices_.stop();
  if (notShown_ == 0) return;
  const QString size = QLocale::c().formattedDataSize(static_cast<qint64>(notShown_));
  end.insertBlock();
  end.insertText(QStringLiteral("[%1 more are not shown]").arg(size));
}

QMimeData* TextView::createMimeDataFromSelection() const {
  const int begin = textCursor().selectionStart();
  const int end = textCursor().selectionEnd();
  QString text;
  text.reserve(end - begin);
  for (QTextBlock block = document()->findBlock(begin); block.isValid() && block.position() <= end;
       block = block.next()) {
    const int from = std::max(begin - block.position(), 0);
    if (block.position() > begin && block.userState() != Continued) text += u'\n';
    text += block.text().mid(from, end - block.position() - from);
  }
  text.replace(QChar::LineSeparator, u'\n');
  auto* copied = new QMimeData;
  copied->setText(text);
  return copied;
}

void TextView::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  auto* copying = menu->addAction("&Copy", this, &TextView::copy);
  copying->setShortcut(QKeySequence::Copy);
  copying->setEnabled(textCursor().hasSelection());
  menu->addAction("Select &All", this, &TextView::selectAll)->setShortcut(QKeySequence::SelectAll);
  menu->popup(event->globalPos());
}

void TextView::keyPressEvent(QKeyEvent* event) {
  if (wantsAll(*event)) loadRest();
  QPlainTextEdit::keyPressEvent(event);
}

void TextView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != slices_.timerId()) return QPlainTextEdit::timerEvent(event);
  load(slice);
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
