#pragma once

#include <string>
#include <vector>

#include "support/program/twins.h"
#include "support/rig.h"

namespace borvane {

/// A started program that scans one page after another, each compared with the plain scanner. Each comparison returns
/// false at the first difference.
class TwinRig : public Rig {
 public:
  explicit TwinRig(const Twins &twins) : twins_(twins) { start(); }

  bool Agree(const std::string &page);

  /// On every sequence of up to `length` of `tokens` after each of `beginnings`.
  bool AgreeOnSequences(const std::vector<std::string> &beginnings, const std::vector<std::string> &tokens, int length);

  /// On the page without its beginning and without its end, cut at every byte.
  bool AgreeOnCuts(const std::string &page);

  /// On the page with one of its characters missing, replaced or doubled by one of `characters`.
  bool AgreeOnOneWrongCharacter(const std::string &page, std::string_view characters);

  /// On pages of random pieces, from `shortest` to `longest` of them.
  bool AgreeOnRandomPages(const std::vector<std::string> &pieces, int pages, unsigned shortest, unsigned longest);

  /// How many pages have been compared.
  std::size_t pages() const { return pages_; }

 private:
  bool AgreeAfter(const std::string &page, const std::vector<std::string> &tokens, int length);

  const Twins &twins_;
  std::size_t pages_ = 0;
};

/// How many tokens are tried after each beginning. A build for debugging is some ten times slower, and tries one less.
#ifdef NDEBUG
inline constexpr int tokens_after = 5;
#else
inline constexpr int tokens_after = 4;
#endif

}  // namespace borvane
