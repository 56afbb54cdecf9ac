#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace borvane {

/// A stored value: a text, a 32-bit number, or something else that the program does not read.
struct OtherValue {};
using StoredValue = std::variant<std::string, std::uint32_t, OtherValue>;

/// Keeps the user's texts by key and name across runs. `key` is like "Software\Nalvorin\Borvane".
class SettingsStore {
 public:
  /// Nothing when the key or the value is missing.
  virtual std::optional<StoredValue> Read(std::string_view key, std::string_view name) = 0;

  /// Creates the key if need be. A write that fails does nothing and reports nothing.
  virtual void Write(std::string_view key, std::string_view name, std::string_view text) = 0;

  /// Deletes a value. Does nothing when there is none or it cannot be deleted.
  virtual void Delete(std::string_view key, std::string_view name) = 0;

  /// Around every event of the outside world; they nest. What is written within one may be kept and stored together,
  /// before the next one begins or it ends itself; a read finds what is kept. What other programs store meanwhile need
  /// not be noticed before then.
  virtual void BeginEvent() = 0;
  virtual void EndEvent() = 0;

 protected:
  ~SettingsStore() = default;
};

}  // namespace borvane
