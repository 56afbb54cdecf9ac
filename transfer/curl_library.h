#pragma once

#include <optional>

// The library's checks of its arguments' types work on its own names only.
#define CURL_DISABLE_TYPECHECK
#include <curl/curl.h>

namespace borvane {

/// The functions of libcurl that the programs use. With all the libraries that it needs itself, libcurl takes a good
/// part of the time and memory until the monitor's first window is painted, so it is loaded at the first transfer.
struct CurlLibrary {
  decltype(&::curl_global_init) global_init = nullptr;
  decltype(&::curl_easy_init) easy_init = nullptr;
  decltype(&::curl_easy_cleanup) easy_cleanup = nullptr;
  decltype(&::curl_easy_setopt) easy_setopt = nullptr;
  decltype(&::curl_easy_getinfo) easy_getinfo = nullptr;
  decltype(&::curl_easy_header) easy_header = nullptr;
  decltype(&::curl_easy_strerror) easy_strerror = nullptr;
  decltype(&::curl_multi_init) multi_init = nullptr;
  decltype(&::curl_multi_cleanup) multi_cleanup = nullptr;
  decltype(&::curl_multi_setopt) multi_setopt = nullptr;
  decltype(&::curl_multi_add_handle) multi_add_handle = nullptr;
  decltype(&::curl_multi_remove_handle) multi_remove_handle = nullptr;
  decltype(&::curl_multi_socket_action) multi_socket_action = nullptr;
  decltype(&::curl_multi_info_read) multi_info_read = nullptr;
  decltype(&::curl_slist_append) slist_append = nullptr;
  decltype(&::curl_slist_free_all) slist_free_all = nullptr;

  /// Loads the library and sets it up; nothing where it is missing.
  static std::optional<CurlLibrary> Load();
};

}  // namespace borvane
