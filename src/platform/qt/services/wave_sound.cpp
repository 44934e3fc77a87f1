#include "platform/qt/services/wave_sound.h"

#include <QtEndian>
#include <algorithm>
#include <array>

namespace velmora {

namespace {

/// A check ends when its sound does, and a file of a few megabytes may hold more than half an hour.
constexpr std::chrono::microseconds longestSound = std::chrono::seconds(30);

constexpr qsizetype riffHeaderSize = 12;
constexpr qsizetype chunkHeaderSize = 8;

/// What stands in the file's first chunk of this name.
QByteArrayView chunk(QByteArrayView file, QByteArrayView name) {
  QByteArrayView rest = file.sliced(std::min(riffHeaderSize, file.size()));
  while (rest.size() >= chunkHeaderSize) {
    const qsizetype claimed = qFromLittleEndian<quint32>(rest.data() + 4);
    const QByteArrayView body = rest.sliced(chunkHeaderSize);
    if (rest.first(4) == name) return body.first(std::min(claimed, body.size()));
    rest = body.sliced(std::min(claimed + claimed % 2, body.size()));
  }
  return {};
}

quint16 number(QByteArrayView bytes, qsizetype position) {
  return qFromLittleEndian<quint16>(bytes.sliced(position, 2).data());
}

/// How samples are stored in the file, and as what they are played.
struct Storing {
  quint16 kind;
  quint16 bits;
  QAudioFormat::SampleFormat played;
};

constexpr quint16 integers = 1;
constexpr quint16 floats = 3;
constexpr quint16 seeFurther = 0xFFFE;  // the kind stands further down
constexpr std::array storings{
    Storing{integers, 8, QAudioFormat::UInt8},  Storing{integers, 16, QAudioFormat::Int16},
    Storing{integers, 24, QAudioFormat::Int16}, Storing{integers, 32, QAudioFormat::Int32},
    Storing{floats, 32, QAudioFormat::Float},
};

/// The upper 16 bits of samples of 24.
QByteArray shortened(QByteArrayView samples) {
  QByteArray upper;
  upper.reserve(samples.size() / 3 * 2);
  for (qsizetype i = 0; i + 3 <= samples.size(); i += 3) upper.append(samples.data() + i + 1, 2);
  return upper;
}

}  // namespace

std::chrono::milliseconds WaveSound::length() const {
  return std::chrono::milliseconds(format.durationForBytes(static_cast<qint32>(samples.size())) / 1000);
}

std::optional<WaveSound> waveSound(QByteArrayView file) {
  if (!file.startsWith("RIFF")) return std::nullopt;
  const QByteArrayView description = chunk(file, "fmt ");
  if (description.size() < 16) return std::nullopt;
  quint16 kind = number(description, 0);
  if (kind == seeFurther && description.size() >= 26) kind = number(description, 24);
  const auto channels = number(description, 2);
  const auto rate = qFromLittleEndian<quint32>(description.data() + 4);
  const auto bits = number(description, 14);
  const auto* storing = std::find_if(storings.begin(), storings.end(), [kind, bits](const Storing& each) {
    return each.kind == kind && each.bits == bits;
  });
  if (storing == storings.end() || channels < 1 || channels > 2 || rate < 8000 || rate > 192'000) {
    return std::nullopt;
  }

  WaveSound sound;
  sound.format.setSampleFormat(storing->played);
  sound.format.setChannelCount(channels);
  sound.format.setSampleRate(static_cast<int>(rate));
  const QByteArrayView samples = chunk(file, "data");
  sound.samples = bits == 24 ? shortened(samples) : samples.toByteArray();
  sound.samples.truncate(sound.format.bytesForDuration(longestSound.count()));
  sound.samples.chop(sound.samples.size() % (qsizetype{channels} * sound.format.bytesPerSample()));
  if (sound.samples.isEmpty()) return std::nullopt;
  return sound;
}

}  // namespace velmora
