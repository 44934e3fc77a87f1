#include "platform/qt/services/page_painter.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cmath>
#include <ctime>

#include "platform/qt/strings.h"
#include "support/print_service.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::outputOf;
using testing::HasSubstr;
using testing::Not;

constexpr Paper paper{11906, 16838, 360, 360, 360, 360};
constexpr PrintArea area{2000, 1000, 8000, 14000};

std::string times(qsizetype count, const QByteArray& part) { return part.repeated(count).toStdString(); }

PrintText textOf(std::vector<PrintRun> runs, const PrintArea& where = area) {
  return {.title = "A title", .font = "DejaVu Sans", .points = 10, .runs = std::move(runs), .area = where};
}

/// How high a line is, in whole twips as the layout has them.
int lineHeight() {
  QBuffer nowhere;
  nowhere.open(QIODevice::WriteOnly);
  QPdfWriter writer(&nowhere);
  writer.setResolution(1440);
  const QFontMetricsF metrics(QFont("DejaVu Sans", 10), &writer);
  return static_cast<int>(std::ceil(metrics.lineSpacing()));
}

class Pages : public testing::Test {
 protected:
  /// Paints a text and returns how many pages it has.
  int paint(PrintText text) {
    PagePainter painter(std::move(text), paper);
    while (!painter.paint(25ms)) {
    }
    QFile file(document_);
    const QByteArray content = painter.takeDocument();
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    EXPECT_EQ(painter.percent(), 100);
    return painter.pages();
  }

  std::string read(const QString& program, const QStringList& options = {}) const {
    return outputOf(program, program == "pdftotext" ? options + QStringList{document_, "-"} : QStringList{document_})
        .toStdString();
  }

  /// Left, top, right and bottom of each word, in twips.
  std::vector<QRectF> words() const {
    std::vector<QRectF> found;
    static const QRegularExpression word(R"_(<word xMin="(.+)" yMin="(.+)" xMax="(.+)" yMax="(.+)">)_");
    for (const auto& each : word.globalMatch(qt(read("pdftotext", {"-bbox"})))) {
      const auto side = [&each](int number) { return each.captured(number).toDouble() * 20; };
      found.emplace_back(QPointF(side(1), side(2)), QPointF(side(3), side(4)));
    }
    return found;
  }

  QTemporaryDir folder_;
  QString document_ = folder_.filePath("document.pdf");
};

TEST_F(Pages, AreFilledLineByLine) {
  const int height = lineHeight();
  const PrintArea tenLines{1000, 1000, 8000, 10 * height};
  const struct {
    std::string text;
    PrintArea where;
    int pages;
  } cases[] = {{"", tenLines, 1},
               {"\r\n \r\n\n\n", tenLines, 1},
               {times(10, "x\r\n"), tenLines, 1},
               {times(10, "x\n") + " \t\n\n\n\n", tenLines, 1},
               {times(11, "x\n"), tenLines, 2},
               {times(10, "\n") + "x", tenLines, 2},
               {times(20, "x\v") + "x", tenLines, 3},
               {"abc", {1000, 1000, 1, 1}, 3},
               {"abc", {1000, 1000, -1, -1}, 3}};
  for (const auto& [text, where, pages] : cases) {
    EXPECT_EQ(paint(textOf({{text}}, where)), pages) << text.substr(0, 8);
    EXPECT_THAT(read("pdfinfo"), HasSubstr("Pages:           " + std::to_string(pages) + "\n"));
  }
  std::string lines;
  for (int i = 1; i <= 1000; ++i) lines += "line " + std::to_string(i) + (i % 10 == 0 ? "\n\f" : "\n");
  const std::string text = qt(lines).remove(u'\f').toStdString();
  EXPECT_EQ(paint(textOf({{text}}, tenLines)), 100);
  EXPECT_EQ(read("pdftotext", {"-layout"}), lines);
}

TEST_F(Pages, HaveTheTextHarmlessAndBoldWhereItIs) {
  const struct {
    std::vector<PrintRun> runs;
    std::string read;
    std::vector<const char*> fonts;
  } cases[] = {{{{"plain"}}, "plain\n\f", {"DejaVuSans "}},
               {{{"From: ", true}, {"Ann\r"}, {"\nTo: ", true}, {"", true}, {"Bob"}},
                "From: Ann\nTo: Bob\n\f",
                {"DejaVuSans ", "DejaVuSans-Bold "}},
               {{{"all"}, {"", true}, {" plain"}}, "all plain\n\f", {"DejaVuSans "}},
               {{{"all ", true}, {"bold", true}}, "all bold\n\f", {"DejaVuSans-Bold "}},
               {{{"a\u202Ec<b>\x80&amp;"}}, "a\uFFFDc<b>\uFFFD&amp;\n\f", {"DejaVuSans "}}};
  for (const auto& [runs, text, fonts] : cases) {
    paint(textOf(runs));
    EXPECT_EQ(read("pdftotext", {"-layout"}), text);
    const std::string used = read("pdffonts");
    EXPECT_EQ(std::count(used.begin(), used.end(), '\n'), static_cast<int>(fonts.size()) + 2) << used;
    for (const auto* font : fonts) EXPECT_THAT(used, HasSubstr(font)) << text;
  }
  for (const auto* foreign : {"שלום עולם", "مرحبا", "日本語", "e\u0301\u0301\u0301", "😀👩‍👩‍👧"}) {
    paint(textOf({{foreign}}));
    EXPECT_THAT(read("pdftotext"), Not(testing::IsEmpty())) << foreign;
  }
  EXPECT_THAT(read("pdfinfo"), HasSubstr("Title:           A title\n"));
}

/// Left, top, right and bottom in twips, to within a point.
TEST_F(Pages, HaveTheirTextWithinTheArea) {
  constexpr double point = 20;
  constexpr double right = area.left + area.width;
  paint(textOf({{"left\n\ttab\n" + times(999, "word ") + times(9999, "x")}}));
  const auto found = words();
  ASSERT_GT(found.size(), 1010U) << "the long word is broken";
  EXPECT_NEAR(found[0].left(), area.left, point);
  EXPECT_NEAR(found[0].top(), area.top, point);
  EXPECT_NEAR(found[1].left(), area.left + 720, point);
  for (const QRectF& word : found) {
    EXPECT_GT(word.left(), area.left - point);
    EXPECT_LT(word.right(), right + point);
    EXPECT_LT(word.bottom(), area.top + area.height + point);
  }
  paint(textOf({{"שלום"}}));
  const auto letters = words();
  EXPECT_TRUE(std::any_of(letters.begin(), letters.end(), [](const QRectF& letter) {
    return std::abs(letter.right() - right) < point;
  })) << "a paragraph stands where its writing begins";
  EXPECT_THAT(read("pdfinfo"), HasSubstr("595 x 842 pts"));
}

TEST_F(Pages, TakeLittleTimeAtOnceWhateverTheTextIs) {
  for (const auto* part : {"some words ", "x", "x\n", "\n", "\t", "\v", "e\u0301", "\u0301", "日本語", "a\u05D0",
                           "مرحبا", "😀👩‍👩‍👧"}) {
    paint(textOf({{part}}));  // fonts are looked for once
    PagePainter painter(textOf({{times(2'000'000, part) + "x"}}), paper);
    bool complete = false;
    for (int slice = 0; slice < 20 && !complete; ++slice) {
      const std::clock_t begun = std::clock();
      complete = painter.paint(5ms);
      EXPECT_LT(std::clock() - begun, CLOCKS_PER_SEC / 5) << part;
    }
    EXPECT_FALSE(complete) << part;
  }
}

}  // namespace
}  // namespace velmora
