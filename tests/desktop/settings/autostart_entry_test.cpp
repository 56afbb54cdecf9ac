#include "desktop/settings/autostart_entry.h"

#include <QProcess>
#include <QRegularExpression>

#include <sys/stat.h>

#include "desktop/settings/durable_file.h"
#include "support/desktop/settings_on_disk.h"
#include "support/desktop/watched_disk.h"

namespace borvane {
namespace {

/// A store with an autostart entry in a folder of the test's own.
class AutostartEntryTest : public SettingsOnDisk {
 protected:
  AutostartEntryTest() : store(file(), 1000, entry_file()) {}

  QString entry_folder() const { return root() + "/autostart"; }
  QString entry_file() const { return entry_folder() + "/borvane.desktop"; }

  std::string Entry() const {
    return QFileInfo(entry_file()).isFile() ? ContentOfFile(entry_file()).value_or("unreadable").toStdString()
                                            : "missing";
  }

  /// Somebody else has written the entry.
  void PutEntry(const QByteArray &content) const {
    QDir().mkpath(entry_folder());
    QFile out(entry_file());
    ASSERT_TRUE(out.open(QFile::WriteOnly));
    out.write(content);
  }

  void Tick(std::string_view program = "/usr/bin/borvane") { store.Write(run_key, "Borvane", program); }
  void Clear() { store.Delete(run_key, "Borvane"); }

  SettingsFileStore store;
};

/// The entry with that Exec line.
std::string EntryOf(const std::string &exec) {
  return "[Desktop Entry]\nType=Application\nName=Borvane\nExec=" + exec + "\n";
}

const std::string plain_entry = EntryOf("\"/usr/bin/borvane\"");

TEST_F(AutostartEntryTest, IsWrittenWithItsFolder) {
  Tick();
  EXPECT_EQ(Entry(), plain_entry);
  EXPECT_FALSE(QFile::exists(file())) << "it is no value of the settings file";
}

TEST_F(AutostartEntryTest, IsInTheUsersFolderOfAutostartEntries) {
  EXPECT_EQ(UserAutostartFile(), QFile::decodeName(qgetenv("XDG_CONFIG_HOME")) + "/autostart/borvane.desktop");
}

TEST_F(AutostartEntryTest, IsDeleted) {
  Tick();
  Clear();
  EXPECT_EQ(Entry(), "missing");
  Clear();
  EXPECT_EQ(Entry(), "missing") << "deleting it again does nothing";
}

TEST_F(AutostartEntryTest, IsUntouchedByOtherValues) {
  Tick();
  store.Delete(program_key, "Borvane");
  store.Write(program_key, "Borvane", "x");
  EXPECT_EQ(Entry(), plain_entry);
}

TEST_F(AutostartEntryTest, QuotesWhatIsSpecialInAnExecLine) {
  const std::pair<const char *, const char *> table[] = {
      {"/my programs/borvane", R"("/my programs/borvane")"},
      {R"(/a"b/borvane)", R"("/a\\"b/borvane")"},
      {R"(/a\b/borvane)", R"("/a\\\\b/borvane")"},
      {"/a`b/borvane", R"("/a\\`b/borvane")"},
      {"/a$b/borvane", R"("/a\\$b/borvane")"},
      {"/a'b;&|<>~*?#()/borvane", R"("/a'b;&|<>~*?#()/borvane")"},
      {"/caf\xC3\xA9/borvane", "\"/caf\xC3\xA9/borvane\""},
  };
  for (const auto &[path, exec] : table) {
    Tick(path);
    EXPECT_EQ(Entry(), EntryOf(exec));
    Clear();
  }
}

TEST_F(AutostartEntryTest, StartsByTheShellWhatNotEveryDesktopCanStart) {
  // The bytes of the path in octal, so that the entry is ASCII.
  Tick("/\xE9");
  EXPECT_EQ(Entry(), EntryOf(R"(sh -c "exec \\"\\$(printf %%b '\\\\0057\\\\0351')\\"")"));
  for (const char *path : {"/a%b", "/a=b", "/a\nb", "/a\tb", "/a\x7F"}) {
    Tick(path);
    EXPECT_NE(Entry().find("\nExec=sh -c "), std::string::npos) << path;
    EXPECT_EQ(Entry().find(path), std::string::npos) << path;
  }
}

/// The command line of an entry, as the rules of desktop entries have it read.
QStringList CommandOf(const std::string &text) {
  const QByteArray entry = QByteArray::fromStdString(text);
  QByteArray exec = entry.mid(entry.indexOf("\nExec=") + 6).trimmed();
  exec.replace("\\\\", "\\");
  exec.replace("%%", "%");
  QStringList arguments(QString{});
  bool is_quoted = false;
  for (qsizetype i = 0; i < exec.size(); ++i) {
    if (exec[i] == '"')
      is_quoted = !is_quoted;
    else if (exec[i] == ' ' && !is_quoted)
      arguments.append(QString());
    else
      arguments.back() += QLatin1Char(exec[i] == '\\' && is_quoted ? exec[++i] : exec[i]);
  }
  return arguments;
}

TEST_F(AutostartEntryTest, StartsAProgramWhateverItsPath) {
  for (const QByteArray &name :
       {QByteArray("a b"), QByteArray("a\"b"), QByteArray("a\\b"), QByteArray("a`b"), QByteArray("a$HOME"),
        QByteArray("a%b%"), QByteArray("a\\045b"), QByteArray("a=b"), QByteArray("a\nb"), QByteArray("a'b")}) {
    const QByteArray path = QFile::encodeName(root()) + '/' + name;
    QFile program(QFile::decodeName(path));
    ASSERT_TRUE(program.open(QFile::WriteOnly));
    program.write("#!/bin/sh\nprintf '%s' \"$0\" >\"${0%/*}/started\"\n");
    program.close();
    ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));

