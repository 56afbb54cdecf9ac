// How fast a page becomes rows: the scanner of the regional lists, compared with libxml2's push parser and a SAX
// handler that extracts the same rows, and the other scanners beside it, each on a page of its own form.

#include <cstdlib>
#include <iostream>
#include <vector>

#include <benchmark/benchmark.h>
#include <libxml/HTMLparser.h>

#include "basic/text.h"
#include "list_pages.h"
#include "quakes_page.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int rows_of_page = 10'000;

/// The eight fields of an event, in the order of the list's columns.
using Row = std::array<std::string, 8>;

/// Extracts the rows from what an HTML parser reports.
class SaxRows {
 public:
  /// Reads a page of single bytes, passed to the parser in pieces of `piece` bytes.
  const std::vector<Row> &Read(std::string_view page, std::size_t piece) {
    rows_.clear();
    where_ = Where::Outside;
    htmlSAXHandler handler{};
    handler.startElement = [](void *self, const xmlChar *name, const xmlChar **attributes) {
      static_cast<SaxRows *>(self)->Start(Text(name), attributes);
    };
    handler.endElement = [](void *self, const xmlChar *name) { static_cast<SaxRows *>(self)->End(Text(name)); };
    handler.characters = [](void *self, const xmlChar *text, int length) {
      static_cast<SaxRows *>(self)->Characters(Text(text, length));
    };
    const htmlParserCtxtPtr parser =
        htmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr, XML_CHAR_ENCODING_ASCII);
    htmlCtxtUseOptions(parser, HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_COMPACT | HTML_PARSE_NONET);
    for (; !page.empty(); page.remove_prefix(std::min(piece, page.size())))
      htmlParseChunk(parser, page.data(), static_cast<int>(std::min(piece, page.size())), 0);
    htmlParseChunk(parser, nullptr, 0, 1);
    htmlFreeParserCtxt(parser);
    return rows_;
  }

 private:
  enum class Where { Outside, Link, Place };

  static std::string_view Text(const xmlChar *text) { return reinterpret_cast<const char *>(text); }
  static std::string_view Text(const xmlChar *text, int length) {
    return {reinterpret_cast<const char *>(text), static_cast<std::size_t>(length)};
  }

  void Start(std::string_view name, const xmlChar **attributes) {
    if (name != "a" || attributes == nullptr || attributes[1] == nullptr)
      return;
    const std::string_view link = Text(attributes[1]);
    if (link.starts_with("/recenteqs/Quakes/")) {
      Row &row = rows_.emplace_back();
      row[0] = Trim(outside_);
      row[7] = link.substr(1);
      where_ = Where::Link;
      text_.clear();
    }
  }

  void End(std::string_view name) {
    if (name == "a" && where_ == Where::Link)
      EndLink();
    outside_.clear();
  }

  void EndLink() {
    Row &row = rows_.back();
    std::string_view rest = text_;
    for (std::size_t field = 1; field <= 4; ++field) {
      const std::size_t blank = std::min(rest.find(' '), rest.size());
      row[field] = rest.substr(0, blank);
      rest.remove_prefix(std::min(blank + 1, rest.size()));
    }
    row[5] = rest;
    where_ = Where::Place;
    text_.clear();
  }

  void Characters(std::string_view text) {
    switch (where_) {
      case Where::Outside:
        outside_ += text;
        break;
      case Where::Link:
        text_ += text;
        break;
      case Where::Place: {
        const std::size_t line_feed = text.find('\n');
        text_ += text.substr(0, line_feed);
        if (line_feed != std::string_view::npos) {
          rows_.back()[6] = Trim(text_);
          where_ = Where::Outside;
        }
      }
    }
  }

  std::vector<Row> rows_;
  Where where_ = Where::Outside;
  std::string outside_;
  std::string text_;
};

/// A list page's form and its scanner.
struct Form {
  Scanner scan;
  std::string (*page)(int rows);
};

constexpr Form quakes_list = {ScanQuakesList, QuakesPage};
constexpr Form map_list = {ScanMapList, MapListPage};
constexpr Form map_anchor_list = {ScanMapAnchorList, MapAnchorListPage};
constexpr Form world_list = {ScanWorldList, WorldListPage};
constexpr Form region_table = {ScanRegionTable, RegionTablePage};

void ScanPage(benchmark::State &state, const Form &form) {
  IdleHost host;
  const Program program(host.Services(), host);
  const std::string page = form.page(rows_of_page);
  Integer mode = 1;
  for (auto _ : state) {
    std::string text = page;
    form.scan(mode, text);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}

void PeerLibxml2(benchmark::State &state) {
  const std::string page = QuakesPage(rows_of_page);
  SaxRows peer;
  for (auto _ : state)
    benchmark::DoNotOptimize(peer.Read(page, static_cast<std::size_t>(state.range(0))).data());
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}

/// The minimum that a scan has to do: copy the page once and make the eight texts of each row.
void BareLimitOfTexts(benchmark::State &state) {
  const std::string page = QuakesPage(rows_of_page);
  const std::vector<Row> rows = SaxRows().Read(page, 4096);
  for (auto _ : state) {
    std::string text = page;
    benchmark::DoNotOptimize(text.data());
    std::vector<Row> copy = rows;
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}

/// The comparison is only valid if both read the same rows.
bool SameRows() {
  IdleHost host;
  const Program program(host.Services(), host);
  const std::string page = QuakesPage(rows_of_page);
  std::string text = page;
  Integer mode = 1;
  ScanQuakesList(mode, text);
  SaxRows peer;
  const std::vector<Row> &rows = peer.Read(page, 4096);
  const ListRows &items = frmRecords->ListView1.ListItems;
  if (items.Count() != rows_of_page || rows.size() != static_cast<std::size_t>(rows_of_page))
    return false;
  for (int i = 1; i <= rows_of_page; ++i) {
    const Row &row = rows[static_cast<std::size_t>(i) - 1];
    bool is_same = items(i).Text == row[0];
    for (int column = 1; column <= 7; ++column)
      is_same = is_same && items(i).SubItems(column) == row[static_cast<std::size_t>(column)];
    if (!is_same)
      return false;
  }
  return true;
}

/// How many rows a scan lists.
int RowsOf(const Form &form) {
  IdleHost host;
  const Program program(host.Services(), host);
  std::string text = form.page(rows_of_page);
  Integer mode = 1;
  form.scan(mode, text);
  return frmRecords->ListView1.ListItems.Count();
}

/// The figures of the other scanners are only valid if they read all rows; the table of a region ends after one.
bool AllRows() {
  return RowsOf(map_list) == rows_of_page && RowsOf(map_anchor_list) == rows_of_page &&
         RowsOf(world_list) == rows_of_page && RowsOf(region_table) == 1;
}

BENCHMARK_CAPTURE(ScanPage, QuakesList, quakes_list)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanPage, MapList, map_list)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanPage, MapAnchorList, map_anchor_list)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanPage, WorldList, world_list)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScanPage, RegionTable, region_table)->Unit(benchmark::kMillisecond);
BENCHMARK(PeerLibxml2)->Arg(1 << 12)->Arg(1 << 14)->Arg(1 << 16)->Unit(benchmark::kMillisecond);
BENCHMARK(BareLimitOfTexts)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

int main(int argument_count, char **arguments) {
  if (!borvane::SameRows()) {
    std::cerr << "The scanner and its peer read different rows.\n";
    return EXIT_FAILURE;
  }
  if (!borvane::AllRows()) {
    std::cerr << "A scanner leaves rows out.\n";
    return EXIT_FAILURE;
  }
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
