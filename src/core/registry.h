#pragma once

#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace borvane {

inline constexpr Hive HKEY_CURRENT_USER = Hive::CurrentUser;

/// The key that holds all of the program's values.
inline constexpr std::string_view program_key = R"(Software\Nalvorin\Borvane)";

/// Stores `text` under `name` in `key`. A write that fails does nothing and reports nothing.
void SaveRegValue(Hive hive, std::string_view key, std::string_view name, std::string_view text);

/// The value `name` of `key` as text, a number in its decimal form; empty when the key or the value is missing or holds
/// something else.
std::string ReadRegValue(Hive hive, std::string_view key, std::string_view name);

}  // namespace borvane
