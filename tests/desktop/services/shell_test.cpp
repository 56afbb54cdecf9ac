#include "desktop/services/shell.h"

#include <gtest/gtest.h>

#include "support/desktop/link_catcher.h"

namespace borvane {
namespace {

TEST(DesktopShell, OpensNothingButWebAddresses) {
  LinkCatcher browser({"http", "https", "file", "ftp", "mailto", "javascript"});
  DesktopShell shell;
  for (const char *address :
       {"http://southern.localhost:17650/recenteqs/Quakes/ci14155392.html", "https://host/a b?c=\xE9",
        "file:///etc/passwd", "ftp://host/x", "mailto:x@y", "javascript:alert(1)", "/etc/passwd", "help.html", ""})
    shell.Open(address, nullptr);

  EXPECT_EQ(browser.links(), QStringList({"http://southern.localhost:17650/recenteqs/Quakes/ci14155392.html",
                                          "https://host/a%20b?c=%C3%A9"}));
}

TEST(DesktopShell, OpensNoAddressThatAPageHasBentIntoSomethingElse) {
  LinkCatcher browser(
      {"http", "https", "file", "ftp", "mailto", "javascript", "data", "view-source", "vbscript", "smb"});
  DesktopShell shell;
  const std::string_view addresses[] = {"FILE:///etc/passwd",
                                        "file:/etc/passwd",
                                        "file://host/share/x",
                                        "\\\\host\\share\\x.exe",
                                        "//host/share/x",
                                        "\\\\?\\C:\\x",
                                        "C:\\Windows\\x.exe",
                                        "c:/x",
                                        "smb://host/x",
                                        "JavaScript:alert(1)",
                                        "java\tscript:alert(1)",
                                        "\x01javascript:alert(1)",
                                        " javascript:alert(1)",
                                        "data:text/html,x",
                                        "view-source:http://host/",
                                        "vbscript:x",
                                        "http",
                                        "http:",
                                        "http:x",
                                        "http:/x",
                                        "http://",
                                        "http:///etc/passwd",
                                        "https:\\\\host\\x",
                                        "://host",
                                        "http//host",
                                        "-http://host/",
                                        "http ://host/",
                                        "ht\ntp://host/",
                                        "http://ho\nst/",
                                        "http://ho st/",
                                        "34.495N",
                                        "N/A",
                                        "quakes.log",
                                        "--version",
                                        std::string_view("\0http://host/", 13),
                                        std::string_view("file\0://host/http://", 20)};
  for (const std::string_view address : addresses)
    shell.Open(address, nullptr);

  EXPECT_EQ(browser.links(), QStringList());
}

TEST(DesktopShell, OpensAWebAddressWithWhateverElseIsInIt) {
  LinkCatcher browser({"http", "https"});
  DesktopShell shell;
  for (const std::string_view address :
       {std::string_view("HTTP://Host/A"), std::string_view("https://host/maps?near= 34.1N,118.2W"),
        std::string_view("http://host/a\r\nb\tc\x01"), std::string_view("http://host/x?q=NEAR THE COAST%2Bsite:y"),
        std::string_view("http://host/\\\\share/file:///x")})
    shell.Open(address, nullptr);

  EXPECT_EQ(browser.links(),
            QStringList({"http://host/A", "https://host/maps?near=%2034.1N,118.2W", "http://host/a%0D%0Ab%09c%01",
                         "http://host/x?q=NEAR%20THE%20COAST%2Bsite:y", "http://host/%5C%5Cshare/file:///x"}));
}

TEST(DesktopShell, OpensNoFilesButTheProgramsOwn) {
  LinkCatcher viewer({"http", "https", "file"});
  DesktopShell shell;
  for (const char *path : {"/etc/passwd", "/home/u/quakes.log/x", "/home/u/x-quakes.log", "/home/u/help.html.sh", "",
                           "/", "/home/u/Help.html", "/usr/share/borvane/help.html", "help.html"})
    shell.OpenFile(path, nullptr);

  EXPECT_EQ(viewer.links(), QStringList({"file:///usr/share/borvane/help.html"}));
}

TEST(DesktopShell, OpensAFileByItsOwnBytes) {
  LinkCatcher viewer({"http", "https", "file"});
  DesktopShell shell;
  for (const char *path : {"/home/u/Documents/Borvane/quakes.log", "/a b/#1?x=%41&y;/quakes.log",
                           "/\xC3\xA9\xE2\x82\xAC/quakes.log", "/\xFF\xE9/quakes.log", "//server/quakes.log"})
    shell.OpenFile(path, nullptr);

  EXPECT_EQ(
      viewer.links(),
      QStringList({"file:///home/u/Documents/Borvane/quakes.log", "file:///a%20b/%231%3Fx%3D%2541%26y%3B/quakes.log",
                   "file:///%C3%A9%E2%82%AC/quakes.log", "file:///%FF%E9/quakes.log", "file:////server/quakes.log"}));
}

}  // namespace
}  // namespace borvane
