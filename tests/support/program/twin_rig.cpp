#include "support/program/twin_rig.h"

#include <random>

#include <gtest/gtest.h>

#include "support/scan_case.h"

namespace borvane {

namespace {

std::string Shown(const plain::ScanResult &result) {
  std::string text;
  for (const plain::Row &row : result.rows) {
    for (const std::string &field : row)
      text += "|" + Escaped(field);
    text += "|\n";
  }
  for (const std::string &elsewhere : result.elsewhere)
    text += "elsewhere " + Escaped(elsewhere) + "\n";
  return text + "failure " + std::to_string(result.failure) + ", left " + Escaped(result.rest) + "\n";
}

}  // namespace

bool TwinRig::Agree(const std::string &page) {
  ++pages_;
  clear_trace();
  const plain::ScanResult expected = twins_.plain_scan(page);
  const plain::ScanResult got = ResultOf(twins_, page);
  if (got == expected)
    return true;
  ADD_FAILURE() << "page " << Escaped(page) << "\n" << Shown(got) << "and the plain scanner:\n" << Shown(expected);
  return false;
}

bool TwinRig::AgreeOnSequences(const std::vector<std::string> &beginnings, const std::vector<std::string> &tokens,
                               int length) {
  return std::all_of(beginnings.begin(), beginnings.end(),
                     [&](const std::string &beginning) { return AgreeAfter(beginning, tokens, length); });
}

bool TwinRig::AgreeAfter(const std::string &page, const std::vector<std::string> &tokens, int length) {
  if (!Agree(page))
    return false;
  return length == 0 || std::all_of(tokens.begin(), tokens.end(), [&](const std::string &token) {
           return AgreeAfter(page + token, tokens, length - 1);
         });
}

bool TwinRig::AgreeOnCuts(const std::string &page) {
  for (std::size_t length = 0; length <= page.size(); ++length) {
    if (!Agree(page.substr(0, length)) || !Agree(page.substr(length)))
      return false;
  }
  return true;
}

bool TwinRig::AgreeOnOneWrongCharacter(const std::string &page, std::string_view characters) {
  for (std::size_t position = 0; position < page.size(); ++position) {
    std::string without = page;
    without.erase(position, 1);
    if (!Agree(without))
      return false;
    for (const char other : characters) {
      std::string changed = page;
      changed[position] = other;
      if (!Agree(changed) || !Agree(std::string(page).insert(position, 1, other)))
        return false;
    }
  }
  return true;
}

bool TwinRig::AgreeOnRandomPages(const std::vector<std::string> &pieces, int pages, unsigned shortest,
                                 unsigned longest) {
  std::mt19937 random(20180207);
  for (int page = 0; page < pages; ++page) {
    std::string text;
    for (auto length = shortest + random() % (longest - shortest + 1); length > 0; --length)
      text += pieces[random() % pieces.size()];
    if (!Agree(text))
      return false;
  }
  return true;
}

}  // namespace borvane
