#include "desktop/screen_system.h"

#include <QByteArray>
#include <optional>

#include <gtest/gtest.h>

namespace borvane {
namespace {

/// Gives variables of the environment other values for a while.
class Variable {
 public:
  Variable(const char *name, const std::optional<QByteArray> &value)
      : name_(name), was_set_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
    Set(value);
  }
  Variable(const Variable &) = delete;
  Variable &operator=(const Variable &) = delete;
  ~Variable() { Set(was_set_ ? std::optional(before_) : std::nullopt); }

 private:
  void Set(const std::optional<QByteArray> &value) const {
    value.has_value() ? qputenv(name_, *value) : qunsetenv(name_);
  }

  const char *name_;
  bool was_set_;
  QByteArray before_;
};

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
