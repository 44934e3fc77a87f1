#pragma once

#include "platform/qt/form_view.h"

class QScrollArea;
class QTabBar;

namespace velmora {

struct RuleReportWindow;

/// The Rule Report on the screen. It belongs to no other window, as it also comes up while the main one is hidden.
class RuleReportView : public FormView {
 public:
  /// `window` outlives the view.
  explicit RuleReportView(RuleReportWindow& window);

 protected:
  void arrange() override;

 private:
  QWidget* makeHead();
  QScrollArea* makeReport();
  void makeRoomForLines();

  RuleReportWindow& window_;
  QTabBar* tabs_ = nullptr;
  QScrollArea* report_ = nullptr;
};

}  // namespace velmora
