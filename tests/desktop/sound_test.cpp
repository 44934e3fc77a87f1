#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <vector>

#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/services/sound_player.h"
#include "platform/qt/services/wave_sound.h"
#include "platform/qt/strings.h"
#include "support/sound_server.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::SoundServer;

constexpr int low = 500;
constexpr int high = 1500;

template <typename Number>
QByteArray bytes(Number number) {
  QByteArray text(sizeof number, '\0');
  qToLittleEndian(number, text.data());
  return text;
}

/// The parts of a .wav file, to be made wrong.
struct WaveFile {
  QByteArray riff = "RIFF";
  quint16 kind = 1;
  quint16 channels = 1;
  quint32 rate = SoundServer::rate;
  quint16 bits = 16;
  QByteArray further = {};  ///< of the description
  QByteArray before = {};   ///< the samples
  QByteArray samples = {};
  qint64 claimed = -1;  ///< bytes of samples; without it the truth

  QByteArray file() const {
    const auto frame = static_cast<quint16>(channels * bits / 8);
    const auto length = claimed < 0 ? samples.size() : claimed;
    return riff + bytes(quint32{0}) + "WAVEfmt " + bytes(static_cast<quint32>(16 + further.size())) + bytes(kind) +
           bytes(channels) + bytes(rate) + bytes(rate * frame) + bytes(frame) + bytes(bits) + further + before +
           "data" + bytes(static_cast<quint32>(length)) + samples;
  }
};

QByteArray tone(int pitch, int length) {
  QByteArray samples;
  const auto count = static_cast<int>(SoundServer::rate * length / 1000);
  for (int i = 0; i < count; ++i) {
    samples += bytes(static_cast<qint16>(8000 * std::sin(2 * std::numbers::pi * pitch * i / SoundServer::rate)));
  }
  return samples;
}

/// A sound's part in a recording, found by how much of its pitch is in each fiftieth of a second. Those hold whole
/// turns of both pitches, so that neither is taken for the other.
struct Heard {
  double length = 0;  ///< in milliseconds, like all lengths here
  std::ptrdiff_t first = -1;
  std::ptrdiff_t last = -1;
};

constexpr int window = SoundServer::rate / 50;

std::ptrdiff_t parts(const QByteArray& recording) { return recording.size() / 2 / window; }

Heard heard(const QByteArray& recording, int pitch, std::ptrdiff_t from = 0) {
  Heard result;
  double whole = 0;
  for (std::ptrdiff_t part = from; part < parts(recording); ++part) {
    double sine = 0;
    double cosine = 0;
    for (int i = 0; i < window; ++i) {
      const double sample = qFromLittleEndian<qint16>(recording.data() + (part * window + i) * 2);
      sine += sample * std::sin(2 * std::numbers::pi * pitch * i / SoundServer::rate);
      cosine += sample * std::cos(2 * std::numbers::pi * pitch * i / SoundServer::rate);
    }
    const double strength = std::hypot(sine, cosine) * 2 / window / 8000;  // 1 where the tone fills it
    if (strength < 0.1) continue;  // the edges of a tone have a little of all pitches
    whole += strength;
    if (result.first < 0) result.first = part;
    result.last = part;
  }
  result.length = whole * 20;
  return result;
}

class Sounds : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<SoundServer>(); }
  static void TearDownTestSuite() { server_.reset(); }
  void SetUp() override { server_->forget(); }

  QString file(const QString& name, const QByteArray& content) const {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    return file.fileName();
  }
  QString sound(int pitch, int length) const {
    return file(QString("%1.wav").arg(pitch), WaveFile{.samples = tone(pitch, length)}.file());
  }

  /// Does it from within the event loop, once a low sound is heard.
  void whenHeard(const std::function<void()>& what) {
    QObject::connect(&timer_, &QTimer::timeout, [this, what] {
      const QByteArray recording = server_->recording();
      if (heard(recording, low, std::max<std::ptrdiff_t>(parts(recording) - 20, 0)).length < 100) return;
      timer_.stop();
      what();
    });
    timer_.start(20);
  }

  QTemporaryDir folder_;
  static inline std::unique_ptr<SoundServer> server_;
  SoundPlayer player_;
  QTimer timer_;
};

TEST_F(Sounds, FollowOneAnotherAndEachIsHeardToItsEnd) {
  player_.play(sound(low, 700));
  player_.play(sound(high, 500));
  server_->catchUp();
  const Heard one = heard(server_->recording(), low);
  const Heard other = heard(server_->recording(), high);
  EXPECT_NEAR(one.length, 700, 50);
  EXPECT_NEAR(other.length, 500, 50);
  EXPECT_LT(one.last, other.first);
}

