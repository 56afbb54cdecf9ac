#include "core/registry.h"

#include <utility>

#include "basic/failure.h"
#include "basic/number.h"
#include "core/program.h"

namespace borvane {

namespace {

std::string QueryRegValueEx(std::string_view key, std::string_view name) {
  try {
    std::optional<StoredValue> value = platform().settings.Read(key, name);
    if (!value)
      return {};
    if (auto *text = std::get_if<std::string>(&*value))
      return std::move(*text);
    if (const auto *number = std::get_if<std::uint32_t>(&*value))
      return IntegerText(*number);
    return {};
  } catch (const RuntimeError &) {
    return {};
  }
}

}  // namespace

void SaveRegValue(Hive /*hive*/, std::string_view key, std::string_view name, std::string_view text) {
  platform().settings.Write(key, name, text);
}

std::string ReadRegValue(Hive /*hive*/, std::string_view key, std::string_view name) {
  return QueryRegValueEx(key, name);
}

}  // namespace borvane
