#pragma once

#include <QStringList>
#include <memory>
#include <optional>

#include "catalogue/catalogue_file.h"
#include "feeds/feed_poller.h"
#include "http/router.h"
#include "http/server.h"
#include "live/live_catalogue.h"
#include "log/log.h"
#include "monitoring/monitoring.h"
#include "monitors.h"
#include "options.h"
#include "pages/site.h"
#include "service/service.h"

namespace borvane::mirror {

/// The program's parts joined: the catalogue's file or the live catalogue with its feeds, the pages made from it, the
/// maker's service, and the server that answers with them.
class Mirror {
 public:
  /// `arguments` are those of the program, to be read again.
  Mirror(Options options, QStringList arguments);

  /// Waits a moment for what the feeds gave to be in the store.
  ~Mirror();

  /// Begins to listen, reads the catalogue, and says on standard output where it listens. Returns the exit status when
  /// the mirror has to end already, with the reason in the log.
  std::optional<int> Start();

  /// Reads the configuration again and takes up what a running mirror can. A file with faults changes nothing.
  void Reread();

 private:
  /// How an attempt to listen ended.
  enum class Listening {
    Begun,
    MirrorIsThere,   ///< another mirror has the port
    ForeignIsThere,  ///< another program has the port, or a mirror of other pages
    Impossible,      ///< the address is none of this computer's
  };

  void ReadCatalogue();
  void ReadFile();
  void StartLive();
  void LetPoll(bool may_poll);
  void ForgetAnswers();
  void Publish(std::shared_ptr<const Catalogue> catalogue, PageFacts facts);
  void ShowLive(std::shared_ptr<const Catalogue> catalogue);
  QString TakeReading(const Feed &feed, const FeedReading &reading);
  Status Look() const;
  std::optional<int> Listen();
  Listening ListenAt(const QHostAddress &address);
  std::optional<int> WaitForMonitors();

  Log log_;
  Options options_;
  const Options begun_with_;
  const QStringList arguments_;
  std::shared_ptr<const Catalogue> catalogue_;
  PageFacts facts_;
  Site site_;
  Service service_;
  Monitoring monitoring_{[this] { return Look(); }};
  Router router_{{&service_, &monitoring_, &site_}};
  std::unique_ptr<CatalogueFile> file_;
  std::unique_ptr<LiveCatalogue> live_;
  std::unique_ptr<FeedPoller> poller_;  ///< gives to the live catalogue
  qint64 asking_since_ = 0;             ///< in milliseconds since 1970 UTC; 0 while the poller rests
  std::unique_ptr<Monitors> monitors_;
  Server server_;  ///< the last member: the port is free before a store that hangs is waited for
};

}  // namespace borvane::mirror
