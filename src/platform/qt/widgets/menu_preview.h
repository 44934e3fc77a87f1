#pragma once

#include <QWidget>
#include <functional>

#include "platform/controls/menu.h"

namespace velmora {

/// Shows what a menu of three colours looks like, without being one.
class MenuPreview : public QWidget {
 public:
  /// `colours` answers for as long as the widget lives. It is asked each time that the widget is painted.
  MenuPreview(std::function<MenuColours()> colours, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::function<MenuColours()> colours_;
};

}  // namespace velmora
