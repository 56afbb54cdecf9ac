#pragma once

#include <QObject>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "transfer/curl_library.h"

namespace borvane {

class CurlLoop;

/// The limits of a fetch. One that reaches them ends as failed.
struct FetchLimits {
  std::chrono::milliseconds time{60'000};     // in all, redirects included
  std::size_t size = std::size_t{64} << 20U;  // bytes of the body
  int redirects = 5;
};

/// How a fetch ended.
struct FetchResult {
  bool failed = false;  // unreachable, cut off, over a limit, or cancelled
  std::string body;     // whatever the status; empty for one that failed
};

/// Fetches addresses over HTTP on Qt's event loop, by libcurl, which is loaded at the first fetch. Without the library
/// every fetch fails. The path and query of an address go out byte for byte.
class HttpFetcher final : public QObject {
 public:
  using Number = std::uint64_t;
  using OnEnd = std::function<void(Number, FetchResult)>;
  using LoadCurl = std::optional<CurlLibrary> (*)();

  explicit HttpFetcher(const FetchLimits &limits = {}, LoadCurl load = CurlLibrary::Load);
  ~HttpFetcher() override;

  /// Begins a GET of `address` and gives its number; they count from 1. `on_end` is called once, from the event loop or
  /// from Cancel, and not when this object goes.
  Number Start(std::string_view address, OnEnd on_end);

  bool IsUnderWay(Number fetch) const { return fetches_.contains(fetch); }

  /// Ends a fetch at once, as failed. Does nothing for one that has ended.
  void Cancel(Number fetch);

 private:
  class Request;

  /// What is under way under a number.
  struct Fetch {
    OnEnd on_end;
    std::unique_ptr<Request> request;  // none for what cannot even be sent
  };

  /// Sends `request` to its address: its first one, or the one to which a redirect leads.
  void Send(Request &request);

  /// Ends a fetch that cannot be sent, but not before events run, as for any other.
  void FailSoon(Number fetch);
  void OnAnswerEnded(Request &request, bool complete);
  void End(Number fetch, bool failed);

  bool IsReady();

  const FetchLimits limits_;
  const LoadCurl load_;
  std::unique_ptr<const CurlLibrary> curl_;
  std::unique_ptr<CurlLoop> loop_;
  std::map<Number, Fetch> fetches_;
  Number last_ = 0;
};

}  // namespace borvane
