#include "desktop/screen_system.h"

#include <QByteArray>
#include <optional>

#include <gtest/gtest.h>

#include "support/desktop/variable.h"

namespace borvane {
namespace {

QByteArray ScreenSystemsFor(const std::optional<QByteArray> &display, const std::optional<QByteArray> &choice) {
  const Variable display_variable("DISPLAY", display);
  const Variable choice_variable("QT_QPA_PLATFORM", choice);
  return ScreenSystems();
}

TEST(ScreenSystems, BeginWithX11WhereverThereIsAnXServer) {
  const Variable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(ScreenSystemsFor(":0", {}), "xcb;wayland");
  EXPECT_EQ(ScreenSystemsFor(":0", ""), "xcb;wayland") << "an empty choice is none";
}

TEST(ScreenSystems, AreQtsChoiceWithoutAnXServer) {
  const Variable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(ScreenSystemsFor({}, {}), "");
  EXPECT_EQ(ScreenSystemsFor("", {}), "");
}

TEST(ScreenSystems, AreTheUsersByQtsOwnVariable) {
  for (const char *choice : {"wayland", "offscreen", "xcb", "wayland;xcb"})
    EXPECT_EQ(ScreenSystemsFor(":0", choice), "");
}

}  // namespace
}  // namespace borvane