    Tick(path.toStdString());
    QStringList command = CommandOf(Entry());
    const QString executable = command.takeFirst();
    EXPECT_EQ(QProcess::execute(executable, command), 0) << name.toStdString();
    EXPECT_EQ(ContentOfFile(root() + "/started"), path) << name.toStdString();
  }
}

TEST_F(AutostartEntryTest, IsReplacedAtAStartWhenItStartsAnotherProgram) {
  PutEntry("[Desktop Entry]\nType=Application\nName=Borvane\nExec=\"/old/borvane\"\n");
  Tick();
  EXPECT_EQ(Entry(), plain_entry);
}

TEST_F(AutostartEntryTest, IsLeftAloneAtAStartWhenItStartsTheProgram) {
  const char *edited =
      "# mine\n[Desktop Entry]\nType = Application\nExec = \"/usr/bin/borvane\"\n"
      "X-GNOME-Autostart-enabled=false\n";
  PutEntry(edited);
  Tick();
  EXPECT_EQ(Entry(), edited);
}

TEST_F(AutostartEntryTest, IsLeftAloneAtAStartWhenItIsHidden) {
  const char *hidden = "[Desktop Entry]\nType=Application\nName=Borvane\nExec=\"/old/borvane\"\nHidden=true\n";
  PutEntry(hidden);
  Tick();
  EXPECT_EQ(Entry(), hidden);
}

TEST_F(AutostartEntryTest, IsReplacedAtAStartWhenOnlyAnotherGroupHasItsLines) {
  PutEntry("[Desktop Action x]\nHidden=true\nExec=\"/usr/bin/borvane\"\n[Desktop Entry]\nHidden=false\n");
  Tick();
  EXPECT_EQ(Entry(), plain_entry);
}

TEST_F(AutostartEntryTest, IsRewrittenByATickOfTheUser) {
  for (const char *before : {"[Desktop Entry]\nExec=\"/usr/bin/borvane\"\nHidden=true\n", "[Desktop Entry]\n", ""}) {
    PutEntry(before);
    store.EndStart();
    Tick();
    EXPECT_EQ(Entry(), plain_entry) << before;
  }
}

