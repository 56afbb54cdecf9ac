#include "settings/values.h"

#include "core/registry.h"

namespace borvane {

std::string ReadSetting(Setting setting) { return ReadRegValue(HKEY_CURRENT_USER, program_key, NameOf(setting)); }

std::string ReadSettingOrDefault(Setting setting) {
  std::string stored = ReadSetting(setting);
  return stored.empty() ? std::string(stored_settings[static_cast<std::size_t>(setting)].when_missing) : stored;
}

void SaveSetting(Setting setting, std::string_view text) {
  SaveRegValue(HKEY_CURRENT_USER, program_key, NameOf(setting), text);
}

}  // namespace borvane
