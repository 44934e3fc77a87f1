#pragma once

#include "platform/qt/windows/notice_view.h"

namespace velmora {

struct CheckMessageWindow;

/// The Auto Check Message on the screen.
class CheckMessageView : public NoticeView {
 public:
  /// `window` outlives the view.
  explicit CheckMessageView(CheckMessageWindow& window);

 protected:
  void prepare() override;

 private:
  QWidget* makeFrame();
  QWidget* makeFoot();

  CheckMessageWindow& window_;
  QScrollArea* lines_ = nullptr;
};

}  // namespace velmora
