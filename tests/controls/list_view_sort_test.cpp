#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/list_view.h"
#include "support/box.h"
#include "support/failure_of.h"

namespace borvane {
namespace {

using Texts = std::vector<std::string>;

/// A list of two columns.
struct SortedList {
  Box box;
  ListView list{box, "ListView1", {.Columns = {{"Magnitude", {}}, {"Where?", {}}}}};
  ListRows &rows = list.ListItems;

  void Add(const std::string &text, const std::string &sub_item = "") {
    rows.Add({.Text = text, .SubItemTexts = {sub_item}});
  }

  void AddAll(const Texts &texts) {
    for (const std::string &text : texts)
      Add(text);
  }

  void Sort(int key, int order) {
    list.Sorted = true;
    list.SortKey = key;
    list.SortOrder = order;
  }

  Texts SubItems() const {
    Texts texts;
    for (int row = 1; row <= rows.Count(); ++row)
      texts.emplace_back(rows(row).SubItems(1));
    return texts;
  }

  /// The rows' own texts.
  Texts Shown() const {
    Texts texts;
    for (int row = 1; row <= rows.Count(); ++row)
      texts.push_back(rows(row).Text);
    return texts;
  }
};

TEST(SortedRows, AreInTheOrderOfTheirTextsAndNotOfNumbers) {
  SortedList sorted;
  sorted.AddAll({"2.0", "10.0", "", "5.1", "-1", "1.6"});
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.Shown(), (Texts{"", "-1", "1.6", "10.0", "2.0", "5.1"}));
  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(sorted.Shown(), (Texts{"5.1", "2.0", "10.0", "1.6", "-1", ""}));
}

TEST(SortedRows, AreSortedByTheColumnOfTheKey) {
  SortedList sorted;
  sorted.Add("1", "b");
  sorted.Add("2", "c");
  sorted.Add("3", "a");
  sorted.Sort(1, ListView::ascending);
  EXPECT_EQ(sorted.Shown(), (Texts{"3", "1", "2"}));
  sorted.list.SortKey = 0;
  EXPECT_EQ(sorted.Shown(), (Texts{"1", "2", "3"}));
}

TEST(SortedRows, AreTheSameInEitherCaseOfAToZAlone) {
  RecordProperty("quirk", "sorts-fold-a-to-z-only");
  SortedList sorted;
  sorted.AddAll({"b", "\xE9", "A", "Z", "\xC9", "_", "a", "@", "[", "z", "B"});
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.Shown(), (Texts{"@", "[", "_", "A", "a", "b", "B", "Z", "z", "\xC9", "\xE9"}));
}

TEST(SortedRows, PutATextInFrontOfALongerOneThatBeginsWithIt) {
  SortedList sorted;
  sorted.AddAll({std::string("ab\0", 3), "ab", "abc", "a", std::string("ab\0a", 4)});
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.Shown(), (Texts{"a", "ab", std::string("ab\0", 3), std::string("ab\0a", 4), "abc"}));
}

TEST(SortedRows, KeepTheOrderOfEqualTextsInBothDirections) {
  SortedList sorted;
  for (const char *place : {"first", "second", "third"})
    sorted.Add("2.0", place);
  sorted.Add("1.0", "small");
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.SubItems(), (Texts{"small", "first", "second", "third"}));
  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(sorted.SubItems(), (Texts{"first", "second", "third", "small"}));
  sorted.list.SortOrder = ListView::ascending;
  EXPECT_EQ(sorted.SubItems(), (Texts{"small", "first", "second", "third"}));
}

TEST(SortedRows, KeepTheOrderThatTheyHadByAnotherColumn) {
  SortedList sorted;
  sorted.Add("2.0", "b");
  sorted.Add("1.0", "c");
  sorted.Add("2.0", "a");
  sorted.Sort(1, ListView::ascending);
  EXPECT_EQ(sorted.SubItems(), (Texts{"a", "b", "c"}));
  sorted.Sort(0, ListView::ascending);
  EXPECT_EQ(sorted.SubItems(), (Texts{"c", "a", "b"}));
}

