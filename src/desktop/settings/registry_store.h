#pragma once

#include "platform/settings_store.h"

namespace borvane {

/// The program's settings on Windows, where they are values of the registry.
class RegistryStore final : public SettingsStore {
 public:
  std::optional<StoredValue> Read(std::string_view key, std::string_view name) override;
  void Write(std::string_view key, std::string_view name, std::string_view text) override;
  void Delete(std::string_view key, std::string_view name) override;

  /// Windows itself keeps what the user has chosen about programs of the Run key.
  void EndStart() {}

  // Nothing is kept from one call to the next.
  void BeginEvent() override {}
  void EndEvent() override {}
  void WriteKept() {}
  void Finish() {}
};

}  // namespace borvane