TEST_F(Sounds, ALaterOneEndsTheEarlierOne) {
  whenHeard([this] { player_.play(sound(high, 500)); });
  player_.play(sound(low, 30'000));
  server_->catchUp();
  const Heard one = heard(server_->recording(), low);
  const Heard other = heard(server_->recording(), high);
  EXPECT_NEAR(other.length, 500, 50);
  EXPECT_LT(one.last, other.first + 2) << "it goes on beside the later one";
  EXPECT_LT(one.length, 10'000);
}

TEST_F(Sounds, TheEndOfTheProgramEndsThem) {
  whenHeard([] { QCoreApplication::exit(0); });
  QElapsedTimer time;
  time.start();
  QTimer::singleShot(0, &timer_, [this] { player_.play(sound(low, 30'000)); });
  QApplication::exec();
  EXPECT_LT(time.elapsed(), 15'000);
}

TEST_F(Sounds, FilesThatHoldNoSoundAreSilent) {
  QFile large(file("large.wav", WaveFile{.samples = tone(low, 1'000)}.file()));
  ASSERT_TRUE(large.resize(qint64{1} << 40U));
  QElapsedTimer time;
  time.start();
  for (const QString& path : {QString("/missing.wav"), folder_.path(), QString("/dev/zero"), large.fileName(),
                              file("text.wav", "no sound\n"), file("empty.wav", "")}) {
    player_.play(path);
  }
  EXPECT_LT(time.elapsed(), 5'000);
  player_.play(file("claims.wav", WaveFile{.samples = tone(low, 200), .claimed = 0xFFFFFFF0}.file()));
  server_->catchUp();
  EXPECT_NEAR(heard(server_->recording(), low).length, 200, 50);
}

TEST_F(Sounds, EndWithTheirServer) {
  const QString path = sound(low, 30'000);
  QElapsedTimer time;
  time.start();
  whenHeard([] { server_->end(); });
  player_.play(path);
  player_.play(path);
  EXPECT_LT(time.elapsed(), 15'000);
}

TEST(SoundsWithoutAServer, AreSilentAndNobodyIsTold) {
  qputenv("PULSE_SERVER", "unix:/nowhere");
  QTemporaryDir folder;
  QFile file(folder.filePath("tone.wav"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(WaveFile{.samples = tone(low, 30'000)}.file()) > 0);
  file.close();
  QElapsedTimer time;
  time.start();
  SoundPlayer().play(file.fileName());
  EXPECT_LT(time.elapsed(), 15'000);
}

TEST(WaveSounds, AreTakenApartAsFarAsTheyGo) {
  const QByteArray some(24'000, 'x');
  const QByteArray extended = QByteArray(8, '\0') + bytes(quint16{1}) + QByteArray(14, '\0');
  struct Case {
    const char* name;
    WaveFile file;
    int played;  ///< bytes
  };
  const std::vector<Case> cases{
      {"8 bits", {.bits = 8, .samples = some}, 24'000},
      {"16 bits", {.samples = some}, 24'000},
      {"24 bits", {.bits = 24, .samples = some}, 16'000},
      {"32 bits", {.bits = 32, .samples = some}, 24'000},
      {"floats", {.kind = 3, .bits = 32, .samples = some}, 24'000},
      {"stereo", {.channels = 2, .samples = some}, 24'000},
      {"a longer description", {.kind = 0xFFFE, .further = extended, .samples = some}, 24'000},
      {"other chunks before it",
       {.before = "LIST" + bytes(3) + QByteArray("abc\0", 4) + "x   " + bytes(0), .samples = some},
       24'000},
      {"claims more than there is", {.samples = some, .claimed = 0xFFFFFFFF}, 24'000},
      {"holds more than it claims", {.samples = some, .claimed = 1'000}, 1'000},
      {"31 seconds", {.rate = 8'000, .bits = 8, .samples = QByteArray(248'000, 'x')}, 240'000},
      {"ends within a frame", {.channels = 2, .samples = some.first(4001)}, 4'000},
      {"a chunk that claims all", {.before = "LIST" + bytes(0xFFFFFFFFU), .samples = some}, 0},
      {"no samples", {}, 0},
      {"not RIFF", {.riff = "RIFX", .samples = some}, 0},
      {"compressed", {.kind = 2, .bits = 4, .samples = some}, 0},
      {"no channel", {.channels = 0, .samples = some}, 0},
      {"many channels", {.channels = 0xFFFF, .samples = some}, 0},
      {"no bits", {.bits = 0, .samples = some}, 0},
      {"too slow", {.rate = 1, .samples = some}, 0},
      {"too fast", {.rate = 0xFFFFFFFF, .samples = some}, 0},
  };
  for (const Case& each : cases) {
    const auto sound = waveSound(each.file.file());
    EXPECT_EQ(sound ? sound->samples.size() : 0, each.played) << each.name;
  }
  const QByteArray whole = cases[6].file.file();
  for (qsizetype size = 0; size < 100; ++size) waveSound(whole.first(size));
}

TEST(OwnSounds, AreLaidOutWhereTheUserHasNone) {
  const GmimeReader reader;
  const QtPlatform platform(reader);
  const QString error = qt(platform.soundFile("Error.wav"));
  ASSERT_TRUE(QDir().mkpath(QFileInfo(error).path()));
  QFile own(error);
  ASSERT_TRUE(own.open(QIODevice::WriteOnly) && own.write("the user's") > 0);
  own.close();
  QtPlatform::provideSounds();
  EXPECT_EQ(platform.readFile(utf8(error)), "the user's");
  ASSERT_TRUE(own.remove());
  QtPlatform::provideSounds();
  const QStringList files = QFileInfo(error).dir().entryList({"*.wav"}, QDir::Files);
  EXPECT_TRUE(files.contains("Error.wav") && files.size() > 2);
  for (const QString& name : files) {
    const auto content = platform.readFile(platform.soundFile(utf8(name)));
    const auto sound = waveSound(QByteArray::fromStdString(content.value_or("")));
    EXPECT_TRUE(sound && sound->length() > 300ms && sound->length() < 1s) << utf8(name);
  }
}

}  // namespace
}  // namespace velmora
