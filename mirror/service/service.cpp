#include "service/service.h"

#include <QTimer>
#include <memory>
#include <utility>

#include "common/hosts.h"
#include "service/product_page.h"
#include "service/request_guard.h"

namespace borvane::mirror {

namespace {

constexpr const char *script_path = "/cgi-bin/borvane/control.pl";
constexpr const char *version_path = "/borvane/version.txt";
constexpr const char *products_path = "/products.html";
constexpr const char *plain_text = "text/plain; charset=windows-1252";

/// How long a client counts as online after it was seen. A clock that was set back, or that of another mirror on the
/// same store, may have recorded a time in the future.
constexpr qint64 online_ms = 15 * 60'000;

/// How long the product page waits for the number of users.
constexpr int user_count_timeout_ms = 500;

/// Replies with a job's result, or with 503 when the store failed.
StoreThread::Done PlainText(const Reply &reply) {
  return [reply](const std::optional<QByteArray> &result) {
    reply(result ? Answer{.type = plain_text, .body = *result} : StatusPage(503));
  };
}

QByteArray UsersOnline(Database &database, qint64 now) {
  return QByteArray::number(Reports::ClientsSeen(database, now - online_ms, now + online_ms));
}

}  // namespace

Service::Service(Settings settings)
    : settings_(std::move(settings)),
      presence_rate_(settings_.limits.presence_a_minute),
      report_rate_(settings_.limits.reports_a_minute),
      detail_rate_(settings_.limits.details_a_minute),
      reports_(std::make_shared<Reports>(settings_.retention)),
      store_(settings_.store, reports_schema, [log = settings_.log](LogLevel level, const QString &line) {
        log(level, "the service's store " + line);
      }) {
  forgetting_timer_.setInterval(settings_.forgetting_interval);
  QObject::connect(&forgetting_timer_, &QTimer::timeout, [this] { ForgetAddresses(); });
}

bool Service::Serves(const QByteArray &target, const QByteArray &host) const {
  const QByteArray path = PathOf(target);
  const bool is_served = path == script_path || path == version_path || path == products_path || path == "/borvane" ||
                         path == "/borvane/" || path == "/borvane/index.html";
  return is_served && EndpointOfMirrorHost(host.toStdString()).value_or(Endpoint::Maker) == Endpoint::Maker;
}

void Service::Handle(const Request &request, const QHostAddress &client, const Reply &reply) {
  if (IsFromAnotherSite(request) || !IsKnownHost(request.host, settings_.hosts)) {
    reply(StatusPage(403));
    return;
  }
  const QByteArray path = PathOf(request.target);
  if (path == version_path)
    reply({.type = plain_text, .body = QString(settings_.newest_version).remove('.').toLatin1()});
  else if (path == products_path)
    reply({.body = ProductsPage()});
  else if (path == "/borvane")
    reply(Redirection("/borvane/"));
  else if (path != script_path)
    SendProductPage(reply);
  else if (request.method == "GET")
    Dispatch(Query(request.target), client, reply);
  else
    reply(Refusal(405, request.target, request.host));
}

Answer Service::Refusal(int status, const QByteArray &target, const QByteArray & /*host*/) const {
  Answer answer = StatusPage(status);
  if (status == 405 && PathOf(target) == script_path)
    answer.fields = {{"Allow", "GET"}};
  return answer;
}

bool Service::KeepsAddresses() const {
  return !presence_rate_.IsEmpty() || !report_rate_.IsEmpty() || !detail_rate_.IsEmpty();
}

/// Whether the rate of the client's requests permits one more; counts it if so.
bool Service::Admits(RateLimit &rate, const QHostAddress &client) {
  if (!forgetting_timer_.isActive())
    forgetting_timer_.start();
  return rate.Admit(client, settings_.clock());
}

void Service::ForgetAddresses() {
  const qint64 now = settings_.clock();
  for (RateLimit *rate : {&presence_rate_, &report_rate_, &detail_rate_})
    rate->Forget(now);
  if (!KeepsAddresses())
    forgetting_timer_.stop();
}

void Service::Dispatch(const Query &query, const QHostAddress &client, const Reply &reply) {
  if (query.Value("map").size() > settings_.limits.map || query.Value("macid").size() > settings_.limits.macid ||
      query.Value("AppVersion").size() > settings_.limits.version) {
    reply(StatusPage(400));
    return;
  }
  const QByteArray command = query.Value("cmd");
  const bool is_presence = command == "setonline" || command == "whoson" || command == "add";
  if (is_presence && !Admits(presence_rate_, client)) {
    reply(StatusPage(429));
    return;
  }
  if (command == "setonline")
    SetOnline(query, reply);
  else if (command == "whoson")
    CountUsers(query, reply);
  else if (command == "add")
    CountRun(query, reply);
  else if (command == "puta")
    AddReport(query, client, reply);
  else if (command == "putb" || command == "putc")
    AddDetail(query, client, reply);
  else if (command == "geta")
    SendReports(query, reply);
  else
    reply(StatusPage(400));
}

void Service::RecordPresence(const Query &query, const Reply &reply, const StoreThread::Work &answer) {
  const QByteArray macid = query.Value("macid");
  const QByteArray version = query.Value("AppVersion").trimmed();
  const auto work = [macid, version, answer, reports = reports_, now = settings_.clock()](Database &database) {
    reports->NoteClient(database, macid, version, now);
    return answer(database);
  };
  store_.Submit(Access::Write, work, PlainText(reply));
}

void Service::SetOnline(const Query &query, const Reply &reply) {
  RecordPresence(query, reply, [](Database &) { return QByteArray("ok"); });
}

void Service::CountUsers(const Query &query, const Reply &reply) {
  RecordPresence(query, reply, [now = settings_.clock()](Database &database) { return UsersOnline(database, now); });
}

void Service::CountRun(const Query &query, const Reply &reply) {
  const auto work = [macid = query.Value("macid"), reports = reports_](Database &database) {
    reports->CountRun(database, macid);
    return QByteArray("ok");
  };
  store_.Submit(Access::Write, work, PlainText(reply));
}

/// Whether other monitors can read the record. One that they cannot would end their reading of all that follow.
bool Service::IsReport(const QByteArray &record) const {
  return !record.isEmpty() && record.size() <= settings_.limits.report &&
         record.count('|') <= settings_.limits.separators;
}

void Service::AddReport(const Query &query, const QHostAddress &client, const Reply &reply) {
  if (!IsReport(query.Value("strout"))) {
    reply(StatusPage(400));
    return;
  }
  if (!Admits(report_rate_, client)) {
    reply(StatusPage(429));
    return;
  }
  const auto work = [map = query.Value("map"), record = query.Value("strout"), reports = reports_,
                     now = settings_.clock()](Database &database) {
    reports->AddReport(database, map, record, now);
    return QByteArray("ok");
  };
  store_.Submit(Access::Write, work, PlainText(reply));
}

void Service::AddDetail(const Query &query, const QHostAddress &client, const Reply &reply) {
  if (!Admits(detail_rate_, client)) {
    reply(StatusPage(429));
    return;
  }
  const bool has_zip = query.Value("cmd") == "putc";
  const auto work = [map = query.Value("map"), zip = query.Value("zip"), has_zip, record = query.Value("strout"),
                     reports = reports_, now = settings_.clock()](Database &database) {
    reports->AddDetail(database, map, has_zip ? &zip : nullptr, record, now);
    return QByteArray("ok");
  };
  store_.Submit(Access::Write, work, PlainText(reply));
}

void Service::SendReports(const Query &query, const Reply &reply) {
  store_.Submit(
      Access::Read,
      [map = query.Value("map"), reports = reports_](Database &database) { return reports->ReportsOf(database, map); },
      PlainText(reply));
}

void Service::SendProductPage(const Reply &reply) {
  // When the store fails or is slow, the page is sent without the number of users.
  const auto show = [reply, version = settings_.newest_version,
                     is_sent = std::make_shared<bool>(false)](const QByteArray &online) {
    if (!std::exchange(*is_sent, true))
      reply({.body = ProductPage(version, online)});
  };
  QTimer::singleShot(user_count_timeout_ms, &store_, [show] { show({}); });
  store_.Submit(
      Access::Read, [now = settings_.clock()](Database &database) { return UsersOnline(database, now); },
      [show](const std::optional<QByteArray> &online) {
        const QByteArray nobody = "0";  // a store that does not exist yet
        show(online ? (online->isEmpty() ? nobody : *online) : QByteArray());
      });
}

}  // namespace borvane::mirror
