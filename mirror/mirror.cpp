#include "mirror.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <functional>

#include "catalogue/sample.h"
#include "common/attendance.h"
#include "configuration.h"
#include "mirror_version_at.h"
#include "open_files.h"

namespace borvane::mirror {

namespace {

/// How long the first page waits for the events of the store. Who gets the sample instead, because the disk is slow,
/// has it until the next refresh.
constexpr int first_page_timeout_ms = 1'000;

/// How long the end waits for the store.
constexpr int end_timeout_ms = 2'000;

QString AddressText(const QHostAddress &address, quint16 port) {
  const bool is_ipv6 = address.protocol() == QAbstractSocket::IPv6Protocol;
  return QString(is_ipv6 ? "[%1]:%2" : "%1:%2").arg(address.toString()).arg(port);
}

/// What is logged when a mirror of that version listens at `place`.
QString AlreadyServed(const QString &place, const QString &version) {
  if (version == BORVANE_VERSION)
    return QString("another borvane-mirror already serves %1").arg(place);
  return QString("borvane-mirror %2 already serves %1; this is version %3").arg(place, version, BORVANE_VERSION);
}

/// The server's limits, with no more connections than this process may have files open. The system gives no answer to
/// one more, and nothing else could be opened, the catalogue among it.
Limits LimitsOfThisProcess() {
  constexpr int other_files = 30 + RepeatedBodies::most;
  constexpr int fewest_connections = 10;
  Limits limits;
  const int files = AllowOpenFiles(limits.connections + limits.refusals + other_files);
  const int connections = std::max(fewest_connections, files - other_files);
  limits.refusals = std::min(limits.refusals, connections / 5);
  limits.connections = connections - limits.refusals;
  limits.connections_of_a_client = std::max(fewest_connections, limits.connections / 4);
  return limits;
}

}  // namespace

Mirror::Mirror(Options options, QStringList arguments)
    : options_(std::move(options)),
      begun_with_(options_),
      arguments_(std::move(arguments)),
      service_({.store = options_.store,
                .newest_version = options_.newest_version,
                .hosts = options_.hosts,
                .clock = QDateTime::currentMSecsSinceEpoch,
                .log = std::cref(log_)}),
      server_(LimitsOfThisProcess(), router_) {
  log_.SetLeast(options_.log_level);
}

Mirror::~Mirror() {
  if (!live_)
    return;
  poller_->Stop();
  live_->Finish(end_timeout_ms);
}

std::optional<int> Mirror::Start() {
  if (const std::optional<int> status = Listen())
    return status;
  if (!options_.attended.isEmpty())
    if (const std::optional<int> status = WaitForMonitors())
      return status;
  for (const QString &host : options_.hosts)
    if (EndpointOfMirrorHost(host.toStdString()))
      log_(LogLevel::Warning, "the host \"" + host +
                                  "\" begins with the label of a network: under that name only this network's pages "
                                  "are served");
  ReadCatalogue();
  for (const QHostAddress &address : options_.addresses)
    std::printf("borvane-mirror listening on %s\n", qPrintable(AddressText(address, options_.port)));
  std::fflush(stdout);
  return std::nullopt;
}

void Mirror::Reread() {
  const Setup setup = ReadSetup(arguments_);
  for (const QString &fault : setup.faults)
    log_(LogLevel::Error, fault);
  if (!setup.faults.isEmpty()) {
    log_(LogLevel::Error, "the configuration has faults and stays as it was");
    return;
  }
  log_.SetLeast(setup.options.log_level);
  for (const QString &name : ChangedForTheNextStart(begun_with_, setup.options))
    log_(LogLevel::Warning, "the changed \"" + name + "\" takes effect at the next start");
  if (live_ && setup.options.live.days_shown > begun_with_.live.days_shown)
    log_(LogLevel::Warning, "with the larger \"days-shown\" the lists are complete only after the next start");
  options_.boxes = setup.options.boxes;
  options_.live.days_shown = setup.options.live.days_shown;
  options_.live.kinds = setup.options.live.kinds;
  facts_.areas = AreasWith(options_.boxes);
  if (!live_ || !live_->Show(options_.live.days_shown, options_.live.kinds))
    Publish(catalogue_, facts_);
  log_(LogLevel::Info, "the configuration has been read again");
}

void Mirror::ReadCatalogue() {
  facts_.areas = AreasWith(options_.boxes);
  if (!options_.catalogue.isEmpty()) {
    ReadFile();
    return;
  }
  PageFacts facts = facts_;
  facts.origin = "the bundled sample catalogue";
  facts.is_sample = true;
  Publish(std::make_shared<Catalogue>(SampleEvents()), facts);
  if (options_.IsLive())
    StartLive();
}

void Mirror::ReadFile() {
  PageFacts facts = facts_;
  facts.origin = options_.catalogue;
  Publish(std::make_shared<Catalogue>(), facts);
  const auto take = [this](CatalogueReading reading) {
    if (reading.left_out > 0)
      log_(LogLevel::Warning, QString("%1: skipped %2 of %3 features without a usable id, time or epicentre")
                                  .arg(options_.catalogue)
                                  .arg(reading.left_out)
                                  .arg(reading.left_out + static_cast<int>(reading.events.size())));
    Publish(std::make_shared<Catalogue>(std::move(reading.events)), facts_);
  };
  file_ = std::make_unique<CatalogueFile>(options_.catalogue, take, log_.At(LogLevel::Warning));
  file_->Start();
}

void Mirror::StartLive() {
  const LiveOptions &live = options_.live;
  live_ = std::make_unique<LiveCatalogue>(
      LiveCatalogue::Settings{.store = options_.store,
                              .sources = live.sources,
                              .feeds = live.feeds,
                              .days_shown = live.days_shown,
                              .kinds_listed = live.kinds,
                              .retention = {.days = live.days_kept},
                              .clock = QDateTime::currentMSecsSinceEpoch},
      LiveCatalogue::Callbacks{
          .changed = [this](std::shared_ptr<const Catalogue> catalogue) { ShowLive(std::move(catalogue)); },
          .restored = [this] { ForgetAnswers(); },
          .may_poll = [this](bool may_poll) { LetPoll(may_poll); },
          .log = std::cref(log_)});
  FeedPoller::Surroundings surroundings;
  surroundings.authorities = live.authorities;
  poller_ = std::make_unique<FeedPoller>(
      live.feeds, [this](const Feed &feed, const FeedReading &reading) { return TakeReading(feed, reading); },
      std::cref(log_), std::move(surroundings));
  live_->Start(first_page_timeout_ms);
}

void Mirror::LetPoll(bool may_poll) {
  may_poll ? poller_->Start() : poller_->Stop();
  if (!may_poll)
    asking_since_ = 0;
  else if (asking_since_ == 0)
    asking_since_ = QDateTime::currentMSecsSinceEpoch();
}

/// While another mirror asks the feeds, it takes up what the last answers to this one did not have.
void Mirror::ForgetAnswers() {
  if (!poller_->IsRunning())
    poller_->ForgetAnswers();
}

/// The events and the facts about them from now on.
void Mirror::Publish(std::shared_ptr<const Catalogue> catalogue, PageFacts facts) {
  catalogue_ = std::move(catalogue);
  facts_ = std::move(facts);
  site_.SetCatalogue(catalogue_, facts_);
}

void Mirror::ShowLive(std::shared_ptr<const Catalogue> catalogue) {
  PageFacts facts = {.areas = facts_.areas};
  QStringList names;
  for (const Source &source : options_.live.sources) {
    facts.sources.push_back({.name = source.name, .text = source.credit});
    names.append(source.name);
  }
  for (const Feed &feed : options_.live.feeds)
    if (QUrl(feed.url).host() == "earthquake.usgs.gov")
      facts.sources[static_cast<std::size_t>(feed.source)].is_survey = true;
  const int days = options_.live.days_shown;
  facts.origin =
      (days == 1 ? QString("the last day") : QString("the last %1 days").arg(days)) + " of " + names.join(", ");
  if (const qint64 time = live_->TimeOfData(); time != 0)
    facts.data_time = time;
  Publish(std::move(catalogue), std::move(facts));
}

QString Mirror::TakeReading(const Feed &feed, const FeedReading &reading) {
  QString fault = live_->Take(feed, reading);
  // What a feed confirms is newer data, though no event has changed.
  if (!facts_.is_sample && facts_.data_time != live_->TimeOfData())
    ShowLive(catalogue_);
  return fault;
}

Status Mirror::Look() const {
  Status status = {.now = QDateTime::currentMSecsSinceEpoch(),
                   .traffic = server_.traffic(),
                   .connections = server_.Connections(),
                   .events = catalogue_->events().size(),
                   .is_live = live_ != nullptr,
                   .service_store_works = service_.StoreWorks()};
  if (live_) {
    status.data_time = live_->TimeOfData();
    status.feeds = poller_->States();
    status.asking_since = asking_since_;
    status.event_store_works = live_->store().Works();
    status.unwritten_events = live_->store().Unwritten();
  }
  return status;
}

std::optional<int> Mirror::Listen() {
  const bool loopback = options_.addresses.empty();
  if (loopback)
    options_.addresses = {QHostAddress::LocalHost};
  const Listening first = ListenAt(options_.addresses.front());
  if (first != Listening::Begun)
    return first == Listening::MirrorIsThere ? 0 : 1;

  // IPv6 may be switched off, which is no reason to serve nothing.
  if (loopback) {
    const Listening second = ListenAt(QHostAddress::LocalHostIPv6);
    if (second == Listening::ForeignIsThere)
      return 1;
    if (second == Listening::Begun)
      options_.addresses.emplace_back(QHostAddress::LocalHostIPv6);
    else
      log_(LogLevel::Warning, "continuing with IPv4 only");
  }
  return std::nullopt;
}

Mirror::Listening Mirror::ListenAt(const QHostAddress &address) {
  if (const std::optional<quint16> port = server_.Listen(address, options_.port)) {
    options_.port = *port;
    site_.SetPort(*port);
    return Listening::Begun;
  }
  const QString place = AddressText(address, options_.port);
  if (server_.ListenError() != QAbstractSocket::AddressInUseError) {
    log_(LogLevel::Error, QString("cannot listen on %1: %2").arg(place, server_.ListenErrorText()));
    return Listening::Impossible;
  }
  const std::optional<OtherMirror> other = MirrorAt(address, options_.port);
  if (other && other->has_our_pages) {
    log_(LogLevel::Warning, AlreadyServed(place, other->version));
    return Listening::MirrorIsThere;
  }
  if (other) {
    log_(LogLevel::Error,
         QString("cannot listen on %1: borvane-mirror %2 is there, whose pages this version cannot read")
             .arg(place, other->version));
    return Listening::ForeignIsThere;
  }
  log_(LogLevel::Error, QString("cannot listen on %1: another program listens there").arg(place));
  return Listening::ForeignIsThere;
}

std::optional<int> Mirror::WaitForMonitors() {
  monitors_ = std::make_unique<Monitors>([] { QCoreApplication::quit(); });
  const std::string socket = AttendanceSocket(QFile::encodeName(options_.attended).toStdString(), options_.port);
  const QString fault = monitors_->Start(QFile::decodeName(socket.c_str()));
  if (fault.isEmpty())
    return std::nullopt;
  log_(LogLevel::Error, fault);
  return 1;
}

}  // namespace borvane::mirror
