#pragma once

#include <QColor>
#include <QMenu>
#include <optional>

#include "platform/controls/menu.h"

class QStyleOptionMenuItem;

namespace velmora {

/// The colour that a menu of three colours has at the place `at`, from 0 to `height`.
QColor menuColour(const MenuColours& colours, int at, int height);

/// A menu that may have colours of its own, whatever the desktop's are: they go from its top to its bottom in steps,
/// of which each entry is one, and each text is black or white, whichever can be read better there.
class ColouredMenu : public QMenu {
 public:
  using QMenu::QMenu;

  /// None: it looks as the desktop's menus do.
  void setColours(const std::optional<MenuColours>& colours);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect entriesPlace() const;
  QRect clearOfScrollers(const QRect& entries) const;
  void paintEntry(QPainter& painter, const QAction& action, const QRect& entries) const;
  void paintContent(QPainter& painter, const QStyleOptionMenuItem& entry, const QColor& ink) const;

  std::optional<MenuColours> colours_;
};

}  // namespace velmora
