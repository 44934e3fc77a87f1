#pragma once

#include "platform/qt/notice_view.h"

namespace velmora {

struct MessageWindow;

/// The Auto Check Message on the screen.
class CheckMessageView : public NoticeView {
 public:
  /// `window` outlives the view.
  explicit CheckMessageView(MessageWindow& window);

 protected:
  void prepare() override;

 private:
  QWidget* makeFrame();
  QWidget* makeFoot();

  MessageWindow& window_;
  QScrollArea* lines_ = nullptr;
};

}  // namespace velmora
