#include "transfer/curl_library.h"

#include <QLibrary>

namespace borvane {

std::optional<CurlLibrary> CurlLibrary::Load() {
  constexpr int interface_version = 4;
  QLibrary library(QStringLiteral("curl"), interface_version);
  const auto resolve = [&library]<class Function>(Function &function, const char *name) {
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
  };

  CurlLibrary curl;
  const bool is_complete =
      resolve(curl.global_init, "curl_global_init") && resolve(curl.easy_init, "curl_easy_init") &&
      resolve(curl.easy_cleanup, "curl_easy_cleanup") && resolve(curl.easy_setopt, "curl_easy_setopt") &&
      resolve(curl.easy_getinfo, "curl_easy_getinfo") && resolve(curl.easy_header, "curl_easy_header") &&
      resolve(curl.easy_strerror, "curl_easy_strerror") && resolve(curl.multi_init, "curl_multi_init") &&
      resolve(curl.multi_cleanup, "curl_multi_cleanup") && resolve(curl.multi_setopt, "curl_multi_setopt") &&
      resolve(curl.multi_add_handle, "curl_multi_add_handle") &&
      resolve(curl.multi_remove_handle, "curl_multi_remove_handle") &&
      resolve(curl.multi_socket_action, "curl_multi_socket_action") &&
      resolve(curl.multi_info_read, "curl_multi_info_read") && resolve(curl.slist_append, "curl_slist_append") &&
      resolve(curl.slist_free_all, "curl_slist_free_all");
  if (!is_complete || curl.global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK)
    return {};
  return curl;
}

}  // namespace borvane
