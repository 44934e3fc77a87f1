#pragma once

#include <QVariantMap>
#include <functional>
#include <memory>

#include "app/decisions/command_line.h"

namespace velmora {

/// What the desktop hands a program that it starts, so that its window may come to the front and the pointer stops
/// telling that something starts: the data of an org.freedesktop.Application call. To be asked for before anything of
/// the library's is made, which takes it away.
QVariantMap startUpNotes();

/// Tells the desktop that the start which the notes tell of is over.
void endStartUpNotice(const QVariantMap& notes);

/// The program that runs, as the session's bus knows it (org.freedesktop.Application of the Desktop Entry
/// Specification): it can be told to show itself, and to do what its entry in the desktop's menu offers.
class RunningInstance {
 public:
  using Carry = std::function<void(Command)>;

  /// Each command comes out of the event loop, after whoever sent it has been answered. Without a bus none comes. To be
  /// made once the window has been shown, for which the desktop's notes of this start count until then.
  explicit RunningInstance(Carry carry);
  ~RunningInstance();
  RunningInstance(const RunningInstance&) = delete;
  RunningInstance& operator=(const RunningInstance&) = delete;

  /// Tells the one that runs on the same settings, which may just be starting; returns whether it could be told.
  static bool tell(Command command, const QVariantMap& notes);

 private:
  class Object;
  std::unique_ptr<Object> object_;
};

}  // namespace velmora
