#include "service/service.h"

#include <QTimer>
#include <memory>
#include <utility>

#include "service/product_page.h"

namespace borvane::mirror {

namespace {

constexpr const char *script_path = "/cgi-bin/borvane/control.pl";
constexpr const char *version_path = "/borvane/version.txt";
constexpr const char *plain_text = "text/plain; charset=windows-1252";
constexpr const char *html = "text/html; charset=windows-1252";

/// How long a client counts as online after it was seen. A clock that was set back, or the one of another mirror at the
/// same store, may have noted a time that is still to come.
constexpr qint64 online_ms = 15 * 60'000;

/// How long the page about Borvane waits for the number of users.
constexpr int product_patience_ms = 500;

QByteArray PathOf(const QByteArray &target) {
  const qsizetype mark = target.indexOf('?');
  return mark < 0 ? target : target.first(mark);
}

/// What becomes of a job's result: a text, or the failure of the store.
StoreThread::Done PlainText(const Service::Reply &reply) {
  return [reply](const std::optional<QByteArray> &result) {
    reply(result ? ServiceAnswer{.type = plain_text, .body = *result} : ServiceAnswer{.status = 503});
  };
}

QByteArray UsersOnline(Store &store, qint64 now) {
  return QByteArray::number(store.ClientsSeen(now - online_ms, now + online_ms));
}

}  // namespace

Service::Service(Settings settings)
    : settings_(std::move(settings)),
      reports_(settings_.limits.reports_a_minute),
      details_(settings_.limits.details_a_minute),
      store_(settings_.store, settings_.store_limits, settings_.tell) {}

bool Service::Serves(const QByteArray &target) {
  const QByteArray path = PathOf(target);
  return path == script_path || path == version_path || path == "/borvane/" || path == "/borvane/index.html";
}

void Service::Answer(const QByteArray &method, const QByteArray &target, const QHostAddress &client,
                     const Reply &reply) {
  const QByteArray path = PathOf(target);
  if (path == version_path)
    reply({.type = plain_text, .body = QString(settings_.newest_version).remove('.').toLatin1()});
  else if (path != script_path)
    ShowProduct(reply);
  else if (method == "GET")
    Obey(Query(target), client, reply);
  else
    reply({.status = 405});
}

void Service::Obey(const Query &query, const QHostAddress &client, const Reply &reply) {
  if (query.Value("map").size() > settings_.limits.map || query.Value("macid").size() > settings_.limits.macid ||
      query.Value("AppVersion").size() > settings_.limits.version) {
    reply({.status = 400});
    return;
  }
  const QByteArray command = query.Value("cmd");
  if (command == "setonline")
    SetOnline(query, reply);
  else if (command == "whoson")
    CountUsers(query, reply);
  else if (command == "add")
    CountRun(query, reply);
  else if (command == "puta")
    TakeReport(query, client, reply);
  else if (command == "putb" || command == "putc")
    TakeDetail(query, client, reply);
  else if (command == "geta")
    GiveReports(query, reply);
  else
    reply({.status = 400});
}

void Service::NotePresence(const Query &query, const Reply &reply, const StoreThread::Work &answer) {
  const QByteArray macid = query.Value("macid");
  const QByteArray version = query.Value("AppVersion").trimmed();
  const auto work = [macid, version, answer, now = settings_.clock()](Store &store) {
    store.NoteClient(macid, version, now);
    return answer(store);
  };
  store_.Do(Access::Change, work, PlainText(reply));
}

void Service::SetOnline(const Query &query, const Reply &reply) {
  NotePresence(query, reply, [](Store &) { return QByteArray("ok"); });
}

void Service::CountUsers(const Query &query, const Reply &reply) {
  NotePresence(query, reply, [now = settings_.clock()](Store &store) { return UsersOnline(store, now); });
}

void Service::CountRun(const Query &query, const Reply &reply) {
  const auto work = [macid = query.Value("macid")](Store &store) {
    store.CountRun(macid);
    return QByteArray("ok");
  };
  store_.Do(Access::Change, work, PlainText(reply));
}

/// Whether the monitors of others can read the record. One that they cannot would end their reading of all behind it.
bool Service::IsReport(const QByteArray &record) const {
  return !record.isEmpty() && record.size() <= settings_.limits.report &&
         record.count('|') <= settings_.limits.separators;
}

void Service::TakeReport(const Query &query, const QHostAddress &client, const Reply &reply) {
  if (!IsReport(query.Value("strout"))) {
    reply({.status = 400});
    return;
  }
  const qint64 now = settings_.clock();
  if (!reports_.Admit(client, now)) {
    reply({.status = 429});
    return;
  }
  const auto work = [map = query.Value("map"), record = query.Value("strout"), now](Store &store) {
    store.AddReport(map, record, now);
    return QByteArray("ok");
  };
  store_.Do(Access::Change, work, PlainText(reply));
}

void Service::TakeDetail(const Query &query, const QHostAddress &client, const Reply &reply) {
  const qint64 now = settings_.clock();
  if (!details_.Admit(client, now)) {
    reply({.status = 429});
    return;
  }
  const bool has_zip = query.Value("cmd") == "putc";
  const auto work = [map = query.Value("map"), zip = query.Value("zip"), has_zip, record = query.Value("strout"),
                     now](Store &store) {
    store.AddDetail(map, has_zip ? &zip : nullptr, record, now);
    return QByteArray("ok");
  };
  store_.Do(Access::Change, work, PlainText(reply));
}

void Service::GiveReports(const Query &query, const Reply &reply) {
  store_.Do(
      Access::Read, [map = query.Value("map")](Store &store) { return store.Reports(map); }, PlainText(reply));
}

void Service::ShowProduct(const Reply &reply) {
  // The page stands also when the store fails or takes its time, without the number of users.
  const auto show = [reply, version = settings_.newest_version,
                     is_shown = std::make_shared<bool>(false)](const QByteArray &online) {
    if (!std::exchange(*is_shown, true))
      reply({.type = html, .body = ProductPage(version, online)});
  };
  QTimer::singleShot(product_patience_ms, &store_, [show] { show({}); });
  store_.Do(
      Access::Read, [now = settings_.clock()](Store &store) { return UsersOnline(store, now); },
      [show](const std::optional<QByteArray> &online) {
        const QByteArray nobody = "0";  // a store that does not exist yet
        show(online ? (online->isEmpty() ? nobody : *online) : QByteArray());
      });
}

}  // namespace borvane::mirror
