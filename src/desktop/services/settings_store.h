#pragma once

#include <QByteArray>
#include <QString>

#include "platform/settings_store.h"

namespace borvane {

/// The program's settings: a file Nalvorin/Borvane.conf in the user's folder for configuration. A changed value is on
/// the disk when Write returns; an unchanged one is not written. Other running Borvanes share the store, value by
/// value.
class QtSettingsStore final : public SettingsStore {
 public:
  QtSettingsStore();

  std::optional<StoredValue> Read(Hive hive, std::string_view key, std::string_view name) override;
  void Write(Hive hive, std::string_view key, std::string_view name, std::string_view text) override;

  /// The file that keeps the values; on Windows, their place in the registry.
  const QString &FileName() const { return file_name_; }

 private:
  /// The file's content; nothing when it cannot be read.
  std::optional<QByteArray> Content();

  QString file_name_;
  QByteArray last_content_;  ///< as it was when it could be read
  int patience_ = 0;         ///< for another Borvane that is writing, in milliseconds
};

}  // namespace borvane
