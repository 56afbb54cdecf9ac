#include "desktop/settings/settings_file.h"

#include <QByteArrayList>
#include <cstdint>
#include <cstdlib>

// Any bytes: a repaired file has no damage, a stored value is read back, and no other line changes.

namespace {

using namespace borvane;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

QByteArrayList LinesOf(const QByteArray &content) {
  if (content.isEmpty())
    return {};
  return content.endsWith('\n') ? content.chopped(1).split('\n') : content.split('\n');
}

/// Stores a value and returns the new content.
QByteArray Store(const QByteArray &content, const QByteArray &section, const QString &text) {
  const bool is_new = !ValueIn(content, section, "Maker");
  QByteArray changed = WithValue(content, section, "Maker", text);
  Require(ValueIn(changed, section, "Maker") == text);
  Require(WithoutDamage(changed) == changed);

  // One line has changed or is new, and the rest is unchanged.
  const QByteArrayList before = LinesOf(content);
  const QByteArrayList after = LinesOf(changed);
  qsizetype same = 0;
  while (same < before.size() && same < after.size() && before[same] == after[same])
    ++same;
  const qsizetype rest = before.size() - same - (is_new ? 0 : 1);
  Require(rest <= 0 || before.last(rest) == after.last(rest));
  return changed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const QByteArray whole = WithoutDamage(content);
  Require(WithoutDamage(whole) == whole);
  for (const char *section : {"General", "Hosts"}) {
    // Whatever a text contains, including what would be a line of its own.
    const QByteArray changed = Store(whole, section, QString::fromLatin1(content));
    Store(changed, section, "127.0.0.1:80");
  }
  return 0;
}
