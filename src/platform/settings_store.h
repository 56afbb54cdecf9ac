#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace borvane {

/// The root of a settings key. There is one: what belongs to the user.
enum class Hive { CurrentUser };

/// A stored value: a text, a 32-bit number, or something else that the program does not read.
struct OtherValue {};
using StoredValue = std::variant<std::string, std::uint32_t, OtherValue>;

/// Keeps texts by key and name across runs. `key` is like "Software\Nalvorin\Borvane".
class SettingsStore {
 public:
  /// Nothing when the key or the value is missing.
  virtual std::optional<StoredValue> Read(Hive hive, std::string_view key, std::string_view name) = 0;

  /// Creates the key if need be. A write that fails does nothing and reports nothing.
  virtual void Write(Hive hive, std::string_view key, std::string_view name, std::string_view text) = 0;

 protected:
  ~SettingsStore() = default;
};

}  // namespace borvane
