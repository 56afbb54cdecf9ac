#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace borvane {

/// What a scan writes into the lists, and how it ends.
struct ScanOutcome {
  std::vector<std::vector<std::string>> rows;  // slots 1 to 8 of each row of ListView1
  std::vector<std::string> newest;             // the texts of ListView2's row
  int failure = 0;                             // the number of the failure that ended it; 0 when it ended normally
};

/// A page and the expected result of its scan, as a file:
///
///   name: PlaceEndsAtTheLineFeed
///   scanner: quakes
///   page:
///   the page's lines, each followed by a line feed
///   rows:
///   |2.0|2018/02/07|01:26:13|34.495N|118.667W|26.5|4 km W of Castaic, CA|recenteqs/Quakes/ci1.html|
///   newest: |2.0|4 km W of Castaic, CA|01:26:13, Wed 07|
///   ends: normal
///
/// In the page and in the fields, \r \n \t \\ \xHH mean one character, \p means "|", and \{32700 } a text repeated that
/// often: the number, a blank, the text up to the brace. A backslash at the end of a page's line removes its line feed.
/// A scan that fails ends with "failure" and the number of the run-time error. Lines before "page:" that begin with #
/// are comments.
struct ScanCase {
  std::filesystem::path file;
  std::string name;
  std::string scanner;
  std::string page;
  ScanOutcome expected;
  std::string head;  // the file up to the line "rows:"
};

/// Reads a case. Throws std::runtime_error with the file and what is wrong with it.
ScanCase ReadScanCase(const std::filesystem::path &file);

/// All case files of a folder, by name.
std::vector<std::filesystem::path> ScanCaseFiles(const std::filesystem::path &folder);

/// `outcome` as text of a case file, from the line "rows:" on.
std::string OutcomeText(const ScanOutcome &outcome);

/// Bytes as text of a case file; long runs of one character are abbreviated.
std::string Escaped(std::string_view text);

/// The reverse. Throws std::runtime_error for an unknown escape.
std::string Unescaped(std::string_view text);

}  // namespace borvane
