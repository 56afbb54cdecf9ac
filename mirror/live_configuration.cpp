#include "live_configuration.h"

#include <QUrl>
#include <algorithm>

#include "transfer/http_address.h"

namespace borvane::mirror {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t most_sources = 20;
constexpr std::size_t most_feeds = 100;
constexpr std::size_t most_kinds = 100;
constexpr qsizetype longest_name = 40;
constexpr int most_days = 3'660;
constexpr std::chrono::seconds shortest_period = 30s;
constexpr std::chrono::seconds longest_period = 24h * 7;
constexpr std::chrono::seconds longest_span = 24h * 366;

QStringList ReadKinds(TomlReader &toml, const QString &name, const toml::node &node) {
  QStringList kinds = toml.ReadTexts(name, node);
  if (static_cast<std::size_t>(kinds.size()) > most_kinds)
    toml.Fault(node.source(), name + QString(": there may be at most %1").arg(most_kinds));
  if (const toml::array *array = node.as_array(); array && array->empty())
    toml.Fault(node.source(), name + R"(: needs at least one kind, or "all")");
  return kinds;
}

QString ReadUrl(TomlReader &toml, const QString &name, const toml::node &node) {
  const std::optional<QString> text = toml.ReadText(name, node);
  if (!text)
    return "?";
  const QUrl url(*text, QUrl::StrictMode);
  const bool is_web = url.scheme() == "https" || url.scheme() == "http";
  if (!url.isValid() || !is_web || url.host().isEmpty() || !url.userInfo().isEmpty() || url.hasFragment()) {
    toml.Fault(node.source(), name + ": must be an address of https, or of http, without a user and a fragment");
    return "?";
  }
  QString address = url.toString(QUrl::FullyEncoded);
  // What fetches the feed is stricter: to it, "https://HOST?query" has no end of the host.
  if (!ParseHttpAddress(address.toStdString())) {
    toml.Fault(node.source(), name + R"(: must have a host, its port if need be, and a "/" after them)");
    return "?";
  }
  return address;
}

FeedForm ReadForm(TomlReader &toml, const QString &name, const toml::node &node) {
  const std::optional<QString> text = toml.ReadText(name, node);
  if (text && *text != "summary" && *text != "event-text")
    toml.Fault(node.source(), name + R"(: must be "summary" or "event-text")");
  return text == "event-text" ? FeedForm::EventText : FeedForm::Summary;
}

std::optional<std::chrono::seconds> ReadSpan(TomlReader &toml, const QString &name, const toml::node &node) {
  if (node.value<std::string_view>() == "recent")
    return std::nullopt;
  return toml.ReadDuration(name, node, longest_span);
}

void ReadFeed(TomlReader &toml, const toml::table &table, LiveOptions &live) {
  Feed feed;
  feed.source = static_cast<int>(live.sources.size());
  for (const auto &[key, node] : table) {
    const QString name = TextOf(key.str());
    if (name == "url")
      feed.url = ReadUrl(toml, name, node);
    else if (name == "form")
      feed.form = ReadForm(toml, name, node);
    else if (name == "period")
      feed.period = toml.ReadDuration(name, node, longest_period);
    else if (name == "span")
      feed.span.whole = ReadSpan(toml, name, node);
    else
      toml.UnknownKey(key);
  }
  if (feed.url.isEmpty())
    toml.Fault(table.source(), "a feed needs a url");
  // A relay of one's own may be asked as often as one likes.
  else if (feed.period < shortest_period && !feed.url.startsWith("http:"))
    toml.Fault(table.source(), QString("period: must not be less than %1s").arg(shortest_period.count()));
  live.feeds.push_back(std::move(feed));
}

void ReadSource(TomlReader &toml, const toml::table &table, LiveOptions &live) {
  Source source;
  const std::size_t feeds_before = live.feeds.size();
  for (const auto &[key, node] : table) {
    const QString name = TextOf(key.str());
    if (name == "name")
      source.name = toml.ReadText(name, node).value_or("?");
    else if (name == "credit")
      source.credit = toml.ReadText(name, node).value_or("?");
    else if (name == "feed")
      toml.ForEachTable(node, "source.feed", [&](const toml::table &feed) { ReadFeed(toml, feed, live); });
    else
      toml.UnknownKey(key);
  }
  const std::vector<Source> &others = live.sources;
  if (source.name.isEmpty() || source.credit.isEmpty())
    toml.Fault(table.source(), "a source needs a name and a credit");
  else if (source.name.size() > longest_name)
    toml.Fault(table.source(), QString("name: must not have more than %1 characters").arg(longest_name));
  else if (std::any_of(others.begin(), others.end(), [&](const Source &other) { return other.name == source.name; }))
    toml.Fault(table.source(), "there is another source of the name \"" + source.name + '"');
  if (live.feeds.size() == feeds_before)
    toml.Fault(table.source(), "a source needs a [[source.feed]]");
  live.sources.push_back(std::move(source));
}

}  // namespace

void ReadLive(TomlReader &toml, const toml::node &node, LiveOptions &live) {
  const toml::table *table = node.as_table();
  if (!table) {
    toml.Fault(node.source(), "live: must be a table with the heading [live]");
    return;
  }
  for (const auto &[key, value] : *table) {
    const QString name = TextOf(key.str());
    if (name == "days-shown")
      live.days_shown = toml.ReadNumber(name, value, 1, most_days).value_or(live.days_shown);
    else if (name == "days-kept")
      live.days_kept = toml.ReadNumber(name, value, 1, most_days).value_or(live.days_kept);
    else if (name == "kinds")
      live.kinds = ReadKinds(toml, name, value);
    else if (name == "authorities")
      live.authorities = toml.ReadReadableFile(name, value);
    else
      toml.UnknownKey(key);
  }
  if (live.days_kept < live.days_shown)
    toml.Fault(table->source(), "days-kept must not be less than days-shown");
}

void ReadSources(TomlReader &toml, const toml::node &node, LiveOptions &live) {
  live.sources.clear();
  live.feeds.clear();
  toml.ForEachTable(node, "source", [&](const toml::table &table) { ReadSource(toml, table, live); });
  const int count = static_cast<int>(live.sources.size());
  for (int i = 0; i < count; ++i)
    live.sources[static_cast<std::size_t>(i)].rank = count - i;
  if (live.sources.size() > most_sources || live.feeds.size() > most_feeds)
    toml.Fault(node.source(),
               QString("there may be at most %1 sources with %2 feeds").arg(most_sources).arg(most_feeds));
}

}  // namespace borvane::mirror
