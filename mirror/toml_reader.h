#pragma once

#include <QDir>
#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

// With NDEBUG the parser's assertions become assumptions of the optimiser. A malformed text violates some of them
// before the parser reports it, and it must get that far in every build.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expression) static_cast<void>(0)
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")

namespace borvane::mirror {

/// Parses a file of TOML. What is no TOML throws toml::parse_error. Names, values and the description of the error are
/// texts of the parser's own: TextOf gives them back as they were.
toml::table ParseToml(const QString &text);

/// What the parser gives back, as it was.
QString TextOf(std::string_view parsed);

/// Reads the values in a file's tables, and notes each fault with its line.
class TomlReader {
 public:
  explicit TomlReader(const QString &file);

  void Fault(const toml::source_region &place, const QString &what) { faults_.emplace_back(place.begin.line, what); }
  void UnknownKey(const toml::key &key) { Fault(key.source(), "unknown key \"" + TextOf(key.str()) + '"'); }

  /// The faults in the order of their lines.
  std::vector<std::pair<unsigned, QString>> TakeFaults();

  // Each of the following notes a fault under the name where the node has no such value.

  /// The text of a node. No text that the program uses has a control character.
  std::optional<QString> ReadText(const QString &name, const toml::node &node);

  /// The texts of a node, which is one text or an array of them.
  QStringList ReadTexts(const QString &name, const toml::node &node);

  std::optional<bool> ReadTruth(const QString &name, const toml::node &node);
  std::optional<int> ReadNumber(const QString &name, const toml::node &node, int least, int most);

  /// From `-most` to `most`.
  std::optional<double> ReadDegrees(const QString &name, const toml::node &node, int most);

  /// From a second to `most`, which is also taken for what is no time.
  std::chrono::seconds ReadDuration(const QString &name, const toml::node &node, std::chrono::seconds most);

  /// A file that is there and can be read.
  QString ReadReadableFile(const QString &name, const toml::node &node);

  /// Calls `read` with each table of an array of them, "[[name]]".
  template <class Read>
  void ForEachTable(const toml::node &node, const QString &name, const Read &read) {
    const toml::array *array = node.as_array();
    if (!array || !array->is_homogeneous<toml::table>()) {
      Fault(node.source(), name + ": must be tables, each with the heading [[" + name + "]]");
      return;
    }
    for (const toml::node &element : *array)
      read(*element.as_table());
  }

  /// The path of a file that is named relative to the folder of the file that is read.
  QString PathOf(const QString &name) const { return QDir::cleanPath(folder_.absoluteFilePath(name)); }

 private:
  const QDir folder_;
  std::vector<std::pair<unsigned, QString>> faults_;
};

}  // namespace borvane::mirror
