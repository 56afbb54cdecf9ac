#pragma once

#include <string>
#include <string_view>

namespace borvane {

/// The root of a key. There is one: the platform's store, which belongs to the user.
enum class Hive { CurrentUser };
inline constexpr Hive HKEY_CURRENT_USER = Hive::CurrentUser;

/// The key that holds all of the program's values.
inline constexpr std::string_view program_key = R"(Software\Nalvorin\Borvane)";

/// The key whose values are programs that the desktop starts at each login, by title.
inline constexpr std::string_view run_key = R"(Software\Microsoft\Windows\CurrentVersion\Run)";

/// Stores `text` under `name` in `key`. A write that fails does nothing and reports nothing.
void SaveRegValue(Hive hive, std::string_view key, std::string_view name, std::string_view text);

/// The value `name` of `key` as text, a number in its decimal form; empty when the key or the value is missing or holds
/// something else.
std::string ReadRegValue(Hive hive, std::string_view key, std::string_view name);

}  // namespace borvane
