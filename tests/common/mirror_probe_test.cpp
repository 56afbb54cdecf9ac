#include "common/mirror_probe.h"

#include <string>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(MirrorVersion, IsTheOneInTheHeaderServer) {
  EXPECT_EQ(MirrorVersion("HTTP/1.1 200 OK\r\nServer: borvane-mirror/2.3.5\r\nContent-Length: 0\r\n\r\n"), "2.3.5");
  EXPECT_EQ(MirrorVersion("HTTP/1.0 503 Service Unavailable\r\nserver:borvane-mirror/9 (x)\r\n\r\nbody"), "9");
  EXPECT_EQ(MirrorVersion("HTTP/1.1 200 OK\r\nDate: x\r\nSERVER: \t borvane-mirror/10.0.1\r\n\r\n"), "10.0.1");
}

TEST(MirrorVersion, IsNoneOfAnotherProgram) {
  for (const char *answer : {"HTTP/1.1 200 OK\r\n\r\n", "HTTP/1.1 200 OK\r\nServer: another/1.0\r\n\r\n",
                             "HTTP/1.1 200 OK\r\nServer: not-borvane-mirror/1.0\r\n\r\n",
                             "HTTP/1.1 200 OK\r\nX-Server: borvane-mirror/1.0\r\n\r\n",
                             "HTTP/1.1 200 OK\r\nX: Server: borvane-mirror/1.0\r\n\r\n",
                             "HTTP/1.1 200 OK\r\n\r\nServer: borvane-mirror/1.0\r\n\r\n",
                             "SSH-2.0\r\nServer: borvane-mirror/1.0\r\n\r\n", "\r\n\r\n", ""})
    EXPECT_EQ(MirrorVersion(answer), std::nullopt) << answer;
}

TEST(IsMirrorOfOurPages, IsTrueWhereItSaysSo) {
  const std::string head = "HTTP/1.1 200 OK\r\nServer: borvane-mirror/99.0.1\r\n";
  EXPECT_FALSE(IsMirrorOfOurPages(head + "\r\n"));
  EXPECT_TRUE(IsMirrorOfOurPages(head + "Borvane-Pages: 1\r\n\r\n"));
  EXPECT_TRUE(IsMirrorOfOurPages("HTTP/1.1 200 OK\r\nborvane-pages:1 \r\nServer: borvane-mirror/9\r\n\r\n"));
  EXPECT_FALSE(IsMirrorOfOurPages("HTTP/1.1 200 OK\r\nServer: another/1.0\r\nBorvane-Pages: 1\r\n\r\n"));
  EXPECT_FALSE(IsMirrorOfOurPages(head + "Borvane-Pages: 1\r\n"));
  for (const char *pages : {"2", "10", "", "x", "0"}) {
    const std::string last = head + "Borvane-Pages: " + pages + "\r\n\r\n";
    EXPECT_FALSE(IsMirrorOfOurPages(last)) << pages;
    EXPECT_EQ(MirrorVersion(last), "99.0.1");
    EXPECT_FALSE(IsMirrorOfOurPages(std::string("HTTP/1.1 200 OK\r\nBorvane-Pages: ") + pages +
                                    "\r\nServer: borvane-mirror/2.3.5\r\n\r\n"))
        << pages;
  }
}

TEST(MirrorVersion, IsUnknownUntilTheHeadIsWhole) {
  const std::string answer = "HTTP/1.1 200 OK\r\nServer: borvane-mirror/2.3.5\r\n\r\n";
  for (std::size_t length = 0; length < answer.size(); ++length) {
    EXPECT_EQ(MirrorVersion(answer.substr(0, length)), std::nullopt) << length;
    EXPECT_TRUE(IsUnfinishedHead(answer.substr(0, length))) << length;
  }
  EXPECT_EQ(MirrorVersion(answer), "2.3.5");
  EXPECT_FALSE(IsUnfinishedHead(answer));
}

TEST(IsUnfinishedHead, IsFalseForAnEndlessHead) {
  EXPECT_TRUE(IsUnfinishedHead(std::string(4096, 'x')));
  EXPECT_FALSE(IsUnfinishedHead(std::string(4097, 'x')));
}

TEST(MirrorProbe, IsAWholeRequest) {
  EXPECT_TRUE(mirror_probe.starts_with("GET / HTTP/1.0\r\n"));
  EXPECT_TRUE(mirror_probe.ends_with("\r\n\r\n"));
}

}  // namespace
}  // namespace borvane
