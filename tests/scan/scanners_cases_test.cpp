#include <array>
#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/watching_rig.h"
#include "support/scan_case.h"

namespace borvane {
namespace {

struct Scanner {
  std::string_view name;  // in a case file
  const char *suite;
  void (*scan)(Integer &mode, std::string &page);
};

constexpr std::array scanners = {
    Scanner{"quakes", "ScanQuakesList", ScanQuakesList},   Scanner{"map", "ScanMapList", ScanMapList},
    Scanner{"region", "ScanRegionTable", ScanRegionTable}, Scanner{"anchor", "ScanMapAnchorList", ScanMapAnchorList},
    Scanner{"world", "ScanWorldList", ScanWorldList},
};

const Scanner &ScannerOf(const ScanCase &scan_case) {
  const auto scanner = std::find_if(scanners.begin(), scanners.end(),
                                    [&](const Scanner &each) { return each.name == scan_case.scanner; });
  if (scanner == scanners.end())
    throw std::runtime_error(scan_case.file.string() + ": there is no scanner " + scan_case.scanner);
  return *scanner;
}

std::vector<std::string> TextsOf(const ListItem &item, int columns) {
  std::vector<std::string> texts = {item.Text};
  for (int number = 1; number < columns; ++number)
    texts.emplace_back(item.SubItems(number));
  return texts;
}

ScanOutcome Scan(const ScanCase &scan_case) {
  Rig rig;
  rig.start();
  ScanOutcome outcome;
  rig.happen([&] {
    Integer mode = 3;
    std::string page = scan_case.page;
    outcome.failure = FailureOf([&] { ScannerOf(scan_case).scan(mode, page); });
    for (int row = 1; row <= frmRecords->ListView1.ListItems.Count(); ++row)
      outcome.rows.push_back(TextsOf(frmRecords->ListView1.ListItems(row), 8));
    outcome.newest = TextsOf(frmRecords->ListView2.ListItems(1), 3);
  });
  return outcome;
}

/// One case file.
class ScanCaseTest : public testing::Test {
 public:
  explicit ScanCaseTest(std::filesystem::path file) : file_(std::move(file)) {}

  void TestBody() override {
    const ScanCase scan_case = ReadScanCase(file_);
    const std::string got = OutcomeText(Scan(scan_case));
    EXPECT_EQ(got, OutcomeText(scan_case.expected)) << file_;
    if (HasFailure() && std::getenv("BORVANE_UPDATE") != nullptr)
      std::ofstream(file_.string() + ".new", std::ios::binary) << scan_case.head << got;
  }

 private:
  std::filesystem::path file_;
};

/// A case file that cannot be read.
class UnreadableCase : public testing::Test {
 public:
  explicit UnreadableCase(std::string reason) : reason_(std::move(reason)) {}
  void TestBody() override { FAIL() << reason_; }

 private:
  std::string reason_;
};

/// Each file of the folder is a test of its scanner's suite, under the name in the file.
[[maybe_unused]] const bool are_registered = [] {
  for (const std::filesystem::path &file : ScanCaseFiles(BORVANE_CASES "/scan")) {
    try {
      const ScanCase scan_case = ReadScanCase(file);
      testing::RegisterTest(ScannerOf(scan_case).suite, scan_case.name.c_str(), nullptr, nullptr, file.c_str(), 1,
                            [=]() -> testing::Test * { return new ScanCaseTest(file); });
    } catch (const std::exception &error) {
      testing::RegisterTest(
          "ScanCase", file.stem().c_str(), nullptr, nullptr, file.c_str(), 1,
          [reason = std::string(error.what())]() -> testing::Test * { return new UnreadableCase(reason); });
    }
  }
  return true;
}();

TEST(ScanCase, WritesTextThatCanBeReadBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  for (const std::string &text :
       {all, std::string(32700, ' '), std::string(25, '|') + std::string(25, '\\') + std::string(25, '}'),
        std::string("\\{3 x}")})
    EXPECT_EQ(Unescaped(Escaped(text)), text);
  EXPECT_EQ(Escaped(std::string(32700, ' ')), "\\{32700  }");
  EXPECT_EQ(Unescaped("\\{3 ab}"), "ababab");
}

}  // namespace
}  // namespace borvane
