#include "configuration.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "command_line.h"

// The parser asserts or, in a release, lets the compiler assume what a malformed text makes untrue, and reports the
// fault a few lines further on. It must get that far in every build.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expression) static_cast<void>(0)
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")

namespace borvane::mirror {

namespace {

using namespace std::chrono_literals;

constexpr qint64 largest_configuration = 1'000'000;  // bytes
constexpr std::size_t most_sources = 20;
constexpr std::size_t most_feeds = 100;
constexpr std::size_t most_kinds = 100;
constexpr qsizetype longest_name = 40;
constexpr qsizetype longest_value = 4'000;
constexpr int most_days = 3'660;
constexpr std::chrono::seconds shortest_period = 30s;
constexpr std::chrono::seconds longest_period = 24h * 7;
constexpr std::chrono::seconds longest_span = 24h * 366;

/// The text as the parser is given it. Version 3.3 of toml++ has no defined outcome for most characters beyond ASCII
/// where a blank may be, so each of them, and "~", becomes "~e9;". Where TOML has no place for the character, it has
/// none for this.
QByteArray AsciiOf(const QString &text) {
  QByteArray ascii;
  ascii.reserve(text.size());
  for (const QChar character : text) {
    if (character.unicode() < 0x80 && character != '~')
      ascii += character.toLatin1();
    else
      ascii.append('~').append(QByteArray::number(character.unicode(), 16)).append(';');
  }
  return ascii;
}

/// What the parser gives back, as it was.
QString TextOf(std::string_view parsed) {
  static const QRegularExpression escape("~([0-9a-f]{1,4});");
  const QString text = QString::fromUtf8(parsed.data(), static_cast<qsizetype>(parsed.size()));
  QString original;
  qsizetype end = 0;
  for (QRegularExpressionMatchIterator matches = escape.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    original += QStringView(text).sliced(end, match.capturedStart() - end);
    original += QChar(match.captured(1).toUShort(nullptr, 16));
    end = match.capturedEnd();
  }
  return original + text.sliced(end);
}

/// "90s", "5min", "1h" or "7d"; nothing for anything else.
std::optional<std::chrono::seconds> DurationOf(const QString &text) {
  static const QRegularExpression form(R"(\A([0-9]{1,7})(s|min|h|d)\z)");
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch())
    return std::nullopt;
  const std::chrono::seconds number(match.captured(1).toInt());
  const QString unit = match.captured(2);
  return number * (unit == "s" ? 1 : unit == "min" ? 60 : unit == "h" ? 3'600 : 86'400);
}

/// Reads a file's tables into options, and notes each fault with its line.
class ConfigurationReader {
 public:
  ConfigurationReader(const QString &file, Options options)
      : folder_(QFileInfo(file).absoluteDir()), options_(std::move(options)) {}

  void ReadAll(const toml::table &root) {
    for (const auto &[key, node] : root) {
      const QString name = TextOf(key.str());
      if (name == "offline")
        ReadOffline(node);
      else if (name == "live")
        ReadLive(node);
      else if (name == "source")
        ReadSources(node);
      else if (name == "area")
        ForEachTable(node, "area", [this](const toml::table &table) { ReadArea(table); });
      else if (ValueNames().contains(name))
        ReadOption(name, node);
      else
        Fault(key.source(), UnknownKey(name));
    }
  }

  Options TakeOptions() { return std::move(options_); }

