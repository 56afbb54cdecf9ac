#include "mirror.h"

#include <cstdio>

#include "catalogue/sample.h"

namespace borvane::mirror {

namespace {

/// Tells something on standard error.
void Tell(const QString &text) { std::fprintf(stderr, "borvane-mirror: %s\n", qPrintable(text)); }

QString AddressText(const QHostAddress &address, quint16 port) {
  const bool is_ipv6 = address.protocol() == QAbstractSocket::IPv6Protocol;
  return QString(is_ipv6 ? "[%1]:%2" : "%1:%2").arg(address.toString()).arg(port);
}

}  // namespace

Mirror::Mirror(Options options)
    : options_(std::move(options)), server_(Limits{}, [this](const Request &request) { return AnswerTo(request); }) {}

std::optional<int> Mirror::Start() {
  ReadCatalogue();
  return Listen();
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

Answer Mirror::AnswerTo(const Request &request) {
  std::optional<QByteArray> page = site_.Page(request.target, request.host);
  return page ? Answer{.body = std::move(*page)} : StatusPage(404);
}

std::optional<int> Mirror::Listen() {
  if (!options_.addresses.empty())
    return ListenAt(options_.addresses.front()) ? std::nullopt : std::optional(1);

  if (!ListenAt(QHostAddress::LocalHost))
    return 1;
  if (ListenAt(QHostAddress::LocalHostIPv6))
    return std::nullopt;
  if (server_.ListenError() == QAbstractSocket::AddressInUseError)
    return 1;
  Tell("goes on with IPv4 alone");
  return std::nullopt;
}

bool Mirror::ListenAt(const QHostAddress &address) {
  const std::optional<quint16> port = server_.Listen(address, options_.port);
  if (!port) {
    Tell(QString("cannot listen on %1: %2").arg(AddressText(address, options_.port), server_.ListenErrorText()));
    return false;
  }
  options_.port = *port;
  site_.SetPort(*port);
  std::printf("borvane-mirror listening on %s\n", qPrintable(AddressText(address, *port)));
  std::fflush(stdout);
  return true;
}

}  // namespace borvane::mirror
