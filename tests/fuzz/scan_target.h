#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/idle_host.h"
#include "support/program/twins.h"

// Any text as a page: the quick scanner returns the same rows, failure and rest as the plain one.

namespace borvane {

/// The page of an input. Only long runs make distances that do not fit 16 bits, and no fuzzer writes them: each of the
/// first bytes 1 becomes such a run.
inline std::string PageOf(const std::uint8_t *data, std::size_t size) {
  constexpr int length_of_run = 8191;
  constexpr int most_runs = 5;
  int runs = 0;
  std::string page;
  for (const char c : std::string_view(reinterpret_cast<const char *>(data), size)) {
    if (c == '\1' && runs++ < most_runs)
      page.append(length_of_run, 'x');
    else
      page += c;
  }
  return page;
}

/// Ends the process when the two scanners do not agree on the input.
inline void Compare(const Twins &twins, const std::uint8_t *data, std::size_t size) {
  // The plain scanner copies the page at every cut.
  constexpr std::size_t longest = 4096;
  if (size > longest)
    return;
  // One for all pages.
  static IdleHost host;
  static const Program program(host.Services(), host);
  const std::string page = PageOf(data, size);
  if (ResultOf(twins, page) != twins.plain_scan(page))
    std::abort();
}

}  // namespace borvane
