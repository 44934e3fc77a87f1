#include "platform/qt/tray/tray_view.h"

#include <QWidget>
#include <string>
#include <vector>

#include "app/tray.h"
#include "platform/qt/services/wayland.h"
#include "platform/qt/strings.h"
#include "platform/qt/tray/stacked_icon.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/tips.h"

namespace velmora {

TrayView::TrayView(Tray& tray, QWidget& window) : tray_(tray), window_(window) {
  menu_.setObjectName("mnuTrayPopMenu");
  bind(tray_.mnuTrayPopMenu, menu_);
  followTray();
}

void TrayView::followTray() {
  TrayIcon& data = tray_.TrayData;
  data.Picture.watch([this, images = ImageList("imlTrayIcons")](const std::vector<std::int16_t>& numbers) {
    if (numbers.empty()) return;
    std::vector<QIcon> layers;
    layers.reserve(numbers.size());
    for (const auto number : numbers) layers.push_back(images.icon(std::to_string(number)));
    window_.setWindowIcon(stackedIcon(std::move(layers)));
    if (icon_) icon_->setIcon(window_.windowIcon());
  });
  data.Tip.watch([this](const std::string&) { showTip(); });
  data.Visible.watch([this](bool) { dock(); });
  host_.Present.watch([this](bool) { dock(); });
}

/// Trays on the bus open the menu themselves, and many tell of nothing but a chosen entry. To others no menu is given:
/// Qt would open it beside the one that the program opens.
void TrayView::makeIcon() {
  icon_ = std::make_unique<QSystemTrayIcon>(window_.windowIcon());
  if (host_.kind() == TrayHost::Kind::Notifier) icon_->setContextMenu(&menu_);
  connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
    const TrayIcon& data = tray_.TrayData;
    // A press soon after another one, between which the window may have come and gone, is told as a double click.
    const bool left = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
    if (left && data.LeftButtonDown) data.LeftButtonDown();
    if (reason == QSystemTrayIcon::Context && data.RightButtonUp) {
      letMenuFloat();
      data.RightButtonUp();
    }
  });
  showTip();
}

/// A menu that belongs to no window that shows is a window itself on Wayland, where one of a fixed size floats.
void TrayView::letMenuFloat() {
  if (onWayland()) menu_.setFixedSize(menu_.sizeHint());
}

/// Qt takes the tip of its own window in a tray for markup where it looks like some.
void TrayView::showTip() {
  if (!icon_) return;
  const std::string& tip = tray_.TrayData.Tip;
  const bool isOwnWindow = host_.kind() == TrayHost::Kind::Embedding;
  icon_->setToolTip(isOwnWindow ? plainTip(tip) : qt(tip).replace("\r\n", "\n"));
}

void TrayView::dock() {
  // Made as soon as there is a tray, wanted or not: it is now that Qt decides on the kind.
  if (host_.Present && !icon_) makeIcon();
  if (icon_) icon_->setVisible(host_.Present && tray_.TrayData.Visible);
  tray_.TrayData.TrayDrawsMenu = host_.Present && host_.kind() == TrayHost::Kind::Notifier;
  tray_.TrayData.TrayPresent = host_.Present.get();
}

}  // namespace velmora
