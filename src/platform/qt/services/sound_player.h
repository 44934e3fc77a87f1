#pragma once

#include <QString>

class QAudioSink;

namespace velmora {

/// Plays sounds, one at a time.
class SoundPlayer {
 public:
  /// Plays a .wav file to its end, or half a minute of it, while the event loop turns. A call from within that ends the
  /// sound that is on. Returns at once where nothing can be heard, and when the program ends; whether it was heard.
  bool play(const QString& path);

  /// Ends the sound that is on, if one is.
  void stop();

 private:
  QAudioSink* playing_ = nullptr;  // of the call that waits, if any
};

}  // namespace velmora
