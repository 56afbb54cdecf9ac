#pragma once

#include <QByteArray>

namespace borvane {

/// The platform plugins that Qt should try, in their order and in the form of its option "-platform"; empty for its own
/// choice. The program places its windows, which only X11 allows, so X11 comes first wherever the environment names an
/// X server, also on a Wayland desktop; but what the user chose by Qt's own variable holds.
QByteArray ScreenSystems();

}  // namespace borvane
