#include <cstdint>
#include <cstdlib>
#include <string>

#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"
#include "support/plain_quakes_list.h"

// Any text as a page: the quick scanner returns the same rows, failure and rest as the plain one.

namespace {

using namespace borvane;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

/// Only long runs make distances that do not fit 16 bits, and no fuzzer writes them: each of the first bytes 1 becomes
/// such a run.
std::string PageOf(const std::uint8_t *data, std::size_t size) {
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

plain::ScanResult Scan(std::string page) {
  plain::ScanResult result;
  Integer mode = 1;
  try {
    ScanQuakesList(mode, page);
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  const ListRows &items = frmRecords->ListView1.ListItems;
  for (int number = 1; number <= items.Count(); ++number) {
    auto &row = result.rows.emplace_back();
    row[0] = items(number).Text;
    for (int slot = 2; slot <= 8; ++slot)
      row[static_cast<std::size_t>(slot - 1)] = items(number).SubItems(slot - 1);
  }
  result.rest = std::move(page);
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  // The plain scanner copies the page at every cut.
  constexpr std::size_t longest = 4096;
  if (size > longest)
    return 0;
  // One for all pages: each scan begins with an empty list.
  static IdleHost host;
  static const Program program(host.Services(), host);
  const std::string page = PageOf(data, size);
  Require(Scan(page) == plain::ScanQuakesList(page));
  return 0;
}
