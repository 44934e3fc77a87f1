#pragma once

#include "platform/qt/windows/notice_view.h"

class QTabBar;

namespace velmora {

struct RuleReportWindow;

/// The Rule Report on the screen.
class RuleReportView : public NoticeView {
 public:
  /// `window` outlives the view.
  explicit RuleReportView(RuleReportWindow& window);

 protected:
  void prepare() override;

 private:
  QWidget* makeHead();
  QScrollArea* makeReport();

  RuleReportWindow& window_;
  QTabBar* tabs_ = nullptr;
  QScrollArea* report_ = nullptr;
};

}  // namespace velmora
