#pragma once

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <string>

#include <gtest/gtest.h>

#include "core/registry.h"
#include "desktop/services/settings_store.h"

namespace borvane {

inline constexpr Hive hive = Hive::CurrentUser;

/// Each test has a folder of its own for the settings.
class SettingsStoreOnDisk : public testing::Test {
 protected:
  SettingsStoreOnDisk() { UseFolder(folder_.path()); }

  static void UseFolder(const QString &folder) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
  }

  QString folder() const { return folder_.path() + "/Nalvorin"; }
  QString file() const { return folder() + "/Borvane.conf"; }

  void WriteFile(const QByteArray &content, const QString &name = "Borvane.conf") const {
    QDir().mkpath(folder());
    QFile out(folder() + "/" + name);
    ASSERT_TRUE(out.open(QFile::WriteOnly));
    out.write(content);
  }

  QByteArray ReadFile(const QString &name = "Borvane.conf") const {
    QFile in(folder() + "/" + name);
    return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("missing");
  }

  static std::string Text(QtSettingsStore &store, std::string_view name, std::string_view key = program_key) {
    const std::optional<StoredValue> value = store.Read(hive, key, name);
    if (!value)
      return "missing";
    const auto *text = std::get_if<std::string>(&*value);
    return text == nullptr ? "no text" : *text;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace borvane
