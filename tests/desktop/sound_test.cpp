#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>
#include <cstdlib>
#include <functional>
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

/// So many milliseconds of a loud sound.
QByteArray tone(int length) { return bytes(qint16{8000}).repeated(SoundServer::rate * length / 1000); }

class Sounds : public testing::Test {
 protected:
  QString sound(int length) const {
    QFile file(folder_.filePath(QString("%1.wav").arg(length)));
    const QByteArray content = WaveFile{.samples = tone(length)}.file();
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    return file.fileName();
  }

  /// How many milliseconds were loud.
  int heard() {
    const QByteArray recording = server_.recording();
    int loud = 0;
    for (qsizetype at = 0; at + 1 < recording.size(); at += 2)
      loud += std::abs(qFromLittleEndian<qint16>(recording.data() + at)) > 4000 ? 1 : 0;
    return static_cast<int>(qint64{loud} * 1000 / SoundServer::rate);
  }

  /// Does it from within the event loop, once something more is heard.
  void whenHeard(const std::function<void()>& what) {
    timer_.disconnect();
    QObject::connect(&timer_, &QTimer::timeout, [this, what, before = heard()] {
      if (heard() < before + 100) return;
      timer_.stop();
      what();
    });
    timer_.start(20);
  }

  QTemporaryDir folder_;
  SoundServer server_;
  SoundPlayer player_;
  QTimer timer_;
};

TEST_F(Sounds, FollowOneAnotherAndEachIsHeardToItsEnd) {
  player_.play(sound(700));
  player_.play(sound(500));
  server_.catchUp();
  EXPECT_NEAR(heard(), 1200, 100);
}

TEST_F(Sounds, ALaterOneEndsTheEarlierOneAndTheServersEndEndsAll) {
  whenHeard([this] { player_.play(sound(500)); });
  player_.play(sound(30'000));
  EXPECT_LT(heard(), 15'000);
  whenHeard([this] { server_.end(); });
  QElapsedTimer time;
  time.start();
  player_.play(sound(30'000));
  player_.play(sound(30'000));
  EXPECT_FALSE(player_.play(sound(200)));
  EXPECT_LT(time.elapsed(), 25'000);
}

TEST_F(Sounds, AreStoppedAtOnceAndToldFromWhatIsNone) {
  EXPECT_TRUE(player_.play(sound(100)));
  player_.stop();
  whenHeard([this] { player_.stop(); });
  EXPECT_TRUE(player_.play(sound(30'000)));
  EXPECT_LT(heard(), 15'000);
  EXPECT_TRUE(player_.play(sound(200))) << "after one that was stopped";
  QFile none(folder_.filePath("none.wav"));
  EXPECT_FALSE(player_.play(none.fileName()));
  ASSERT_TRUE(none.open(QIODevice::WriteOnly) && none.write("none") > 0);
  EXPECT_FALSE(player_.play(none.fileName()));
}

TEST(SoundsWithoutAServer, AreSilentAndNobodyIsTold) {
  qputenv("PULSE_SERVER", "unix:/nowhere");
  QTemporaryDir folder;
  QFile file(folder.filePath("tone.wav"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(WaveFile{.samples = tone(30'000)}.file()) > 0);
  file.close();
  QElapsedTimer time;
  time.start();
  EXPECT_FALSE(SoundPlayer().play(file.fileName()));
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
  for (qsizetype size = 0; size < whole.size() - some.size(); ++size)
    EXPECT_FALSE(waveSound(whole.first(size))) << "nothing is left of " << size;
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