TEST_F(AutostartEntryTest, IsNotWrittenAgainUnchanged) {
  Tick();
  store.EndStart();
  const WatchedDisk disk(root());
  Tick();
  EXPECT_TRUE(disk.done().empty());
}

TEST_F(AutostartEntryTest, IsOnTheDiskWithItsFolderWhenAWriteIsOver) {
  const WatchedDisk disk(root());
  Tick();
  const std::vector<std::string> &done = disk.done();
  ASSERT_GE(done.size(), 4u);
  EXPECT_EQ(done[0], "make autostart");
  EXPECT_EQ(done[1], "sync .");
  EXPECT_EQ(done[2], "sync content");
  EXPECT_EQ(done.back(), "sync autostart");
}

TEST_F(AutostartEntryTest, IsGoneFromTheDiskWhenADeletionIsOver) {
  Tick();
  const WatchedDisk disk(root());
  Clear();
  EXPECT_EQ(disk.done(), std::vector<std::string>{"sync autostart"});
}

TEST_F(AutostartEntryTest, ChangesOnTheDiskInItsTurnWithinAnEvent) {
  Write(store, "Area", "Utah");
  QDir().mkpath(entry_folder());
  const WatchedDisk disk(root());
  const auto all_but_contents = [&] {
    std::vector<std::string> done = disk.done();
    std::erase(done, "sync content");
    return done;
  };
  std::vector<std::string> expected = {"name Nalvorin/Borvane.conf", "sync Nalvorin", "name autostart/borvane.desktop",
                                       "sync autostart"};
  store.BeginEvent();
  Write(store, "StartWOS", " 1");
  Tick();
  EXPECT_EQ(all_but_contents(), expected);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nStartWOS=\" 1\"\n");
  store.EndEvent();
  EXPECT_EQ(all_but_contents(), expected);

  store.BeginEvent();
  Write(store, "StartWOS", " 0");
  Clear();
  expected.insert(expected.end(), {"name Nalvorin/Borvane.conf", "sync Nalvorin", "sync autostart"});
  EXPECT_EQ(all_but_contents(), expected);
  store.EndEvent();
}

TEST_F(AutostartEntryTest, StaysAsItWasWhateverFailsAndIsWrittenTheNextTime) {
  const std::string old = "[Desktop Entry]\nExec=\"/old/borvane\"\n";
  PutEntry(QByteArray::fromStdString(old));
  int number = 0;
  for (bool has_struck = true; has_struck;) {
    {
      WatchedDisk disk(root());
      disk.Break(WatchedDisk::Fault::for_good, ++number);
      Tick();
      has_struck = disk.HasStruck();
    }
    EXPECT_TRUE(Entry() == old || Entry() == plain_entry) << number << ": " << Entry();
  }
  EXPECT_GT(number, 4);
  EXPECT_EQ(Entry(), plain_entry);
}

TEST_F(AutostartEntryTest, IsLeftAloneAtAStartWhenItCannotBeRead) {
  const char *hidden = "[Desktop Entry]\nHidden=true\n";
  PutEntry(hidden);
  {
    WatchedDisk disk(root());
    disk.Break(WatchedDisk::Fault::once, 1);
    Tick();
    EXPECT_TRUE(disk.HasStruck());
  }
  EXPECT_EQ(Entry(), hidden);
}

TEST_F(AutostartEntryTest, LeavesAFolderInItsPlaceAlone) {
  QDir().mkpath(entry_file() + "/inner");
  Tick();
  Clear();
  EXPECT_TRUE(QFileInfo(entry_file() + "/inner").isDir());
}

TEST_F(AutostartEntryTest, LeavesAFileInItsFoldersPlaceAlone) {
  QFile in_the_way(entry_folder());
  ASSERT_TRUE(in_the_way.open(QFile::WriteOnly));
  in_the_way.write("mine");
  in_the_way.close();
  Tick();
  Clear();
  EXPECT_EQ(ContentOfFile(entry_folder()), "mine");
}

}  // namespace
}  // namespace borvane
