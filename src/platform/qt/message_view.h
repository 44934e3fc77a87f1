#pragma once

#include <QTreeView>

#include "platform/controls/list_view.h"
#include "platform/qt/icons.h"

namespace velmora {

/// Shows a list of rows and turns what the user does with it into the control's events. Rows are read as they are
/// painted, so that thousands of them cost nothing.
class MessageView : public QTreeView {
 public:
  /// `list` outlives the view.
  MessageView(ListView& list, const ImageList& rowPictures, const ImageList& headerPictures, QWidget* parent);

 protected:
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void followWidths();
  void takeSelection();
  void showSelection();
  void choose(bool onRow);

  ListView& list_;
};

}  // namespace velmora
