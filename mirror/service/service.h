#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

#include "http/handler.h"
#include "log/log.h"
#include "service/query.h"
#include "service/rate_limit.h"
#include "service/reports.h"
#include "store/store_thread.h"

namespace borvane::mirror {

/// What one client may ask of the service. What is longer is answered by 400, what comes more often by 429.
struct ServiceLimits {
  qsizetype presence_a_minute = 600;  ///< of setonline, whoson and add together, from one address: a school shares one
  qsizetype reports_a_minute = 30;    ///< felt reports from one address
  qsizetype details_a_minute = 120;   ///< details from one address; a felt report has two, which may come late
  qsizetype report = 1'000;           ///< bytes of a felt report
  int separators = 11;                ///< "|" in a felt report; the monitor reads no line with more
  qsizetype map = 1'000;              ///< bytes of the name of a map
  qsizetype macid = 64;               ///< bytes of a client's number
  qsizetype version = 64;             ///< bytes of a client's version
};

/// The maker's service: presence, the newest version, felt reports. Nothing in it is secret or signed; it reveals to
/// nobody who reported what, and keeps no addresses but in memory, until the first look after the minute of the rate
/// limits. It answers only requests of monitors and of people, see request_guard.h.
///
/// The monitor looks at an answer's text alone: "<" in it, or anything but "ok" where "ok" is due, is a failure. So
/// every status but 200 is sent with a page of HTML.
class Service : public Handler {
 public:
  using Clock = std::function<qint64()>;  ///< milliseconds since 1970 began

  struct Settings {
    StoreAddress store;
    QString newest_version;  ///< three numbers with points between them
    QStringList hosts = {};  ///< names by which monitors may address it, in lower case
    RetentionLimits retention = {};
    ServiceLimits limits = {};
    /// How often addresses are looked for whose minute is over, while there are any.
    std::chrono::milliseconds forgetting_interval{10'000};
    Clock clock;
    WriteLog log;  ///< gets a line when the store stops working, and when it works again
  };

  explicit Service(Settings settings);

  bool Serves(const QByteArray &target, const QByteArray &host) const override;
  void Handle(const Request &request, const QHostAddress &client, const Reply &reply) override;
  Answer Refusal(int status, const QByteArray &target, const QByteArray &host) const override;

  /// Whether the store did what it was asked for last.
  bool StoreWorks() const { return store_.Works(); }

  /// Whether it has the address of a client in memory.
  bool KeepsAddresses() const;

 private:
  void Dispatch(const Query &query, const QHostAddress &client, const Reply &reply);
  bool Admits(RateLimit &rate, const QHostAddress &client);
  void ForgetAddresses();
  void RecordPresence(const Query &query, const Reply &reply, const StoreThread::Work &answer);
  void SetOnline(const Query &query, const Reply &reply);
  void CountUsers(const Query &query, const Reply &reply);
  void CountRun(const Query &query, const Reply &reply);
  void AddReport(const Query &query, const QHostAddress &client, const Reply &reply);
  void AddDetail(const Query &query, const QHostAddress &client, const Reply &reply);
  bool IsReport(const QByteArray &record) const;
  void SendReports(const Query &query, const Reply &reply);
  void SendProductPage(const Reply &reply);

  const Settings settings_;
  RateLimit presence_rate_;
  RateLimit report_rate_;
  RateLimit detail_rate_;
  QTimer forgetting_timer_;                 ///< runs while an address is kept
  const std::shared_ptr<Reports> reports_;  ///< used in the store's thread, which may outlive this object
  StoreThread store_;
};

}  // namespace borvane::mirror
