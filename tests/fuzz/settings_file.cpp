#include "desktop/services/settings_file.h"

#include <cstdint>
#include <cstdlib>

#include "desktop/windows_1252.h"

// Any bytes: all values of a settings file have some meaning, and a file that is written with them is whole and holds
// them again.

namespace {

using namespace borvane;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const SettingsSections sections = ReadSections(content);
  for (const auto &[section, values] : sections)
    for (const auto &[name, raw] : values)
      ValueOf(raw);

  const QByteArray written = WriteSections(sections);
  Require(ReadSections(written) == sections);
  if (IsWholeSettingsFile(content))
    Require(IsWholeSettingsFile(written));

  const StoredValue value = ValueOf(RawText(ShownText(content.toStdString())));
  Require(std::get<std::string>(value) == content.toStdString());
  return 0;
}
