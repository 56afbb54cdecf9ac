#include "transfer/http_address.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

/// The parts of an address in one line, or "invalid".
std::string Parts(const std::optional<HttpAddress> &address) {
  return address ? address->scheme + "|" + address->host + "|" + std::to_string(address->port) + "|" + address->target
                 : "invalid";
}

std::string Parsed(std::string_view address) { return Parts(ParseHttpAddress(address)); }

std::string Resolved(std::string_view base, std::string_view location) {
  return Parts(ResolveRedirect(*ParseHttpAddress(base), location));
}

TEST(ParseHttpAddress, TakesHostPortAndTargetApart) {
  EXPECT_EQ(Parsed("http://southern.localhost:17650/recenteqs/Maps/117-34.html"),
            "http|southern.localhost|17650|/recenteqs/Maps/117-34.html");
  EXPECT_EQ(Parsed("http://a_b-c.example/x"), "http|a_b-c.example|80|/x");
  EXPECT_EQ(Parsed("HTTPS://Host/x"), "https|Host|443|/x");
  EXPECT_EQ(Parsed("http://127.0.0.1:65535/"), "http|127.0.0.1|65535|/");
  EXPECT_EQ(Parsed("http://[::1]:80/x"), "http|[::1]|80|/x");
}

TEST(ParseHttpAddress, AsksForTheRootWithoutAPath) {
  EXPECT_EQ(Parsed("http://host"), "http|host|80|/");
  EXPECT_EQ(Parsed("http://host:8080"), "http|host|8080|/");
}

TEST(ParseHttpAddress, LeavesTheTargetAsItIs) {
  EXPECT_EQ(Parsed("http://host/a b|c#d?e=f&g=\xE9%zz//../\"<>"), "http|host|80|/a b|c#d?e=f&g=\xE9%zz//../\"<>");
}

TEST(ParseHttpAddress, KeepsATargetFromEndingItsLine) {
  EXPECT_EQ(Parsed(std::string_view("http://host/a\r\nX: y\0z", 21)), "http|host|80|/a%0D%0AX: y%00z");
}

TEST(ParseHttpAddress, RefusesEverythingElse) {
  for (const char *address : {"",
                              "host/x",
                              "ftp://host/x",
                              "file:///etc/passwd",
                              "http:/host",
                              "http://",
                              "http:///x",
                              "http://:80/x",
                              "http://user@host/x",
                              "http://host:/x",
                              "http://host:0/x",
                              "http://host:65536/x",
                              "http://host:80a/x",
                              "http://host:-1/x",
                              "http://ho st/x",
                              "http://h\xE9/x",
                              "http://host?x",
                              "http://host#x",
                              "http://[::1/x",
                              "http://[]/x",
                              "http://[::1%eth0]/x",
                              "http://[::1]x/",
                              "http://host\r\n/x"})
    EXPECT_EQ(Parsed(address), "invalid") << address;
}

TEST(ResolveRedirect, FollowsWholeAddresses) {
  EXPECT_EQ(Resolved("http://a/x/y", "http://b:81/z?q"), "http|b|81|/z?q");
  EXPECT_EQ(Resolved("http://a/x/y", "https://b"), "https|b|443|/");
  EXPECT_EQ(Resolved("https://a:444/x", "//b/z"), "https|b|443|/z");
}

TEST(ResolveRedirect, FollowsPathsFromTheRootAndFromTheFolder) {
  EXPECT_EQ(Resolved("http://a:81/x/y?q/r", "/z"), "http|a|81|/z");
  EXPECT_EQ(Resolved("http://a:81/x/y?q/r", "z"), "http|a|81|/x/z");
  EXPECT_EQ(Resolved("http://a/x/", "z/"), "http|a|80|/x/z/");
  EXPECT_EQ(Resolved("http://a/x/y", "z?a/../b"), "http|a|80|/x/z?a/../b");
  EXPECT_EQ(Resolved("http://a/x/y?q", "?r"), "http|a|80|/x/y?r");
  EXPECT_EQ(Resolved("http://a/x/y?q", "z:1"), "invalid");
  EXPECT_EQ(Resolved("http://a/x/y?q", "./z:1"), "http|a|80|/x/z:1");
}

TEST(ResolveRedirect, ResolvesDots) {
  EXPECT_EQ(Resolved("http://a/x/y/w", "../z"), "http|a|80|/x/z");
  EXPECT_EQ(Resolved("http://a/x/y", "../../../z"), "http|a|80|/z");
  EXPECT_EQ(Resolved("http://a/x/y", "."), "http|a|80|/x/");
  EXPECT_EQ(Resolved("http://a/x/y/w", ".."), "http|a|80|/x/");
  EXPECT_EQ(Resolved("http://a/x", "/a//b/./c"), "http|a|80|/a//b/c");
}

TEST(ResolveRedirect, LeavesOutThePartFromTheHashOn) {
  EXPECT_EQ(Resolved("http://a/x", "/y#z"), "http|a|80|/y");
  EXPECT_EQ(Resolved("http://a/x?q", "#z"), "http|a|80|/x?q");
}

TEST(ResolveRedirect, LeadsNowhereElse) {
  EXPECT_EQ(Resolved("http://a/x", "ftp://b/"), "invalid");
  EXPECT_EQ(Resolved("http://a/x", "file:///etc/passwd"), "invalid");
  EXPECT_EQ(Resolved("http://a/x", "javascript:alert(1)"), "invalid");
  EXPECT_EQ(Resolved("http://a/x", "http://user@b/"), "invalid");
  EXPECT_EQ(Resolved("http://a/x", "//"), "invalid");
}

}  // namespace
}  // namespace borvane
