#pragma once

#include <map>
#include <utility>

#include "transfer/http_fetcher.h"

namespace borvane {

/// A fetcher that keeps the results until the test takes them.
class RecordedFetcher {
 public:
  explicit RecordedFetcher(const FetchLimits &limits = {}, HttpFetcher::LoadCurl load = CurlLibrary::Load)
      : fetcher_(limits, load) {}

  HttpFetcher::Number Start(std::string_view address) {
    return fetcher_.Start(address, [this](HttpFetcher::Number fetch, FetchResult result) {
      ++ends_;
      results_[fetch] = std::move(result);
    });
  }

  bool IsDone(HttpFetcher::Number fetch) const { return !fetcher_.IsUnderWay(fetch); }
  void Cancel(HttpFetcher::Number fetch) { fetcher_.Cancel(fetch); }
  const FetchResult &result(HttpFetcher::Number fetch) const { return results_.at(fetch); }

  /// How many fetches have reported their end.
  int ends() const { return ends_; }

 private:
  int ends_ = 0;
  std::map<HttpFetcher::Number, FetchResult> results_;
  HttpFetcher fetcher_;
};

}  // namespace borvane
