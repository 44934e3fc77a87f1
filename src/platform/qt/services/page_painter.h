#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/printing.h"
#include "platform/qt/services/print_paragraphs.h"

namespace velmora {

/// Lays a text out on pages and paints them into a PDF document in memory.
class PagePainter {
 public:
  PagePainter(PrintText text, const Paper& paper);

  /// Goes on for about that long, and says whether the document is complete.
  bool paint(std::chrono::milliseconds longest);

  std::int32_t percent() const { return paragraphs_.percent(); }
  std::int32_t pages() const { return pages_; }

  /// Takes the complete document away.
  QByteArray takeDocument();

 private:
  void step();
  void layOut();
  void paintLine();

  PrintParagraphs paragraphs_;
  PrintArea area_;
  QFont font_;
  QBuffer document_;
  std::optional<QPdfWriter> writer_;  ///< completes the document when it goes
  QPainter painter_;
  std::unique_ptr<QTextLayout> layout_;  ///< of the paragraph at work, if one is
  int line_ = 0;                         ///< of its lines, the next one
  qreal y_ = 0;
  std::int32_t pages_ = 1;
  bool endFound_ = false;
};

}  // namespace velmora