TEST(SortedRows, AreSortedOnceByAllThatIsSetTogether) {
  SortedList sorted;
  sorted.Add("2.0", "same");
  sorted.Add("1.0", "same");
  sorted.Sort(1, ListView::descending);
  EXPECT_EQ(sorted.Shown(), (Texts{"2.0", "1.0"})) << "the first step sorts by the first column";
}

TEST(SortedRows, StayAsTheyAreWhereTheKeyHasNoTexts) {
  SortedList sorted;
  sorted.AddAll({"2.0", "1.0", "3.0"});
  sorted.Sort(9, ListView::ascending);
  EXPECT_EQ(sorted.Shown(), (Texts{"2.0", "1.0", "3.0"}));
}

TEST(SortedRows, RaiseASubscriptFailureForAKeyBelowTheFirstColumn) {
  SortedList sorted;
  sorted.AddAll({"2.0", "1.0"});
  sorted.Sort(-1, ListView::ascending);
  EXPECT_EQ(FailureOf([&] { sorted.rows(1); }), 9);
  sorted.list.SortKey = 0;
  EXPECT_EQ(sorted.Shown(), (Texts{"1.0", "2.0"}));
}

TEST(SortedRows, TakeAnAddedRowWhereItsTextBelongs) {
  SortedList sorted;
  sorted.AddAll({"5", "1"});
  sorted.list.Sorted = true;
  sorted.Add("3", "one");
  EXPECT_EQ(sorted.Shown(), (Texts{"1", "3", "5"}));
  sorted.AddAll({"9", "0"});
  EXPECT_EQ(sorted.Shown(), (Texts{"0", "1", "3", "5", "9"}));
  sorted.Add("3", "two");
  EXPECT_EQ(sorted.SubItems(), (Texts{"", "", "one", "two", "", ""})) << "after the equal ones";
  sorted.list.SortOrder = ListView::descending;
  sorted.Add("3", "three");
  EXPECT_EQ(sorted.SubItems(), (Texts{"", "", "one", "two", "three", "", ""})) << "after the equal ones";
}

TEST(SortedRows, StaySortedWhenTheListIsFilledAfresh) {
  SortedList sorted;
  sorted.Sort(1, ListView::descending);
  sorted.Add("1", "b");
  EXPECT_EQ(sorted.Shown(), Texts{"1"});
  sorted.rows.Clear();
  EXPECT_EQ(sorted.rows.Count(), 0);
  sorted.Add("1", "b");
  sorted.Add("2", "c");
  sorted.Add("3", "a");
  EXPECT_EQ(sorted.Shown(), (Texts{"2", "1", "3"}));
}

TEST(SortedRows, DoNotMoveWhenATextIsWrittenLater) {
  SortedList sorted;
  sorted.Add("1", "b");
  sorted.Add("2", "c");
  sorted.Sort(1, ListView::ascending);
  sorted.rows.SetSubItem(1, 1, "z");
  sorted.rows.SetText(2, "0");
  EXPECT_EQ(sorted.SubItems(), (Texts{"z", "c"}));
  EXPECT_EQ(sorted.Shown(), (Texts{"1", "0"}));

  sorted.Add("3", "d");
  EXPECT_EQ(sorted.SubItems(), (Texts{"d", "z", "c"})) << "in front of the first one that is greater";

  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(sorted.SubItems(), (Texts{"z", "d", "c"})) << "the next sort moves them";
}

TEST(SortedRows, PlaceAnAddedRowBeforeATextIsWritten) {
  SortedList sorted;
  sorted.list.Sorted = true;
  sorted.AddAll({"2", "1"});
  sorted.rows.SetText(1, "3");
  EXPECT_EQ(sorted.Shown(), (Texts{"3", "2"}));
}

TEST(SortedRows, KeepTheirOrderWhenTheSortIsSwitchedOffAndAppendFromThenOn) {
  SortedList sorted;
  sorted.AddAll({"2", "1"});
  sorted.list.Sorted = true;
  sorted.Add("0");
  sorted.list.Sorted = false;
  sorted.Add("1.5");
  EXPECT_EQ(sorted.Shown(), (Texts{"0", "1", "2", "1.5"}));
  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(sorted.Shown(), (Texts{"0", "1", "2", "1.5"}));
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.Shown(), (Texts{"2", "1.5", "1", "0"}));
}

