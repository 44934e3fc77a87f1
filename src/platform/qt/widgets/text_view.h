#pragma once

#include <QBasicTimer>
#include <QPlainTextEdit>
#include <chrono>
#include <cstddef>
#include <string_view>

namespace velmora {

/// Shows one text of any length to read, to select and to copy, harmless as `harmlessText` makes it. The first
/// screenfuls stand at once and the rest comes while the event loop turns; what asks for the whole text waits for it.
/// Lines too long for one paragraph are broken for the eye, which no copy shows.
class TextView : public QPlainTextEdit {
 public:
  /// Qt counts the characters of a document in an int, and each takes several bytes.
  static constexpr std::size_t MostBytes = 256'000'000;

  /// Of what lies behind `mostBytes` a last line says how much it is.
  explicit TextView(QWidget* parent = nullptr, std::size_t mostBytes = MostBytes);

  /// Shows UTF-8 from its beginning. The bytes stay valid and unchanged until the next call or the view's end.
  void showText(std::string_view text);

  /// Brings in at once what is still to come.
  void loadRest();

  /// All, with what is still to come.
  void selectAll();

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void load(std::chrono::milliseconds longest);
  void appendPiece(QTextCursor& end);
  void finish(QTextCursor& end);
  void putCursor(int anchor, int position);

  std::size_t mostBytes_;
  std::string_view rest_;
  std::size_t notShown_ = 0;
  bool broken_ = false;  // the last line so far goes on
  QBasicTimer slices_;
};

}  // namespace velmora
