#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <string>

#include <gtest/gtest.h>

#include "core/registry.h"
#include "desktop/settings/settings_file_store.h"

namespace borvane {

/// Each test has a folder of its own for the settings.
class SettingsOnDisk : public testing::Test {
 protected:
  QString root() const { return folder_.path(); }
  QString folder() const { return root() + "/Nalvorin"; }
  QString file() const { return folder() + "/Borvane.conf"; }
  QString lock_file() const { return file() + ".writing"; }

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

  /// The names of all files in the settings' folder.
  QStringList Files() const { return QDir(folder()).entryList(QDir::Files, QDir::Name); }

  static void Write(SettingsFileStore &store, std::string_view name, std::string_view text) {
    store.Write(program_key, name, text);
  }

  static std::string Text(SettingsFileStore &store, std::string_view name, std::string_view key = program_key) {
    const std::optional<StoredValue> value = store.Read(key, name);
    return value ? std::get<std::string>(*value) : "missing";
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace borvane
