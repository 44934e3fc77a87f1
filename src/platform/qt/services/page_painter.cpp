#include "platform/qt/services/page_painter.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPageSize>
#include <QScreen>
#include <QTextOption>
#include <algorithm>
#include <utility>

#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

constexpr int TwipsOfAnInch = 1440;
constexpr qreal TwipsOfAPoint = 20;
constexpr qreal InchesOfATab = 0.5;

QPageSize sheet(const Paper& paper) {
  return QPageSize(QSizeF(paper.width, paper.height) / TwipsOfAPoint, QPageSize::Point, {}, QPageSize::ExactMatch);
}

QFont fontFor(const PrintText& text) {
  constexpr int smallest = 1;
  constexpr int largest = 500;
  QFont font(qt(text.font), std::clamp(text.points, smallest, largest));
  font.setStyleHint(QFont::SansSerif);
  return font;
}

/// A paragraph stands at the side where its writing begins.
QTextOption optionFor(const QString& text) {
  QTextOption option(text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
  option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  // The layout takes them for the screen's dots, and a paper's are finer.
  constexpr qreal usualDots = 96;
  const QScreen* screen = QGuiApplication::primaryScreen();
  option.setTabStopDistance(InchesOfATab * (screen == nullptr ? usualDots : screen->logicalDotsPerInchY()));
  return option;
}

}  // namespace

PagePainter::PagePainter(PrintText text, const Paper& paper)
    : paragraphs_(std::move(text.runs)), area_(text.area), font_(fontFor(text)), y_(area_.top) {
  document_.open(QIODevice::WriteOnly);
  writer_.emplace(&document_);
  writer_->setResolution(TwipsOfAnInch);
  writer_->setPageSize(sheet(paper));
  writer_->setPageMargins({});
  writer_->setTitle(harmlessLine(text.title));
  writer_->setCreator("Velmora");
  painter_.begin(&*writer_);
}

bool PagePainter::paint(std::chrono::milliseconds longest) {
  QElapsedTimer clock;
  clock.start();
  while (writer_ && !clock.hasExpired(longest.count())) step();
  return !writer_;
}

void PagePainter::step() {
  if (!endFound_) {
    endFound_ = paragraphs_.findEnd();
  } else if (layout_) {
    paintLine();
  } else if (!paragraphs_.atEnd()) {
    layOut();
  } else {
    painter_.end();
    writer_.reset();
  }
}

void PagePainter::layOut() {
  const PrintParagraph paragraph = paragraphs_.next();
  layout_ = std::make_unique<QTextLayout>(paragraph.text, font_, &*writer_);
  layout_->setFormats(paragraph.bold);
  layout_->setTextOption(optionFor(paragraph.text));
  layout_->beginLayout();
  for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
    line.setLeadingIncluded(true);
    line.setLineWidth(std::max(area_.width, 1));
  }
  layout_->endLayout();
  line_ = 0;
}

/// A page has one line at least, however small the area is.
void PagePainter::paintLine() {
  QTextLine line = layout_->lineAt(line_);
  if (y_ > area_.top && y_ + line.height() > area_.top + area_.height) {
    writer_->newPage();
    ++pages_;
    y_ = area_.top;
  }
  line.setPosition({});
  line.draw(&painter_, QPointF(area_.left, y_));
  y_ += line.height();
  if (++line_ >= layout_->lineCount()) layout_.reset();
}

QByteArray PagePainter::takeDocument() { return std::exchange(document_.buffer(), {}); }

}  // namespace velmora
