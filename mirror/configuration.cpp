#include "configuration.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringDecoder>
#include <algorithm>
#include <utility>

#include "command_line.h"
#include "live_configuration.h"
#include "toml_reader.h"

namespace borvane::mirror {

namespace {

constexpr qint64 largest_configuration = 1'000'000;  // bytes

void ReadOption(TomlReader &toml, const QString &name, const toml::node &node, Options &options) {
  const bool is_list = name == "host";
  if (is_list)
    options.hosts.clear();
  const QStringList texts = is_list ? toml.ReadTexts(name, node) : QStringList();
  const std::optional<QString> text = is_list ? std::nullopt : toml.ReadText(name, node);
  for (const QString &value : text ? QStringList(*text) : texts) {
    const bool is_path = name == "catalogue" || name == "attended";
    const QString fault = SetValue(options, name, is_path ? toml.PathOf(value) : value);
    if (!fault.isEmpty())
      toml.Fault(node.source(), name + ": " + fault);
    else if (name == "store" && options.store.IsFile())
      options.store.file = toml.PathOf(options.store.file);
  }
}

void ReadArea(TomlReader &toml, const toml::table &table, std::vector<NamedBox> &boxes) {
  NamedBox area = {};
  int edges = 0;
  const auto read_edge = [&](double &edge, const QString &name, const toml::node &node, int most) {
    edge = toml.ReadDegrees(name, node, most).value_or(0);
    ++edges;
  };
  for (const auto &[key, node] : table) {
    const QString name = TextOf(key.str());
    if (name == "name")
      area.name = toml.ReadText(name, node).value_or(QString());
    else if (name == "south")
      read_edge(area.box.south, name, node, 90);
    else if (name == "north")
      read_edge(area.box.north, name, node, 90);
    else if (name == "west")
      read_edge(area.box.west, name, node, 180);
    else if (name == "east")
      read_edge(area.box.east, name, node, 180);
    else
      toml.UnknownKey(key);
  }
  const std::span<const Area> areas = Areas();
  if (std::none_of(areas.begin(), areas.end(), [&](const Area &known) { return area.name == known.name; }))
    toml.Fault(table.source(), "there is no area \"" + area.name + '"');
  else if (std::any_of(boxes.begin(), boxes.end(), [&](const NamedBox &other) { return other.name == area.name; }))
    toml.Fault(table.source(), "there is another area of the name \"" + area.name + '"');
  else if (edges < 4)
    toml.Fault(table.source(), "an area needs south, north, west and east");
  else if (area.box.south > area.box.north)
    toml.Fault(table.source(), "south must not be greater than north");
  boxes.push_back(std::move(area));
}

void ReadRoot(TomlReader &toml, const toml::table &root, Options &options) {
  for (const auto &[key, node] : root) {
    const QString name = TextOf(key.str());
    if (name == "offline")
      options.offline = toml.ReadTruth(name, node).value_or(options.offline);
    else if (name == "live")
      ReadLive(toml, node, options.live);
    else if (name == "source")
      ReadSources(toml, node, options.live);
    else if (name == "area")
      toml.ForEachTable(node, name, [&](const toml::table &table) { ReadArea(toml, table, options.boxes); });
    else if (ValueNames().contains(name))
      ReadOption(toml, name, node, options);
    else
      toml.UnknownKey(key);
  }
}

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
  try {
    TomlReader toml(file);
    configuration.options = options;
    ReadRoot(toml, ParseToml(decoded), configuration.options);
    for (const auto &[line, what] : toml.TakeFaults())
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
