#pragma once

#include "platform/qt/windows/form_view.h"

class QLabel;
class QScrollArea;

namespace velmora {

struct Label;

/// A small window that tells what a check found and closes by itself. It stands in a corner of the screen, where it
/// hides the least, and belongs to no other window, as it also comes up while the main one is hidden.
class NoticeView : public FormView {
 protected:
  /// `form` outlives the view. `corner` holds two of Qt's edges.
  NoticeView(Form& form, Qt::Edges corner);

  /// The seconds that are left.
  QLabel* makeCountDown(Label& label, const char* name, const char* tip);

  /// Where the lines about accounts stand. What it has no room for can be scrolled to.
  QScrollArea* makeLines(const char* name, QWidget* content);

  /// Gives it the height of so many lines, in whatever font and scaling, or that of `least` pixels; but no more
  /// than half the screen.
  static void makeRoom(QScrollArea& area, int lines, int least);

  void arrange() override;

  /// The window is about to be shown: sets its sizes, and gives the focus to what no key that the user goes on typing
  /// could set off.
  virtual void prepare() = 0;

 private:
  Qt::Edges corner_;
};

}  // namespace velmora