TEST(SortedRows, ArePlacedByTheOldColumnBeforeTheyAreSortedByTheNewOne) {
  SortedList sorted;
  sorted.list.Sorted = true;
  sorted.Add("2", "same");
  sorted.Add("1", "same");
  sorted.list.SortKey = 1;
  EXPECT_EQ(sorted.Shown(), (Texts{"1", "2"}));
}

// The current row.

TEST(SortedRows, TakeTheCurrentRowWithThem) {
  SortedList sorted;
  sorted.AddAll({"2", "3", "1"});
  sorted.rows.Choose(2);
  sorted.list.Sorted = true;
  EXPECT_EQ(sorted.rows.Current(), 3);
  EXPECT_EQ(sorted.list.SelectedItem().Text, "3");
  sorted.Add("0");
  EXPECT_EQ(sorted.list.SelectedItem().Text, "3");
  EXPECT_EQ(sorted.rows.Current(), 4);
  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(sorted.rows.Current(), 1);
  sorted.rows.Choose(3);
  EXPECT_EQ(sorted.list.SelectedItem().Text, "1");
}

TEST(SortedRows, HaveTheFirstOneAddedAsTheCurrentOneWhereverItIs) {
  SortedList sorted;
  sorted.list.Sorted = true;
  sorted.AddAll({"2", "3", "1"});
  EXPECT_EQ(sorted.rows.Current(), 2);
  EXPECT_EQ(sorted.list.SelectedItem().Text, "2");
  sorted.rows.Clear();
  EXPECT_EQ(sorted.rows.Current(), 0);
  EXPECT_EQ(FailureOf([&] { sorted.list.SelectedItem(); }), 91);
}

// The watcher.

struct Watcher : ListWatcher {
  Texts seen;

  void RowAdded(int row) override { seen.push_back("added " + std::to_string(row)); }
  void RowsMoved() override { seen.emplace_back("moved"); }
  void RowChanged(int row) override { seen.push_back("changed " + std::to_string(row)); }
  void RowsCleared() override { seen.emplace_back("cleared"); }
  void ColumnsChanged() override { seen.emplace_back("columns"); }
};

TEST(SortedRows, NotifyTheirWatcherThatTheyMove) {
  SortedList sorted;
  Watcher watcher;
  sorted.list.WatchRows(&watcher);
  sorted.list.Sorted = true;
  EXPECT_EQ(watcher.seen, Texts{}) << "there is no row";
  sorted.AddAll({"2", "1"});
  sorted.rows.SetText(1, "0");
  sorted.list.SortOrder = ListView::descending;
  sorted.list.Sorted = false;
  sorted.Add("3");
  sorted.list.SortOrder = ListView::ascending;
  sorted.rows.Clear();
  EXPECT_EQ(watcher.seen, (Texts{"moved", "moved", "changed 1", "moved", "added 3", "cleared"}));
  sorted.list.WatchRows(nullptr);
}

TEST(SortedRows, CanBeReadWhenTheWatcherIsNotified) {
  SortedList sorted;
  struct Reader : Watcher {
    SortedList *sorted = nullptr;
    Texts shown;
    void RowsMoved() override { shown = sorted->Shown(); }
  } reader;
  reader.sorted = &sorted;
  sorted.list.WatchRows(&reader);
  sorted.list.Sorted = true;
  sorted.AddAll({"2", "1"});
  EXPECT_EQ(reader.shown, (Texts{"1", "2"}));
  sorted.list.SortOrder = ListView::descending;
  EXPECT_EQ(reader.shown, (Texts{"2", "1"}));
  sorted.list.WatchRows(nullptr);
}

// Anything in any order, compared with a plain list that moves whole rows.

