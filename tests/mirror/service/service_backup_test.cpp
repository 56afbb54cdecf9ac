#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include "support/mirror/databases.h"
#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"

// The commands of docs/service.md for backup and restore, while a mirror runs.

namespace borvane::mirror {
namespace {

/// The commands in the first code block after the text.
QString CommandsAfter(const QString &text) {
  QFile file(BORVANE_DOCS "/service.md");
  EXPECT_TRUE(file.open(QFile::ReadOnly));
  const QString document = QString::fromUtf8(file.readAll());
  const QRegularExpression block(QRegularExpression::escape(text) + "\\n\\n```sh\\n(.*?)```",
                                 QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch match = block.match(document);
  EXPECT_TRUE(match.hasMatch()) << text.toStdString();
  return match.captured(1);
}

class Backup : public testing::Test {
 protected:
  /// Runs the commands in the user's folder.
  void Run(const QString &commands, const QStringList &variables = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home_.path());
    for (const QString &variable : variables)
      environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(home_.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("sh", {"-e", "-c", commands});
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 0) << commands.toStdString() << process.readAll().constData();
  }

  /// Reports before and after the backup; then the restoration, and a report after it.
  void ExpectTheReportsOfTheBackup(MirrorProcess &mirror, const QString &backup, const QString &restore,
                                   const QStringList &variables = {}) {
    const auto ask = [&mirror](const QByteArray &command) { return AskMaker(mirror.Port(), command).value().body; };
    EXPECT_EQ(ask("puta&map=A&strout=before"), "ok");
    Run(backup, variables);
    EXPECT_EQ(ask("puta&map=A&strout=lost"), "ok");
    Run(restore, variables);
    EXPECT_EQ(ask("geta&map=A"), "before\n");
    EXPECT_EQ(ask("puta&map=A&strout=after"), "ok");
    EXPECT_EQ(ask("geta&map=A"), "before\nafter\n");
    EXPECT_EQ(mirror.Errors(), "");
  }

  QTemporaryDir home_;
};

TEST_F(Backup, OfAFileIsRestoredByTheDocumentedCommands) {
  MirrorProcess mirror({}, {.variables = {"HOME=" + home_.path(), "XDG_DATA_HOME="}});
  ExpectTheReportsOfTheBackup(mirror, CommandsAfter("To back up a file:"), CommandsAfter("To restore it:"));
}

TEST_F(Backup, OfPostgreSQLIsRestoredByTheDocumentedCommands) {
  const EmptyDatabase database(DatabaseKind::PostgreSQL);
  const StoreAddress address = database.Address();
  MirrorProcess mirror({"--store", database.AddressText()});
  const auto here = [&address](QString commands) {
    EXPECT_TRUE(commands.contains("felt")) << "the documented name of the database";
    return commands.replace("felt", '"' + address.database + '"');
  };
  ExpectTheReportsOfTheBackup(mirror, here(CommandsAfter("To back up a database:")),
                              here(CommandsAfter("reports.dump felt\n```\n\nTo restore it:")),
                              {"PGHOST=" + address.host, "PGPORT=" + QString::number(address.port),
                               "PGUSER=" + address.user, "PGPASSWORD=" + address.password});
}

}  // namespace
}  // namespace borvane::mirror
