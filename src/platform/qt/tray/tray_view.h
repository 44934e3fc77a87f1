#pragma once

#include <QSystemTrayIcon>
#include <memory>

#include "platform/qt/tray/tray_host.h"
#include "platform/qt/widgets/coloured_menu.h"

class QWidget;

namespace velmora {

struct Tray;

/// The program's icon and menu in the desktop's tray, whenever there is one.
class TrayView : public QObject {
 public:
  /// `tray` and `window` outlive the view; the window bears the same icon.
  TrayView(Tray& tray, QWidget& window);

 private:
  void followTray();
  void makeIcon();
  void letMenuFloat();
  void showTip();
  void dock();

  Tray& tray_;
  QWidget& window_;
  ColouredMenu menu_;
  TrayHost host_;
  std::unique_ptr<QSystemTrayIcon> icon_;  ///< none until a tray is there for the first time
};

}  // namespace velmora
