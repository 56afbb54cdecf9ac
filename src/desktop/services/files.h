#pragma once

#include "platform/files.h"

namespace borvane {

/// The files of the computer.
class DesktopFiles final : public Files {
 public:
  std::optional<std::string> SpecialFolder(std::int32_t number) override;
  bool Exists(std::string_view path) override;
  void MakeFolder(std::string_view path) override;
  FileState StateOf(std::string_view path) override;
  bool Read(std::string_view path, const std::function<void(std::string_view)> &take) override;
  FileState Append(std::string_view path, std::string_view text) override;
};

}  // namespace borvane