class PlainList {
 public:
  void Add(const std::string &text, const std::string &sub_item) {
    const Row row = {text, sub_item};
    const auto greater = [&](const Row &other) { return Before(row, other); };
    const bool is_placed = is_sorted && !is_to_be_sorted_;
    rows_.insert(is_placed ? std::find_if(rows_.begin(), rows_.end(), greater) : rows_.end(), row);
  }

  void Set(bool sorted, int new_key, bool is_descending) {
    if (!sorted)
      Read();
    is_sorted = sorted;
    key = new_key;
    descending = is_descending;
    is_to_be_sorted_ = is_sorted && !rows_.empty();
  }

  void Clear() {
    rows_.clear();
    is_to_be_sorted_ = false;
  }

  void Write(int row, int column, const std::string &text) {
    Read();
    rows_[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column)] = text;
  }

  Texts Shown() {
    Read();
    Texts texts;
    for (const Row &row : rows_)
      texts.push_back(row[0] + "," + row[1]);
    return texts;
  }

  bool is_sorted = false;
  int key = 0;
  bool descending = false;

 private:
  using Row = std::vector<std::string>;

  static std::string Folded(std::string text) {
    for (char &c : text)
      if (c >= 'A' && c <= 'Z')
        c = static_cast<char>(c + 32);
    return text;
  }

  bool Before(const Row &a, const Row &b) const {
    const std::string of_a = Folded(a[static_cast<std::size_t>(key)]);
    const std::string of_b = Folded(b[static_cast<std::size_t>(key)]);
    return descending ? of_b < of_a : of_a < of_b;
  }

  void Read() {
    if (is_to_be_sorted_)
      std::stable_sort(rows_.begin(), rows_.end(), [&](const Row &a, const Row &b) { return Before(a, b); });
    is_to_be_sorted_ = false;
  }

  std::vector<Row> rows_;
  bool is_to_be_sorted_ = false;
};

/// One list beside the plain one, while the same random things happen to both.
class RandomList {
 public:
  explicit RandomList(unsigned seed) : random_(seed) {}

  void Step() {
    switch (Number(12)) {
      case 0:
        rows_.Clear();
        plain_.Clear();
        break;
      case 1:
        plain_.Set(!plain_.is_sorted, plain_.key, plain_.descending);
        sorted_.list.Sorted = plain_.is_sorted;
        break;
      case 2:
        plain_.Set(plain_.is_sorted, 1 - plain_.key, plain_.descending);
        sorted_.list.SortKey = plain_.key;
        break;
      case 3:
        plain_.Set(plain_.is_sorted, plain_.key, !plain_.descending);
        sorted_.list.SortOrder = plain_.descending ? ListView::descending : ListView::ascending;
        break;
      case 4:
        if (rows_.Count() > 0)
          Write();
        break;
      case 5:
        Compare();
        break;
      default:
        const std::string text = Text();
        const std::string sub_item = Text();
        plain_.Add(text, sub_item);
        sorted_.Add(text, sub_item);
    }
  }

  void Compare() {
    Texts shown = sorted_.Shown();
    const Texts sub_items = sorted_.SubItems();
    for (std::size_t row = 0; row < shown.size(); ++row)
      shown[row] += "," + sub_items[row];
    ASSERT_EQ(shown, plain_.Shown());
  }

 private:
  int Number(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  std::string Text() {
    std::string text;
    for (int length = Number(3); length > 0; --length)
      text += "aAbB\xE9"[Number(5)];
    return text;
  }

  void Write() {
    const int row = 1 + Number(rows_.Count());
    const int column = Number(2);
    const std::string text = Text();
    plain_.Write(row, column, text);
    if (column == 0)
      rows_.SetText(row, text);
    else
      rows_.SetSubItem(row, 1, text);
  }

  std::mt19937 random_;
  SortedList sorted_;
  ListRows &rows_ = sorted_.rows;
  PlainList plain_;
};

TEST(SortedRows, AreThoseOfAPlainListWhateverHappens) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    RandomList list(seed);
    for (int step = 0; step < 200; ++step)
      list.Step();
    list.Compare();
    if (HasFatalFailure())
      FAIL() << "seed " << seed;
  }
}

}  // namespace
}  // namespace borvane
