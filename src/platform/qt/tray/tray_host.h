#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>

#include "platform/controls/property.h"

namespace velmora {

/// Looks out for the desktop's tray, which may come long after the program, and go and come back. Qt asks for it once
/// in a process and keeps the answer, so nobody may touch a QSystemTrayIcon before a tray is `Present`.
class TrayHost : public QObject {
 public:
  /// How a tray talks to its icons: each is a small window in it, or an object on the session bus.
  enum class Kind { None, Embedding, Notifier };

  TrayHost();

  Property<bool> Present = false;

  /// Of the first tray that was there, and the only kind that counts from then on, as it does for Qt.
  Kind kind() const { return kind_; }

 private:
  void watchNotifier();
  void askNotifier();
  void watchEmbedding();
  void decide();

  Kind kind_ = Kind::None;
  QTimer ask_;
  bool answered_ = false;  ///< the session bus has said whether there is a notifier
  bool notifier_ = false;
  bool embedding_ = false;
};

}  // namespace velmora
