#include "mirror.h"

#include <QCoreApplication>
#include <QDateTime>
#include <algorithm>
#include <cstdio>

#include "attendance.h"
#include "catalogue/sample.h"
#include "neighbour.h"
#include "open_files.h"

namespace borvane::mirror {

namespace {

/// Tells something on standard error.
void Tell(const QString &text) { std::fprintf(stderr, "borvane-mirror: %s\n", qPrintable(text)); }

QString AddressText(const QHostAddress &address, quint16 port) {
  const bool is_ipv6 = address.protocol() == QAbstractSocket::IPv6Protocol;
  return QString(is_ipv6 ? "[%1]:%2" : "%1:%2").arg(address.toString()).arg(port);
}

/// The server's limits, with no more connections than this process may have files open. The system gives no answer to
/// one more, and nothing else could be opened, the catalogue among it.
Limits LimitsOfThisProcess() {
  constexpr int other_files = 30;
  constexpr int fewest_connections = 10;
  Limits limits;
  const int files = AllowOpenFiles(limits.connections + limits.refusals + other_files);
  limits.connections = std::max(fewest_connections, files - limits.refusals - other_files);
  return limits;
}

}  // namespace

Mirror::Mirror(Options options)
    : options_(std::move(options)),
      service_({.store = options_.store,
                .newest_version = options_.newest_version,
                .clock = QDateTime::currentMSecsSinceEpoch,
                .tell = Tell}),
      server_(LimitsOfThisProcess(), [this](const Request &request, const QHostAddress &client, const Reply &reply) {
        AnswerTo(request, client, reply);
      }) {}

std::optional<int> Mirror::Start() {
  if (const std::optional<int> status = Listen())
    return status;
  if (options_.attended)
    if (const std::optional<int> status = WaitForMonitors())
      return status;
  ReadCatalogue();
  for (const QHostAddress &address : options_.addresses)
    std::printf("borvane-mirror listening on %s\n", qPrintable(AddressText(address, options_.port)));
  std::fflush(stdout);
  return std::nullopt;
}

void Mirror::ReadCatalogue() {
  if (options_.catalogue.isEmpty()) {
    site_.SetCatalogue(std::make_shared<Catalogue>(SampleEvents()), "the bundled sample catalogue");
    return;
  }
  site_.SetCatalogue(std::make_shared<Catalogue>(), options_.catalogue);
  const auto take = [this](CatalogueReading reading) {
    if (reading.left_out > 0)
      Tell(QString("%1: %2 of %3 features are left out, they have no usable id, time or epicentre")
               .arg(options_.catalogue)
               .arg(reading.left_out)
               .arg(reading.left_out + static_cast<int>(reading.events.size())));
    site_.SetCatalogue(std::make_shared<Catalogue>(std::move(reading.events)), options_.catalogue);
  };
  file_ = std::make_unique<CatalogueFile>(options_.catalogue, take, Tell);
  file_->Start();
}

void Mirror::AnswerTo(const Request &request, const QHostAddress &client, const Reply &reply) {
  if (Service::Serves(request.target) && KindOfHost(request.host).value_or(HostKind::Maker) == HostKind::Maker) {
    service_.Answer(request.method, request.target, client, [reply](const ServiceAnswer &answer) {
      Answer page = answer.status == 200 ? Answer{.type = answer.type, .body = answer.body} : StatusPage(answer.status);
      page.allow = "GET";
      reply(page);
    });
    return;
  }
  std::optional<QByteArray> page = site_.Page(request.target, request.host);
  reply(page ? Answer{.body = std::move(*page)} : StatusPage(404));
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
      Tell("goes on with IPv4 alone");
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
    Tell(QString("cannot listen on %1: %2").arg(place, server_.ListenErrorText()));
    return Listening::Impossible;
  }
  if (IsMirror(address, options_.port)) {
    Tell(QString("another borvane-mirror serves %1 already").arg(place));
    return Listening::MirrorIsThere;
  }
  Tell(QString("cannot listen on %1: another program listens there").arg(place));
  return Listening::ForeignIsThere;
}

std::optional<int> Mirror::WaitForMonitors() {
  attendants_ = std::make_unique<Attendants>([] { QCoreApplication::quit(); });
  const QString fault = attendants_->Start(AttendanceSocketName(options_.port));
  if (fault.isEmpty())
    return std::nullopt;
  Tell(fault);
  return 1;
}

}  // namespace borvane::mirror
