#pragma once

#include <QTreeView>
#include <vector>

#include "platform/controls/list_view.h"
#include "platform/qt/widgets/icons.h"

namespace velmora {

struct ToolTip;

/// Shows a list of rows and turns what the user does with it into the control's events. Rows are read as they are
/// painted, so that thousands of them cost nothing.
class MessageListView : public QTreeView {
 public:
  /// `list` and `tip` outlive the view.
  MessageListView(ListView& list, ToolTip& tip, const ImageList& rowPictures, const ImageList& headerPictures,
                  QWidget* parent);

  /// How wide a text is in a cell.
  int textWidth(const std::string& text, bool bold) const;

  /// Where on the screen the menu was last asked for: by a key, that is at the row that has the focus.
  QPoint menuPlace() const { return menuPlace_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void describe();
  void followWidths();
  void followHeader();
  void measureMargins();
  void tellPointer(const QPoint& position);
  std::vector<std::int32_t> selectedRows() const;
  void takeSelection();
  void showSelection();
  void choose(bool onRow);
  QPoint placeAtRow() const;

  ListView& list_;
  ToolTip& tip_;
  QPoint menuPlace_;
  QPoint pressedAt_;
  bool pointerOnRow_ = false;
  bool choosing_ = false;  ///< a button or a key is down: the choice is made at its end
};

}  // namespace velmora
