#pragma once

#include <QHostAddress>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "common/hosts.h"
#include "feeds/feed.h"
#include "log/log.h"
#include "pages/areas.h"
#include "store/store_address.h"

namespace borvane::mirror {

/// Where today's events come from, and what becomes of them.
struct LiveOptions {
  std::vector<Source> sources;
  std::vector<Feed> feeds;
  int days_shown = 7;                  ///< how far back the lists go
  int days_kept = 400;                 ///< how long the store keeps an event
  QStringList kinds = {"earthquake"};  ///< of events that lists show; "all" for every kind
  QString authorities;                 ///< file of the certificates that are trusted; empty for the system's own
};

/// The feeds of the US Geological Survey: the week's each hour, the hour's each minute.
LiveOptions DefaultLiveOptions();

/// What the command line and the configuration file ask for.
struct Options {
  QString catalogue;                    ///< file of events; empty for the live catalogue or the bundled sample
  bool offline = false;                 ///< asks no feed
  std::vector<QHostAddress> addresses;  ///< where to listen; empty for both loopback addresses
  quint16 port = mirror_port;
  StoreAddress store = DefaultStoreAddress();  ///< of the maker's service
  QStringList hosts;                           ///< names, in lower case, by which monitors reach the maker's service
  QString newest_version = BORVANE_VERSION;    ///< that the maker's service reports
  QString attended;                            ///< folder of the socket for monitors; empty to run without them
  LogLevel log_level = LogLevel::Info;
  LiveOptions live = DefaultLiveOptions();
  std::vector<NamedBox> boxes;  ///< of named areas, in place of their own

  QString configuration;     ///< the file that is named on the command line; empty for the usual place
  bool checks_only = false;  ///< read the options, report what is wrong, and end
  bool help = false;
  bool version = false;

  /// Whether feeds are to be asked.
  bool IsLive() const { return !offline && catalogue.isEmpty(); }
};

/// What of `after` a running mirror that has begun with `before` cannot take up: the names of the options.
QStringList ChangedForTheNextStart(const Options &before, const Options &after);

/// The names of the options that have a value. A configuration file has them as keys, the command line with "--" in
/// front.
const QStringList &ValueNames();

/// Sets the option of that name to the value; returns what is wrong with it. `host` adds to those that there are.
QString SetValue(Options &options, const QString &name, const QString &value);

}  // namespace borvane::mirror
