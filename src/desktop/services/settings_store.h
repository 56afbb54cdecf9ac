#pragma once

#include <QSettings>
#include <QString>

#include "platform/settings_store.h"

namespace borvane {

/// The program's settings in the user's own store: the registry on Windows, a file Nalvorin/Borvane.conf in the folder
/// for configuration elsewhere. A changed value is on the disk when Write returns; an unchanged one is not written.
/// Other running Borvanes share the store, value by value.
class QtSettingsStore final : public SettingsStore {
 public:
  QtSettingsStore();

  std::optional<StoredValue> Read(Hive hive, std::string_view key, std::string_view name) override;
  void Write(Hive hive, std::string_view key, std::string_view name, std::string_view text) override;

  /// The file that keeps the values.
  QString FileName() const { return settings_.fileName(); }

 private:
  /// Takes up what others have written, and writes what is still to be written.
  void Synchronize();

  QSettings settings_;
};

}  // namespace borvane
