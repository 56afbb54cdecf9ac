#include "desktop/services/pulse_stream.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QTemporaryDir>
#include <array>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "desktop/services/sound.h"

namespace borvane {
namespace {

/// The sound server of one test.
class Server {
 public:
  explicit Server(const QByteArray &address) { qputenv("PULSE_SERVER", address); }
  ~Server() { qputenv("PULSE_SERVER", before_); }
  Server(const Server &) = delete;
  Server &operator=(const Server &) = delete;

 private:
  QByteArray before_ = qgetenv("PULSE_SERVER");
};

std::string Bytes(const QString &path) {
  std::ostringstream bytes;
  bytes << std::ifstream(QFile::encodeName(path).toStdString(), std::ios::binary).rdbuf();
  return bytes.str();
}

TEST(PulseStream, HandsItsSamplesToTheLibrary) {
  const QTemporaryDir folder;
  const Server server(QFile::encodeName(folder.path()));
  const std::array<std::int16_t, 4> samples = {0, 1, -2, 8000};
  {
    const auto stream = OpenPulseStream(QStringLiteral(FAKE_PULSE));
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(stream->Write(samples));
    EXPECT_FALSE(stream->Drain()) << "the library reports a failure";
  }
  EXPECT_EQ(Bytes(folder.filePath("calls")),
            "new Borvane/Alarm 1, format 3, 48000 Hz, 1 channel, target 19200, plays from 9600\n"
            "write 8\ndrain\nfree\n");
  const std::string bytes = Bytes(folder.filePath("samples"));
  ASSERT_EQ(bytes.size(), sizeof samples);
  EXPECT_EQ(std::memcmp(bytes.data(), samples.data(), sizeof samples), 0);
}

TEST(PulseStream, IsMissingWithoutTheLibrary) {
  EXPECT_EQ(OpenPulseStream(QStringLiteral("no-such-library")), nullptr);
  EXPECT_EQ(OpenPulseStream(QStringLiteral("c")), nullptr) << "a library without its functions";
}

TEST(PulseStream, IsMissingWithoutAServer) {
  const QTemporaryDir folder;
  const Server server("unix:" + QFile::encodeName(folder.filePath("none")));
  EXPECT_EQ(OpenPulseStream(), nullptr);
}

TEST(PulseStream, LetsAnAlarmPassInSilenceWithAServerThatNeverAnswers) {
  const QTemporaryDir folder;
  QLocalServer silent;
  ASSERT_TRUE(silent.listen(folder.filePath("silent")));
  const Server server("unix:" + QFile::encodeName(folder.filePath("silent")));
  constexpr std::chrono::seconds the_librarys_own_limit{30};
  const auto start = std::chrono::steady_clock::now();
  {
    DesktopSound sound;
    for (int tone = 0; tone < 5; ++tone)
      sound.Beep(440, 10);
  }
  const auto length = std::chrono::steady_clock::now() - start;
  EXPECT_GE(length, std::chrono::milliseconds(200 + 50)) << "the wait for the server, and the tones";
  EXPECT_LT(length, the_librarys_own_limit);
  EXPECT_TRUE(silent.waitForNewConnection(20'000)) << "the library has never asked the server";
}

}  // namespace
}  // namespace borvane
