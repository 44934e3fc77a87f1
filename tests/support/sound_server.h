#pragma once

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>

namespace velmora::test {

/// A sound server of its own with one device that nobody hears, and a recording of what that device plays. Programs'
/// sounds go to it from the first on, and to no other. It ends with this object.
class SoundServer {
 public:
  SoundServer();
  ~SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;

  static constexpr int rate = 22'050;

  /// All that was recorded, samples of 16 bits.
  QByteArray recording();

  /// What has been played by now is in the recording when this returns.
  void catchUp();

  void end();

 private:
  QTemporaryDir folder_{"/tmp/velmora-XXXXXX"};  // right under /tmp: its socket's name must be short
  QProcess server_;
  QProcess recorder_;
  QByteArray recording_;
};

}  // namespace velmora::test
