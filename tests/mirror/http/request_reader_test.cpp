#include "http/request_reader.h"

#include <string>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

using Status = RequestReading::Status;

RequestReading Read(std::string_view bytes) { return ReadRequest(bytes, Limits{}); }

int RefusalOf(std::string_view bytes) {
  const RequestReading reading = Read(bytes);
  return reading.status == Status::Refused ? reading.refusal : 0;
}

std::string TargetOf(std::string_view request_line) {
  const RequestReading reading = Read(std::string(request_line) + "\r\n\r\n");
  return reading.status == Status::Complete ? reading.request.target.toStdString() : "refused";
}

TEST(ReadRequest, SeparatesAnUnknownMethodFromNone) {
  const std::string good = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-.^_`|~";
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    if (character == ' ')
      continue;  // separates the method from the target
    const bool is_method = good.find(character) != std::string::npos;
    EXPECT_EQ(RefusalOf(std::string("BR") + character + "W / HTTP/1.1\r\n\r\n"), is_method ? 501 : 400) << byte;
  }
}

TEST(ReadRequest, TakesMethodTargetAndHost) {
  const std::string_view bytes = "GET /a/b.html?c=d HTTP/1.1\r\nHost: southern.localhost:17650\r\nAccept: */*\r\n\r\n";
  const RequestReading reading = Read(bytes);
  ASSERT_EQ(reading.status, Status::Complete);
  EXPECT_EQ(reading.request.method, "GET");
  EXPECT_EQ(reading.request.target, "/a/b.html?c=d");
  EXPECT_EQ(reading.request.host, "southern.localhost:17650");
  EXPECT_TRUE(reading.request.keep_alive);
  EXPECT_EQ(reading.used, bytes.size());
}

TEST(ReadRequest, HandsOverWhatABrowserSaysOfThePageThatAsks) {
  const Request plain = Read("GET / HTTP/1.1\r\nHost: a\r\n\r\n").request;
  EXPECT_FALSE(plain.has_origin);
  EXPECT_EQ(plain.fetch_site, "");
  const Request page = Read("GET / HTTP/1.1\r\nORIGIN:\r\nsec-fetch-site:  cross-site \r\n\r\n").request;
  EXPECT_TRUE(page.has_origin);
  EXPECT_EQ(page.fetch_site, "cross-site");
  EXPECT_EQ(Read("GET / HTTP/1.1\r\nSec-Fetch-Site: none\r\nSec-Fetch-Site: none\r\n\r\n").request.fetch_site,
            "nonenone");
}

TEST(ReadRequest, LeavesTheNextRequestUnread) {
  const std::string first = "HEAD /a HTTP/1.1\r\n\r\n";
  const RequestReading reading = Read(first + "GET /b HTTP/1.1\r\n\r\n");
  ASSERT_EQ(reading.status, Status::Complete);
  EXPECT_EQ(reading.request.method, "HEAD");
  EXPECT_EQ(reading.used, first.size());
}

TEST(ReadRequest, WaitsForTheEndOfTheHead) {
  const std::string bytes = "\r\nGET /a b\xff HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n";
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_EQ(Read(bytes.substr(0, length)).status, Status::Incomplete) << length;
  EXPECT_EQ(Read(bytes).status, Status::Complete);
}

TEST(ReadRequest, SaysHowManyBytesWithoutALineFeedItRefuses) {
  for (const std::string start : {"", "GET /", "GET / HTTP/1.1\r\n", "GET / HTTP/1.1\r\nA: b\r\n"}) {
    const RequestReading reading = Read(start);
    ASSERT_EQ(reading.status, Status::Incomplete);
    const std::string filled = start + std::string(reading.refused_beyond - start.size(), 'x');
    EXPECT_EQ(Read(filled).status, Status::Incomplete) << start;
    EXPECT_EQ(Read(filled + 'x').status, Status::Refused) << start;
  }
}

TEST(ReadRequest, TakesTheTargetUpToTheLastVersion) {
  EXPECT_EQ(TargetOf("GET /a b  c HTTP/1.1"), "/a b  c");
  EXPECT_EQ(TargetOf("GET /a HTTP/1.1 HTTP/1.1"), "/a HTTP/1.1");
  EXPECT_EQ(TargetOf("GET / HTTP/1.0"), "/");
  EXPECT_EQ(TargetOf("GET /a  HTTP/1.1"), "/a ");
}

TEST(ReadRequest, TakesBytesAbove127AndControlCharactersInTheTargetAsTheyAre) {
  EXPECT_EQ(TargetOf("GET /\xe9\x80\xff|#\"<>\t\x01 HTTP/1.1"), "/\xe9\x80\xff|#\"<>\t\x01");
}

TEST(ReadRequest, TakesTheHostFromATargetThatNamesIt) {
  const RequestReading reading = Read("GET http://Memphis.localhost:1/a/b HTTP/1.1\r\nHost: utah.localhost\r\n\r\n");
  ASSERT_EQ(reading.status, Status::Complete);
  EXPECT_EQ(reading.request.host, "Memphis.localhost:1");
  EXPECT_EQ(reading.request.target, "/a/b");
  EXPECT_EQ(TargetOf("GET HTTP://memphis.localhost HTTP/1.1"), "/");
}

TEST(ReadRequest, KnowsWhetherTheConnectionGoesOn) {
  const auto keeps = [](std::string_view bytes) { return Read(bytes).request.keep_alive; };
  EXPECT_TRUE(keeps("GET / HTTP/1.1\r\n\r\n"));
  EXPECT_FALSE(keeps("GET / HTTP/1.0\r\n\r\n"));
  EXPECT_TRUE(keeps("GET / HTTP/1.0\r\nConnection: Keep-Alive\r\n\r\n"));
  EXPECT_FALSE(keeps("GET / HTTP/1.1\r\nCONNECTION: foo , Close\r\n\r\n"));
  EXPECT_FALSE(keeps("GET / HTTP/1.1\r\nConnection: close, keep-alive\r\n\r\n"));
  EXPECT_FALSE(keeps("GET / HTTP/1.1\r\nConnection: close\r\nConnection: keep-alive\r\n\r\n"));
}

TEST(ReadRequest, EndsLinesAtALineFeedAlone) {
  const RequestReading reading = Read("GET /a HTTP/1.1\nHost: x\n\nGET");
  ASSERT_EQ(reading.status, Status::Complete);
  EXPECT_EQ(reading.request.host, "x");
  EXPECT_EQ(reading.used, 25U);
}

TEST(ReadRequest, SkipsAFewEmptyLinesInFront) {
  EXPECT_EQ(Read("\r\n\n\r\n\nGET / HTTP/1.1\r\n\r\n").status, Status::Complete);
  EXPECT_EQ(RefusalOf("\n\n\n\n\nGET / HTTP/1.1\r\n\r\n"), 400);
}

TEST(ReadRequest, RefusesWhatIsNoRequest) {
  for (const std::string_view bytes : {"GET\r\n\r\n",
                                       "GET /\r\n\r\n",
                                       "GET / HTTP/1\r\n\r\n",
                                       "GET / HTTP/1.1 \r\n\r\n",
                                       "GET / HTTP/1x1\r\n\r\n",
                                       "GET / HTTP//.1\r\n\r\n",
                                       "GET / HTTP/:.1\r\n\r\n",
                                       "GET / HTTP/1./\r\n\r\n",
                                       "GET / HTTP/1.:\r\n\r\n",
                                       "GET / http/1.1\r\n\r\n",
                                       "GET  HTTP/1.1\r\n\r\n",
                                       "GET HTTP/1.1\r\n\r\n",
                                       "GET a HTTP/1.1\r\n\r\n",
                                       "GET * HTTP/1.1\r\n\r\n",
                                       " GET / HTTP/1.1\r\n\r\n",
                                       "G(T / HTTP/1.1\r\n\r\n",
                                       "GET /\rx HTTP/1.1\r\n\r\n",
                                       "GET / HTTP/1.1\r\n: x\r\n\r\n",
                                       "GET / HTTP/1.1\r\nHost\r\n\r\n",
                                       "GET / HTTP/1.1\r\nHost : x\r\n\r\n",
                                       "GET / HTTP/1.1\r\nA: b\r\n folded\r\n\r\n",
                                       "GET / HTTP/1.1\r\nA: b\rc\r\n\r\n",
                                       "GET / HTTP/1.1\r\nHost: x\r\nHost: x\r\n\r\n",
                                       "\x16\x03\x01",
                                       "\x80"})
    EXPECT_EQ(RefusalOf(bytes), 400) << bytes;
}

TEST(ReadRequest, KnowsTheTargetOfWhatItRefuses) {
  const auto refused_target = [](const std::string &bytes) {
    const RequestReading reading = Read(bytes);
    EXPECT_EQ(reading.status, Status::Refused);
    return reading.request.target.left(8).toStdString();
  };
  const std::string long_text(70'000, 'x');
  EXPECT_EQ(refused_target("GET /a/b HTTP/3.0\r\n"), "/a/b");
  EXPECT_EQ(refused_target("POST /a/b HTTP/1.1\r\n"), "/a/b");
  EXPECT_EQ(refused_target("GET /a\rb HTTP/1.1\r\n"), "/a\rb");
  EXPECT_EQ(refused_target("GET /a/b HTTP/1.1\r\n: x\r\n"), "/a/b");
  EXPECT_EQ(refused_target("GET /a/b HTTP/1.1\r\nA: " + long_text), "/a/b");
  EXPECT_EQ(refused_target("GET /a/" + long_text + " HTTP/1.1\r\n"), "/a/xxxxx");
  EXPECT_EQ(refused_target("GET /a/" + long_text), "/a/xxxxx");
  EXPECT_EQ(refused_target("GET http://x/a/" + long_text), "/a/xxxxx");
  EXPECT_EQ(refused_target("hello\r\n"), "");
}

TEST(ReadRequest, KnowsTheTargetOfAHeadThatHasBegun) {
  EXPECT_EQ(Read("GET /a HTTP/1.1").request.target, "");
  EXPECT_EQ(Read("GET /a HTTP/1.1\r\n").request.target, "/a");
  EXPECT_EQ(Read("GET /a HTTP/1.1\r\nHost: x\r\nA").request.host, "x");
}

TEST(ReadRequest, RefusesAZeroByte) {
  using namespace std::string_view_literals;
  EXPECT_EQ(RefusalOf("GET /\0 HTTP/1.1\r\n\r\n"sv), 400);
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\nA: \0\r\n\r\n"sv), 400);
}

TEST(ReadRequest, RefusesOtherMethods) {
  for (const std::string method : {"POST", "PUT", "DELETE", "OPTIONS", "PATCH", "TRACE", "CONNECT"})
    EXPECT_EQ(RefusalOf(method + " / HTTP/1.1\r\n\r\n"), 405) << method;
  EXPECT_EQ(RefusalOf("BREW / HTTP/1.1\r\n\r\n"), 501);
  EXPECT_EQ(RefusalOf("get / HTTP/1.1\r\n\r\n"), 501);
  EXPECT_EQ(RefusalOf(std::string(33, 'A') + " / HTTP/1.1\r\n\r\n"), 400);
}

TEST(ReadRequest, RefusesOtherVersions) {
  EXPECT_EQ(RefusalOf("GET / HTTP/2.0\r\n\r\n"), 505);
  EXPECT_EQ(RefusalOf("GET / HTTP/0.9\r\n\r\n"), 505);
  EXPECT_EQ(Read("GET / HTTP/1.7\r\n\r\n").status, Status::Complete);
}

TEST(ReadRequest, RefusesABody) {
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\nContent-Length: 1\r\n\r\n"), 413);
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\ncontent-length: 99999999999999999999\r\n\r\n"), 413);
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"), 501);
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\nContent-Length: -1\r\n\r\n"), 400);
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\nContent-Length:\r\n\r\n"), 400);
  EXPECT_EQ(Read("GET / HTTP/1.1\r\nContent-Length: 0\r\n\r\n").status, Status::Complete);
}

TEST(ReadRequest, TakesATargetOfTheLimitAndRefusesOneByteMore) {
  const std::string target = '/' + std::string(64 * 1024 - 1, 'x');
  EXPECT_EQ(TargetOf("GET " + target + " HTTP/1.1"), target);
  EXPECT_EQ(Read("HEAD " + target + " HTTP/1.1\r").status, Status::Incomplete) << "its line feed is still to come";
  EXPECT_EQ(RefusalOf("GET " + target + "x HTTP/1.1\r\n\r\n"), 414);
  EXPECT_EQ(RefusalOf("GET " + target + std::string(1000, 'x')), 414) << "without waiting for the line's end";
  EXPECT_EQ(RefusalOf("GET " + target + "xxx\r\n\r\n"), 414);
}

TEST(ReadRequest, TakesAsManyHeadersAsTheLimitAndRefusesOneMore) {
  std::string head = "GET / HTTP/1.1\r\n";
  for (int i = 0; i < 100; ++i)
    head += "A: b\r\n";
  EXPECT_EQ(Read(head + "\r\n").status, Status::Complete);
  EXPECT_EQ(RefusalOf(head + "A: b\r\n"), 431) << "without waiting for the head's end";
}

TEST(ReadRequest, TakesAHeaderLineOfTheLimitAndRefusesOneByteMore) {
  const std::string line = "A: " + std::string(8 * 1024 - 3, 'b');
  EXPECT_EQ(Read("GET / HTTP/1.1\r\n" + line + "\r\n\r\n").status, Status::Complete);
  EXPECT_EQ(Read("GET / HTTP/1.1\r\n" + line + "\r").status, Status::Incomplete) << "its line feed is still to come";
  EXPECT_EQ(RefusalOf("GET / HTTP/1.1\r\n" + line + "b\r\n\r\n"), 431);
}

TEST(ReadRequest, TakesHeaderLinesOfTheLimitTogetherAndRefusesMore) {
  std::string head = "GET / HTTP/1.1\r\n";
  for (int i = 0; i < 4; ++i)
    head += "A: " + std::string(8 * 1024 - 5, 'b') + "\r\n";
  EXPECT_EQ(Read(head + "\r\n").status, Status::Complete);
  EXPECT_EQ(Read(head + "\r").status, Status::Incomplete) << "the head's last line feed is still to come";
  EXPECT_EQ(RefusalOf(head + "A: b\r\n"), 431);
}

TEST(PathOf, IsWhatComesBeforeAQueryOrAFragment) {
  EXPECT_EQ(PathOf("/a/b.html"), "/a/b.html");
  EXPECT_EQ(PathOf("/a b?c#d"), "/a b");
  EXPECT_EQ(PathOf("/a b#c?d"), "/a b");
  EXPECT_EQ(PathOf("?"), "");
  EXPECT_EQ(PathOf(""), "");
}

}  // namespace
}  // namespace borvane::mirror
