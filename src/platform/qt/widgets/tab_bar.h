#pragma once

#include <QTabBar>
#include <QTimer>
#include <cstdint>
#include <string_view>

#include "platform/qt/widgets/icons.h"

namespace velmora {

class TabStrip;

/// A tab strip on the screen. Where the tabs have no room side by side, arrow buttons scroll them; a tab being dragged
/// scrolls them too where it rests on such a button.
class TabBar : public QTabBar {
 public:
  /// `strip` outlives the bar.
  TabBar(TabStrip& strip, const char* name, const char* accessibleName, QWidget* parent,
         std::string_view imageList = {});

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void follow();
  void followDrag();
  void addMissingTabs();
  void bindTab(int index);
  void takeSelection();
  void noteMeasures();
  void letGo();
  void scrollUnderDrag();
  std::int32_t positionOf(const QPoint& at) const;

  TabStrip& strip_;
  ImageList images_;
  QTimer scroll_;
};

}  // namespace velmora
