#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#include "desktop/settings/registry_store.h"
#else
#include "desktop/settings/settings_file_store.h"
#endif

namespace borvane {

/// What the desktop keeps settings in.
#ifdef Q_OS_WIN
using DesktopSettingsStore = RegistryStore;
#else
using DesktopSettingsStore = SettingsFileStore;
#endif

}  // namespace borvane
