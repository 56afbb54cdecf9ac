#include "settings/values.h"

#include "core/registry.h"

namespace borvane {

std::string ReadSetting(Setting setting) { return ReadRegValue(HKEY_CURRENT_USER, program_key, NameOf(setting)); }

void SaveSetting(Setting setting, std::string_view text) {
  SaveRegValue(HKEY_CURRENT_USER, program_key, NameOf(setting), text);
}

}  // namespace borvane
