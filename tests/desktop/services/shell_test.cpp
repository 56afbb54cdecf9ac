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
