#include "desktop/settings/registry_store.h"

#include <QtGlobal>

// Elsewhere the store is a file.
#ifdef Q_OS_WIN

#include <QSettings>

#include "desktop/windows_1252.h"

namespace borvane {

namespace {

QString PathOf(std::string_view key) { return QStringLiteral("HKEY_CURRENT_USER\\") + UnicodeText(key); }

}  // namespace

std::optional<StoredValue> RegistryStore::Read(std::string_view key, std::string_view name) {
  const QVariant value = QSettings(PathOf(key), QSettings::NativeFormat).value(UnicodeText(name));
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

void RegistryStore::Write(std::string_view key, std::string_view name, std::string_view text) {
  QSettings settings(PathOf(key), QSettings::NativeFormat);
  const QVariant stored = settings.value(UnicodeText(name));
  if (stored.typeId() != QMetaType::QString || stored.toString() != UnicodeText(text))
    settings.setValue(UnicodeText(name), UnicodeText(text));
}

void RegistryStore::Delete(std::string_view key, std::string_view name) {
  QSettings(PathOf(key), QSettings::NativeFormat).remove(UnicodeText(name));
}

}  // namespace borvane

#endif
