#include "settings/values.h"

#include "core/registry.h"

namespace borvane {

namespace {

const StoredSetting &RowOf(Setting setting) { return stored_settings[static_cast<std::size_t>(setting)]; }

}  // namespace

std::string ReadSetting(Setting setting) {
  const StoredSetting &row = RowOf(setting);
  std::string stored = ReadRegValue(HKEY_CURRENT_USER, program_key, row.name);
  if (stored.empty())
    stored = row.when_missing;
  return stored;
}

void SaveSetting(Setting setting, std::string_view text) {
  SaveRegValue(HKEY_CURRENT_USER, program_key, RowOf(setting).name, text);
}

}  // namespace borvane
