#include <random>

#include <gtest/gtest.h>

#include "support/program/log_rig.h"
#include "support/program/plain_log.h"

namespace borvane {
namespace {

/// A random log, random rows, and what other programs and the disk do while the rows are written.
class Scenario {
 public:
  explicit Scenario(unsigned seed) : random_(seed) {
    for (int row = Number(0, 6); row > 0; --row)
      rows_.push_back(Text(3));
    has_folder_ = Number(0, 4) > 0;
    if (has_folder_ && Number(0, 4) > 0)
      before_ = Text(12);
    piece_size_ = static_cast<std::size_t>(Number(1, 9));
    if (before_ && !before_->empty() && Number(0, 3) == 0)
      damaged_byte_ = static_cast<std::size_t>(Number(0, static_cast<int>(before_->size()) - 1));
    for (int event = Number(0, 3); event > 0; --event)
      events_.push_back({Number(0, 1) == 0 ? "exists" : "append", Number(1, 8), Number(0, 5), Text(6)});
  }

  const std::vector<std::string> &rows() const { return rows_; }

  void Prepare(FakeFiles &files) const {
    if (has_folder_)
      files.PutFolder(log_folder);
    if (before_)
      files.Put(log_path, *before_);
    files.SetPieceSize(piece_size_);
    if (damaged_byte_)
      files.Damage(log_path, *damaged_byte_);
    for (const Event &event : events_)
      files.BeforeCall(event.word, event.number, [&files, event] { Happen(files, event); });
  }

 private:
  struct Event {
    const char *word;
    int number;
    int kind;
    std::string text;
  };

  static void Happen(FakeFiles &files, const Event &event) {
    switch (event.kind) {
      case 0:
        files.Remove(log_path);
        break;
      case 1:
        files.Remove(log_folder);
        break;
      case 2:
        if (!files.HasFolder(log_path))
          files.Put(log_path, event.text);
        break;
      case 3:
        if (files.ContentOf(log_path))
          files.Extend(log_path, event.text);
        break;
      case 4:
        if (!files.ContentOf(log_path))
          files.PutFolder(log_path);
        break;
      default:
        files.RefuseWrites();
    }
  }

  int Number(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  /// Up to so many parts that are often equal, with line ends and parts of them.
  std::string Text(int parts) {
    static const std::vector<std::string> all = {"a", "b", "a", "ab", "\r\n", "\r\n", "\r", "\n"};
    std::string text;
    for (int part = Number(0, parts); part > 0; --part)
      text += all[static_cast<std::size_t>(Number(0, static_cast<int>(all.size()) - 1))];
    return text;
  }

  std::mt19937 random_;
  std::vector<std::string> rows_;
  bool has_folder_ = false;
  std::optional<std::string> before_;
  std::size_t piece_size_ = 1;
  std::optional<std::size_t> damaged_byte_;
  std::vector<Event> events_;
};

/// What is at the log's place in the end.
std::string ContentOf(const FakeFiles &files) {
  return files.ContentOf(log_path).value_or(files.HasFolder(log_path) ? "folder" : "none");
}

TEST(WriteQuakeLog, EndsAsIfItReadTheFileForEachRow) {
  constexpr unsigned scenarios = 10'000;
  for (unsigned seed = 1; seed <= scenarios; ++seed) {
    const Scenario scenario(seed);

    Trace plain_trace;
    FakeFiles plain_files(plain_trace);
    scenario.Prepare(plain_files);
    plain::WriteLog(plain_files, log_folder, scenario.rows());

    LogRig rig;
    frmRecords->ListView1.ColumnHeaders.Clear();
    for (const std::string &row : scenario.rows())
      rig.add_row(row);
    scenario.Prepare(rig.files());
    rig.write();

    // The calls that change something, and those that both make as often.
    ASSERT_EQ(rig.trace({"exists", "make-folder", "append"}), plain_trace.Of({"exists", "make-folder", "append"}))
        << "scenario " << seed;
    ASSERT_EQ(ContentOf(rig.files()), ContentOf(plain_files)) << "scenario " << seed;
  }
}

}  // namespace
}  // namespace borvane
