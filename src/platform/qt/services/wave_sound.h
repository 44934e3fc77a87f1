#pragma once

#include <QAudioFormat>
#include <QByteArray>
#include <QByteArrayView>
#include <chrono>
#include <optional>

namespace velmora {

/// A sound that is not compressed.
struct WaveSound {
  QAudioFormat format;
  QByteArray samples;  ///< whole frames

  std::chrono::milliseconds length() const;
};

/// Takes a .wav file apart. A file that ends early gives what is there of its sound, whatever lengths it claims;
/// nothing where no sound is in it, or one that is stored in an unusual way. Of a long sound it gives the first half
/// minute.
std::optional<WaveSound> waveSound(QByteArrayView file);

}  // namespace velmora
