#include "alert/quake_log.h"

#include <vector>

#include "alert/log_file.h"
#include "core/program.h"
#include "core/program_info.h"
#include "records/frmRecords.h"

namespace borvane {

namespace {

void SetLogFolder() {
  std::int32_t documents = 5;
  Module1->LogFolder = GetSpecialFolderPath(documents) + path_separator + std::string(program_title);
}

/// A row as it is displayed, in one line.
std::string LineOf(const ListItem &row, int columns) {
  std::string line = row.Text;
  for (int number = 1; number < columns; ++number) {
    const std::string_view text = row.SubItems(number);
    // Meant (log-leaves-out-any-htm): only the event's page should be left out. Any text with "htm" in it is, a place's
    // name too; the lines of existing logs were made so.
    if (text.find("htm") != std::string_view::npos)
      continue;
    line += ' ';
    line += text;
  }
  return line;
}

/// The lines of all rows.
std::vector<std::string> LinesOf(const ListView &list) {
  // Meant (log-ignores-only-for): with "Only for" chosen, only the rows of that place should be logged. All are.
  std::vector<std::string> lines;
  for (int row = 1; row <= list.ListItems.Count(); ++row)
    lines.push_back(LineOf(list.ListItems(row), list.ColumnHeaders.Count()));
  return lines;
}

}  // namespace

std::string GetSpecialFolderPath(std::int32_t &folder) { return platform().files.SpecialFolder(folder).value_or(""); }

void EnsureLogFolder() {
  SetLogFolder();
  if (!platform().files.Exists(Module1->LogFolder))
    platform().files.MakeFolder(Module1->LogFolder);
}

void InitLogPath() {
  SetLogFolder();
  frmRecords->Label5.Enabled = platform().files.Exists(LogPath());
}

std::string LogPath() { return Module1->LogFolder + path_separator + "quakes.log"; }

void WriteQuakeLog() {
  try {
    EnsureLogFolder();

    const std::string path = LogPath();
    const std::vector<std::string> lines = LinesOf(frmRecords->ListView1);
    LogFile log(platform().files, path, lines);
    for (const std::string &line : lines) {
      log.Ensure();
      if (!log.Contains(line))
        log.Append(line);
    }
  } catch (const RuntimeError &) {
    // The rows that are not in the log yet are offered again at the next refresh.
  }
}

}  // namespace borvane
