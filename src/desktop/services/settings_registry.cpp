#include <QtGlobal>

#include "desktop/services/settings_store.h"

// Elsewhere the store is a file.
#ifdef Q_OS_WIN

#include <QSettings>

#include "core/registry.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

QString PathOf(std::string_view key) { return QStringLiteral("HKEY_CURRENT_USER\\") + ShownText(key); }

}  // namespace

QtSettingsStore::QtSettingsStore() : file_name_(PathOf(program_key)) {}

std::optional<StoredValue> QtSettingsStore::Read(Hive /*hive*/, std::string_view key, std::string_view name) {
  const QVariant value = QSettings(PathOf(key), QSettings::NativeFormat).value(ShownText(name));
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return {};
    case QMetaType::QString:
      return ProgramText(value.toString());
    case QMetaType::Int:
    case QMetaType::UInt:
      return static_cast<std::uint32_t>(value.toLongLong());
    default:
      return OtherValue{};
  }
}

void QtSettingsStore::Write(Hive /*hive*/, std::string_view key, std::string_view name, std::string_view text) {
  QSettings settings(PathOf(key), QSettings::NativeFormat);
  const QVariant stored = settings.value(ShownText(name));
  if (stored.typeId() != QMetaType::QString || stored.toString() != ShownText(text))
    settings.setValue(ShownText(name), ShownText(text));
}

}  // namespace borvane

#endif
