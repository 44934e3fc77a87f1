#include "platform/qt/services/sound_player.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QMediaDevices>
#include <chrono>
#include <optional>

#include "platform/qt/services/waiting.h"
#include "platform/qt/services/wave_sound.h"
#include "platform/qt/services/whole_file.h"

namespace velmora {

namespace {

using namespace std::chrono_literals;

/// Bytes of the largest file that is played: a minute and a half of what a compact disc holds.
constexpr qint64 largestSoundFile = qint64{16} << 20U;

/// So much is handed on ahead: the program may be busy for a while without a gap in the sound.
constexpr std::chrono::microseconds ahead = 400ms;

/// Follows each sound. Qt reports the end when the last byte is handed on, and what the device has not played by then
/// is lost.
constexpr std::chrono::microseconds silence = 500ms;

/// What a device may take longer than the sound, for it has a clock of its own and needs time to start.
constexpr std::chrono::milliseconds patience = 2s;

qsizetype bytesFor(const QAudioFormat& format, std::chrono::microseconds time) {
  return format.bytesForDuration(time.count());
}

/// Samples of 8 bits have no sign: their middle is the silence.
QByteArray silenceIn(const QAudioFormat& format) {
  return {bytesFor(format, silence), format.sampleFormat() == QAudioFormat::UInt8 ? '\x80' : '\0'};
}

/// A sound server that is not there or that ends is none of the program's troubles; Qt would warn of it.
void keepQuietAboutServers() {
  static QtMessageHandler others = nullptr;
  if (others != nullptr) return;
  others = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.contains("PulseAudioService: ") && !text.contains("Stream error: ")) others(type, context, text);
  });
}

}  // namespace

// QSoundEffect would take less: but it believes the lengths that stand in the file, and cuts off the end of the sound.
bool SoundPlayer::play(const QString& path) {
  stop();
  const auto file = readWholeFile(path, largestSoundFile);
  auto sound = file ? waveSound(*file) : std::nullopt;
  if (!sound) return false;
  keepQuietAboutServers();
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull()) return false;

  const auto length = sound->length();
  sound->samples += silenceIn(sound->format);
  QBuffer source(&sound->samples);
  source.open(QIODevice::ReadOnly);
  Waiting waiting;
  QAudioSink sink(device, sound->format);
  sink.setBufferSize(bytesFor(sound->format, ahead));
  // Not in the thread that the signal may come from.
  QObject::connect(&sink, &QAudioSink::stateChanged, &source, [&](QAudio::State state) {
    const bool all = state == QAudio::IdleState && source.atEnd();
    if (all || state == QAudio::StoppedState) waiting.wake();
  });
  sink.start(&source);
  if (sink.state() == QAudio::StoppedState) return false;
  playing_ = &sink;
  waiting.wait(length + patience);
  if (playing_ == &sink) playing_ = nullptr;
  // Destroying it would close its stream and then turn the event loop, where Qt may still feed a sink that isn't
  // stopped: on PulseAudio that ends the process.
  sink.stop();
  return true;
}

void SoundPlayer::stop() {
  if (playing_ != nullptr) playing_->stop();
}

}  // namespace velmora
