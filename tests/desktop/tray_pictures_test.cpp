#include <gtest/gtest.h>

#include <QImage>

#include "app/tray.h"
#include "platform/qt/strings.h"
#include "platform/qt/tray/stacked_icon.h"
#include "platform/qt/widgets/icons.h"

namespace velmora {
namespace {

TEST(TrayPictures, EveryNumberAndEverySwitchHasOne) {
  const ImageList icons("imlTrayIcons");
  for (int number = 1; number <= 40; ++number) EXPECT_FALSE(icons.icon(std::to_string(number)).isNull()) << number;
  const Tray tray;
  const ImageList entries(tray.mnuTrayPopMenu.ImageList);
  for (const auto* key : {"AutoCheckOff", "SoundOff"}) EXPECT_FALSE(entries.icon(key).isNull()) << key;
}

TEST(TrayPictures, AreSharpInEverySize) {
  const ImageList icons("imlTrayIcons");
  const QIcon icon = stackedIcon({icons.icon("1"), icons.icon("40"), icons.icon("11")});
  for (const int size : {16, 22, 37, 64, 200}) {
    const QImage image = icon.pixmap(QSize(size, size), 1.0).toImage();
    ASSERT_EQ(image.size(), QSize(size, size));
    const auto at = [&](double x, double y) { return image.pixelColor(int(x * size / 16), int(y * size / 16)).name(); };
    EXPECT_EQ(at(0.1, 8), "#9cc6ff") << "the rim, " << size;
    EXPECT_EQ(at(8, 8), "#ffffff") << "the stem of the 1, " << size;
    EXPECT_EQ(at(6, 8), "#1d5fc4") << "the ground right beside it, " << size;
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "what is round, " << size;
  }
}

}  // namespace
}  // namespace velmora
