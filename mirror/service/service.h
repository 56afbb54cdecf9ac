#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <functional>

#include "service/query.h"
#include "service/rate_limit.h"
#include "service/store_thread.h"

namespace borvane::mirror {

/// What the service says to a request. The monitor looks at the text alone: "<" in it, or anything but "ok" where "ok"
/// is due, is a failure. So every status but 200 has to be sent with a page of HTML.
struct ServiceAnswer {
  int status = 200;
  QByteArray type = {};  ///< of the body; both are empty when the status is not 200
  QByteArray body = {};
};

/// What one client may ask of the service. What is longer is answered by 400, what comes more often by 429.
struct ServiceLimits {
  qsizetype reports_a_minute = 30;   ///< felt reports from one address
  qsizetype details_a_minute = 120;  ///< details of felt reports from one address; two belong to one, and may straggle
  qsizetype report = 1'000;          ///< bytes of a felt report
  int separators = 11;               ///< "|" in a felt report; the monitor reads no line with more
  qsizetype map = 1'000;             ///< bytes of the name of a map
  qsizetype macid = 64;              ///< bytes of the number of a client
  qsizetype version = 64;            ///< bytes of the version that a client names
};

/// The maker's service: presence, the newest version, felt reports. Nothing in it is secret or signed; it tells nobody
/// who reported what, and keeps no addresses but for a minute in memory.
class Service {
 public:
  using Reply = std::function<void(const ServiceAnswer &)>;
  using Clock = std::function<qint64()>;  ///< milliseconds since 1970 began

  struct Settings {
    StoreAddress store;
    QString newest_version;  ///< three numbers with points between them
    StoreLimits store_limits = {};
    ServiceLimits limits = {};
    Clock clock;
    StoreThread::Tell tell;  ///< gets a line for people when the store stops working, and when it works again
  };

  explicit Service(Settings settings);

  /// Whether the service has an answer for the target's path.
  static bool Serves(const QByteArray &target);

  /// Answers the client's request, at once or later. `method` is "GET" or "HEAD".
  void Answer(const QByteArray &method, const QByteArray &target, const QHostAddress &client, const Reply &reply);

 private:
  void Obey(const Query &query, const QHostAddress &client, const Reply &reply);
  void NotePresence(const Query &query, const Reply &reply, const StoreThread::Work &answer);
  void SetOnline(const Query &query, const Reply &reply);
  void CountUsers(const Query &query, const Reply &reply);
  void CountRun(const Query &query, const Reply &reply);
  void TakeReport(const Query &query, const QHostAddress &client, const Reply &reply);
  void TakeDetail(const Query &query, const QHostAddress &client, const Reply &reply);
  bool IsReport(const QByteArray &record) const;
  void GiveReports(const Query &query, const Reply &reply);
  void ShowProduct(const Reply &reply);

  const Settings settings_;
  RateLimit reports_;
  RateLimit details_;
  StoreThread store_;
};

}  // namespace borvane::mirror