  /// The faults in the order of their lines.
  std::vector<std::pair<unsigned, QString>> TakeFaults() {
    std::stable_sort(faults_.begin(), faults_.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    return std::move(faults_);
  }

 private:
  void Fault(const toml::source_region &place, const QString &what) { faults_.emplace_back(place.begin.line, what); }

  static QString UnknownKey(const QString &name) { return "unknown key \"" + name + '"'; }

  /// The text of a node; nothing, with a fault, when it is none. No text that the program uses has a control character.
  std::optional<QString> ReadText(const QString &name, const toml::node &node) {
    if (const toml::value<std::string> *value = node.as_string()) {
      const QString text = TextOf(value->get());
      const bool has_controls =
          std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
      if (!text.isEmpty() && text.size() <= longest_value && !has_controls)
        return text;
      Fault(node.source(), name + (text.isEmpty() ? ": needs a value" : ": is too long or has a control character"));
      return std::nullopt;
    }
    Fault(node.source(), name + ": must be a text in quotes");
    return std::nullopt;
  }

  /// The texts of a node, which is one text or an array of them.
  QStringList ReadTexts(const QString &name, const toml::node &node) {
    QStringList texts;
    const toml::array *array = node.as_array();
    if (!array) {
      if (const std::optional<QString> text = ReadText(name, node))
        texts.append(*text);
      return texts;
    }
    for (const toml::node &element : *array)
      if (const std::optional<QString> text = ReadText(name, element))
        texts.append(*text);
    return texts;
  }

  std::optional<int> ReadNumber(const QString &name, const toml::node &node, int least, int most) {
    const toml::value<std::int64_t> *value = node.as_integer();
    if (value && value->get() >= least && value->get() <= most)
      return static_cast<int>(value->get());
    Fault(node.source(), name + QString(": must be a whole number from %1 to %2").arg(least).arg(most));
    return std::nullopt;
  }

  std::optional<double> ReadDegrees(const QString &name, const toml::node &node, int most) {
    // It may be written without a point, and may be "nan".
    const std::optional<double> value = node.is_number() ? node.value<double>() : std::nullopt;
    if (value && *value >= -most && *value <= most)
      return value;
    Fault(node.source(), name + QString(": must be a number from -%1 to %1").arg(most));
    return std::nullopt;
  }

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

  void ReadOffline(const toml::node &node) {
    if (const toml::value<bool> *value = node.as_boolean())
      options_.offline = value->get();
    else
      Fault(node.source(), "offline: must be true or false");
  }

  void ReadOption(const QString &name, const toml::node &node) {
    const bool is_list = name == "host";
    if (is_list)
      options_.hosts.clear();
    const QStringList texts = is_list ? ReadTexts(name, node) : QStringList();
    const std::optional<QString> text = is_list ? std::nullopt : ReadText(name, node);
    for (const QString &value : text ? QStringList(*text) : texts) {
      const bool is_path = name == "catalogue" || name == "attended";
      const QString fault = SetValue(options_, name, is_path ? PathOf(value) : value);
      if (!fault.isEmpty())
        Fault(node.source(), name + ": " + fault);
      else if (name == "store" && options_.store.IsFile())
        options_.store.file = PathOf(options_.store.file);
    }
  }

  QString PathOf(const QString &name) const { return QDir::cleanPath(folder_.absoluteFilePath(name)); }

  void ReadLive(const toml::node &node) {
    const toml::table *table = node.as_table();
    if (!table) {
      Fault(node.source(), "live: must be a table with the heading [live]");
      return;
    }
    LiveOptions &live = options_.live;
    for (const auto &[key, value] : *table) {
      const QString name = TextOf(key.str());
      if (name == "days-shown")
        live.days_shown = ReadNumber(name, value, 1, most_days).value_or(live.days_shown);
      else if (name == "days-kept")
        live.days_kept = ReadNumber(name, value, 1, most_days).value_or(live.days_kept);
      else if (name == "kinds")
        live.kinds = ReadKinds(name, value);
      else if (name == "authorities")
        live.authorities = ReadReadableFile(name, value);
      else
        Fault(key.source(), UnknownKey(name));
    }
    if (live.days_kept < live.days_shown)
      Fault(table->source(), "days-kept must not be less than days-shown");
  }

  QString ReadReadableFile(const QString &name, const toml::node &node) {
    const std::optional<QString> text = ReadText(name, node);
    QString file = PathOf(text.value_or(QString()));
    const QFileInfo info(file);
    if (text && !(info.isFile() && info.isReadable()))
      Fault(node.source(), name + ": there is no file " + file + " that can be read");
    return file;
  }

  QStringList ReadKinds(const QString &name, const toml::node &node) {
    QStringList kinds = ReadTexts(name, node);
    if (static_cast<std::size_t>(kinds.size()) > most_kinds)
      Fault(node.source(), name + QString(": there may be at most %1").arg(most_kinds));
    if (const toml::array *array = node.as_array(); array && array->empty())
      Fault(node.source(), name + R"(: needs at least one kind, or "all")");
    return kinds;
  }

  /// The sources of the file take the place of the program's own. Of two, the one that is named first is believed.
  void ReadSources(const toml::node &node) {
    options_.live.sources.clear();
    options_.live.feeds.clear();
    ForEachTable(node, "source", [this](const toml::table &table) { ReadSource(table); });
    const int count = static_cast<int>(options_.live.sources.size());
    for (int i = 0; i < count; ++i)
      options_.live.sources[static_cast<std::size_t>(i)].rank = count - i;
    if (options_.live.sources.size() > most_sources || options_.live.feeds.size() > most_feeds)
      Fault(node.source(), QString("there may be at most %1 sources with %2 feeds").arg(most_sources).arg(most_feeds));
  }

  void ReadSource(const toml::table &table) {
    Source source;
    const std::size_t feeds_before = options_.live.feeds.size();
    for (const auto &[key, node] : table) {
      const QString name = TextOf(key.str());
      if (name == "name")
        source.name = ReadText(name, node).value_or("?");
      else if (name == "credit")
        source.credit = ReadText(name, node).value_or("?");
      else if (name == "feed")
        ForEachTable(node, "source.feed", [this](const toml::table &feed) { ReadFeed(feed); });
      else
        Fault(key.source(), UnknownKey(name));
    }
    const std::vector<Source> &others = options_.live.sources;
    if (source.name.isEmpty() || source.credit.isEmpty())
      Fault(table.source(), "a source needs a name and a credit");
    else if (source.name.size() > longest_name)
      Fault(table.source(), QString("name: must not have more than %1 characters").arg(longest_name));
    else if (std::any_of(others.begin(), others.end(), [&](const Source &other) { return other.name == source.name; }))
      Fault(table.source(), "there is another source of the name \"" + source.name + '"');
    if (options_.live.feeds.size() == feeds_before)
      Fault(table.source(), "a source needs a [[source.feed]]");
    options_.live.sources.push_back(std::move(source));
  }

  void ReadFeed(const toml::table &table) {
    Feed feed;
    feed.source = static_cast<int>(options_.live.sources.size());
    for (const auto &[key, node] : table) {
      const QString name = TextOf(key.str());
      if (name == "url")
        feed.url = ReadUrl(name, node);
      else if (name == "form")
        feed.form = ReadForm(name, node);
      else if (name == "period")
        feed.period = ReadDuration(name, node, longest_period);
      else if (name == "span")
        feed.span.whole = ReadSpan(name, node);
      else
        Fault(key.source(), UnknownKey(name));
    }
    if (feed.url.isEmpty())
      Fault(table.source(), "a feed needs a url");
    // A relay of one's own may be asked as often as one likes.
    else if (feed.period < shortest_period && !feed.url.startsWith("http:"))
      Fault(table.source(), QString("period: must not be less than %1s").arg(shortest_period.count()));
    options_.live.feeds.push_back(std::move(feed));
  }

  QString ReadUrl(const QString &name, const toml::node &node) {
    const std::optional<QString> text = ReadText(name, node);
    if (!text)
      return "?";
    const QUrl url(*text, QUrl::StrictMode);
    const bool is_web = url.scheme() == "https" || url.scheme() == "http";
    if (!url.isValid() || !is_web || url.host().isEmpty() || !url.userInfo().isEmpty() || url.hasFragment()) {
      Fault(node.source(), name + ": must be an address of https, or of http, without a user and a fragment");
      return "?";
    }
    return url.toString(QUrl::FullyEncoded);
  }

  FeedForm ReadForm(const QString &name, const toml::node &node) {
    const std::optional<QString> text = ReadText(name, node);
    if (text && *text != "summary" && *text != "event-text")
      Fault(node.source(), name + R"(: must be "summary" or "event-text")");
    return text == "event-text" ? FeedForm::EventText : FeedForm::Summary;
  }

  std::chrono::seconds ReadDuration(const QString &name, const toml::node &node, std::chrono::seconds most) {
    const std::optional<QString> text = ReadText(name, node);
    const std::optional<std::chrono::seconds> duration = text ? DurationOf(*text) : std::nullopt;
    if (duration && *duration >= 1s && *duration <= most)
      return *duration;
    if (text)
      Fault(node.source(),
            name + QString(R"(: must be a time such as "90s", "5min", "1h" or "7d", at most %1 days)").arg(most / 24h));
    return most;
  }

  std::optional<std::chrono::seconds> ReadSpan(const QString &name, const toml::node &node) {
    if (node.value<std::string_view>() == "recent")
      return std::nullopt;
    return ReadDuration(name, node, longest_span);
  }

  void ReadArea(const toml::table &table) {
    NamedBox area = {};
    int edges = 0;
    const auto read_edge = [&](double &edge, const QString &name, const toml::node &node, int most) {
      edge = ReadDegrees(name, node, most).value_or(0);
      ++edges;
    };
    for (const auto &[key, node] : table) {
      const QString name = TextOf(key.str());
      if (name == "name")
        area.name = ReadText(name, node).value_or(QString());
      else if (name == "south")
        read_edge(area.box.south, name, node, 90);
      else if (name == "north")
        read_edge(area.box.north, name, node, 90);
      else if (name == "west")
        read_edge(area.box.west, name, node, 180);
      else if (name == "east")
        read_edge(area.box.east, name, node, 180);
      else
        Fault(key.source(), UnknownKey(name));
    }
    const std::span<const Area> areas = Areas();
    if (std::none_of(areas.begin(), areas.end(), [&](const Area &known) { return area.name == known.name; }))
      Fault(table.source(), "there is no area \"" + area.name + '"');
    else if (std::any_of(options_.boxes.begin(), options_.boxes.end(),
                         [&](const NamedBox &other) { return other.name == area.name; }))
      Fault(table.source(), "there is another area of the name \"" + area.name + '"');
    else if (edges < 4)
      Fault(table.source(), "an area needs south, north, west and east");
    else if (area.box.south > area.box.north)
      Fault(table.source(), "south must not be greater than north");
    options_.boxes.push_back(std::move(area));
  }

  const QDir folder_;
  Options options_;
  std::vector<std::pair<unsigned, QString>> faults_;
};

/// The configuration file that is read when the command line names none; empty for none.
QString UsualFile() {
  const QString named = QFile::decodeName(qgetenv("BORVANE_MIRROR_CONFIG"));
  return named.isEmpty() ? QStandardPaths::locate(QStandardPaths::AppConfigLocation, "mirror.toml") : named;
}

/// The text of the file, or what keeps it from being read.
std::pair<QByteArray, QString> TextOfFile(const QString &name) {
  // A pipe or a device would keep the program waiting.
  if (const QFileInfo info(name); info.exists() && !info.isFile())
    return {{}, "not a file"};
  QFile file(name);
  const bool is_open = file.open(QIODevice::ReadOnly);
  if (file.size() > largest_configuration)
    return {{}, QString("larger than %1 bytes").arg(largest_configuration)};
  const QByteArray text = is_open ? file.readAll() : QByteArray();
  if (!is_open || file.error() != QFileDevice::NoError)
    return {{}, file.errorString()};
  return {text, {}};
}

}  // namespace

Configuration ReadConfiguration(const QByteArray &text, const QString &file, Options options) {
  Configuration configuration;
  const auto add_fault = [&](unsigned line, const QString &what) {
    configuration.faults.append(QString("%1:%2: ").arg(file).arg(line) + what);
  };
  QStringDecoder decoder("UTF-8");
  const QString decoded = decoder.decode(text);
  if (decoder.hasError()) {
    configuration.options = std::move(options);
    add_fault(1, "the file is not in UTF-8");
    return configuration;
  }
  const QByteArray ascii = AsciiOf(decoded);
  try {
    const toml::table root = toml::parse(std::string_view(ascii.constData(), static_cast<std::size_t>(ascii.size())));
    ConfigurationReader reader(file, options);
    reader.ReadAll(root);
    configuration.options = reader.TakeOptions();
    for (const auto &[line, what] : reader.TakeFaults())
      add_fault(line, what);
  } catch (const toml::parse_error &error) {
    configuration.options = std::move(options);
    add_fault(error.source().begin.line, TextOf(error.description()));
  }
  return configuration;
}

Setup ReadSetup(const QStringList &arguments) {
  CommandLine line = ReadCommandLine(arguments);
  Setup setup = {.options = std::move(line.options), .file = {}, .usage = std::move(line.fault), .faults = {}};
  if (!setup.usage.isEmpty() || setup.options.help || setup.options.version)
    return setup;
  setup.file = setup.options.configuration.isEmpty() ? UsualFile() : setup.options.configuration;
  if (setup.file.isEmpty())
    return setup;

  const auto &[text, fault] = TextOfFile(setup.file);
  if (!fault.isEmpty()) {
    setup.faults.append(setup.file + ": " + fault);
    return setup;
  }
  Configuration configuration = ReadConfiguration(text, setup.file);
  setup.faults = std::move(configuration.faults);
  // A monitor expects the mirror that it starts at the usual place.
  if (!setup.options.attended.isEmpty()) {
    configuration.options.addresses = {};
    configuration.options.port = mirror_port;
  }
  setup.options = ReadCommandLine(arguments, std::move(configuration.options)).options;
  return setup;
}

}  // namespace borvane::mirror
