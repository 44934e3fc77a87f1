#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/qt/widgets/coloured_menu.h"

namespace velmora {
namespace {

double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The best contrast that a point of the entry has to its ground, which is one colour from top to bottom.
double contrastIn(const QImage& picture, const QRect& entry) {
  const QColor ground = picture.pixelColor(entry.left() + 2, entry.center().y());
  double best = 0;
  for (int y = entry.top() + 1; y < entry.bottom(); ++y) {
    EXPECT_EQ(picture.pixelColor(entry.left() + 2, y), ground);
    for (int x = entry.left() + 2; x < entry.right(); ++x) {
      const double one = luminance(picture.pixelColor(x, y)) + 0.05;
      const double other = luminance(ground) + 0.05;
      best = std::max(best, std::max(one, other) / std::min(one, other));
    }
  }
  return best;
}

TEST(ColouredMenus, CanBeReadInAnyColours) {
  std::vector<MenuColours> triples = {{0xFFD7AE, 0xFFFFFF, 0xFF8000}, {0xEAE5E3, 0xFFFFFF, 0xBEA3A4},
                                      {0xB8E7E0, 0xD5FFFF, 0x7FB2A3}, {0xF0CAA6, 0xFFFFFF, 0x6A240A},
                                      {0xDCB4B4, 0xFFFFFF, 0x984545}, {0x99B1BF, 0xEFEFEF, 0x577C91},
                                      {-1, 0x7FFFFFFF, -2147483647},  {0x757575, 0x777777, 0x797979}};
  for (int i = 0; i < 0x1000; i += 0x111) triples.push_back({i * 0x1001, 0xFFFFFF - i * 0x7FF, i * 0x0F0F});
  ColouredMenu menu;
  for (const char* text : {"&Preview", "Re&ply", "Off", "&MMMM", "&Open", "&Help", "&Quit"}) menu.addAction(text);
  menu.actions()[2]->setEnabled(false);
  menu.popup(QPoint());
  menu.setActiveAction(menu.actions()[3]);
  const QImage plain = menu.grab().toImage();
  for (const MenuColours& colours : triples) {
    menu.setColours(colours);
    menu.setPalette(QPalette(Qt::white));
    const QImage picture = menu.grab().toImage();
    for (auto* action : menu.actions()) {
      EXPECT_GE(contrastIn(picture, menu.actionGeometry(action)), action->isEnabled() ? 4.5 : 1.8)
          << std::hex << colours.top << ' ' << colours.middle << ' ' << colours.bottom << action->text().toStdString();
    }
    menu.setPalette(QPalette(QColor(40, 40, 40)));
    EXPECT_EQ(menu.grab().toImage(), picture);
  }
  menu.setColours({{0, 0x808080, 0xFFFFFF}});
  menu.setActiveAction(nullptr);
  const QImage rising = menu.grab().toImage();
  int before = -1;
  for (auto* action : menu.actions()) {
    const int grey = rising.pixelColor(3, menu.actionGeometry(action).center().y()).red();
    EXPECT_GT(grey, std::exchange(before, grey));
  }
  menu.setColours({});
  menu.setPalette(QPalette());
  menu.setActiveAction(menu.actions()[3]);
  EXPECT_EQ(menu.grab().toImage(), plain);
}

}  // namespace
}  // namespace velmora
