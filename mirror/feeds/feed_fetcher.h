#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "transfer/curl_library.h"

namespace borvane {
class CurlLoop;
}

namespace borvane::mirror {

/// The limits of a fetch. One that exceeds them ends with a fault.
struct FeedLimits {
  std::chrono::milliseconds time{300'000};           ///< in all, redirects included
  std::chrono::seconds slow_time{30};                ///< how long an answer may be slower than `slow_bytes`
  long slow_bytes = 200;                             ///< a second
  std::size_t head = std::size_t{64} << 10U;         ///< bytes of all heads
  std::size_t packed_size = std::size_t{32} << 20U;  ///< bytes of the body on the wire
  std::size_t size = std::size_t{64} << 20U;         ///< bytes of the body when it is unpacked
  long redirects = 5;
};

/// What is asked for.
struct FeedRequest {
  QString url = {};               ///< of http or https
  QByteArray etag = {};           ///< of the answer that the asker has; empty for none
  QByteArray last_modified = {};  ///< likewise

  /// Whether the body may come compressed. The library does not see that such a body ends too early, so the text has to
  /// have a mark of its own at its end.
  bool may_be_packed = true;
};

/// How a fetch ended.
struct FeedAnswer {
  int status = 0;                                        ///< 0 when not even the head of an answer came
  QByteArray body = {};                                  ///< of an answer with the status 200, unpacked
  QByteArray etag = {};                                  ///< to be sent with the next request; empty for none
  QByteArray last_modified = {};                         ///< likewise
  std::optional<std::chrono::seconds> lifetime = {};     ///< see AnswerTimes
  std::optional<std::chrono::seconds> retry_after = {};  ///< likewise
  qint64 made = 0;                                       ///< likewise
  QString fault = {};                                    ///< why there is no whole answer; empty when there is
};

/// Fetches feeds by libcurl on Qt's event loop: certificates are verified, bodies may be compressed, and a redirect of
/// an https address leads to nothing but https. The library is loaded at the first fetch; without it every fetch ends
/// with a fault.
class FeedFetcher final : public QObject {
 public:
  using Number = std::uint64_t;
  using OnEnd = std::function<void(FeedAnswer)>;
  using LoadCurl = std::optional<CurlLibrary> (*)();

  /// `authorities` is a file with the certificates of the authorities that are trusted instead of the system's own;
  /// empty for those.
  explicit FeedFetcher(const FeedLimits &limits = {}, QString authorities = {}, LoadCurl load = CurlLibrary::Load);
  ~FeedFetcher() override;

  /// Begins a fetch and gives its number; they count from 1. `on_end` is called once, from the event loop, and not for
  /// a fetch that is cancelled, nor when this object goes.
  Number Start(const FeedRequest &request, OnEnd on_end);

  /// Ends a fetch at once. Does nothing for one that has ended.
  void Cancel(Number fetch);

 private:
  class Transfer;

  /// What is under way under a number.
  struct Fetch {
    OnEnd on_end;
    std::unique_ptr<Transfer> transfer;  // none for what cannot even be sent
  };

  bool IsReady();
  void EndSoon(Number fetch, const QString &fault);
  void End(Number fetch, FeedAnswer answer);
  void TakeOut(const Fetch &fetch);

  const FeedLimits limits_;
  const QString authorities_;
  const LoadCurl load_;
  std::unique_ptr<const CurlLibrary> curl_;
  std::unique_ptr<CurlLoop> loop_;
  std::map<Number, Fetch> fetches_;
  Number last_ = 0;
};

}  // namespace borvane::mirror
