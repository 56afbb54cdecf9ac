#include <QClipboard>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "core/program.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/scripted_server.h"

namespace borvane {
namespace {

/// The keys that the help names in the table or paragraph with that id, such as "Shift+F10".
QStringList KeysOfHelp(const char *id) {
  QFile file(QStringLiteral(BORVANE_HELP));
  EXPECT_TRUE(file.open(QFile::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  const qsizetype begin = text.indexOf(QStringLiteral("id=\"%1\"").arg(QLatin1String(id)));
  EXPECT_NE(begin, -1) << id;
  const qsizetype end = text.indexOf(QRegularExpression("</(table|p)>"), begin);
  QStringList keys;
  auto names = QRegularExpression("<kbd>([^<]+)</kbd>").globalMatch(text.mid(begin, end - begin));
  while (names.hasNext())
    keys += names.next().captured(1);
  EXPECT_FALSE(keys.isEmpty()) << id;
  return keys;
}

/// A window in which the keys of the help are pressed: each has to have an effect there.
class HelpKeys : public testing::Test {
 protected:
  HelpKeys() {
    for (const EndpointHost &row : endpoint_hosts)
      rig.store().Put(hosts_key, row.name, "127.0.0.1:" + server.port());
    conffrm->Combo2.Text = "Los Angeles";
    conffrm->Check5.Value = 0;
    frmRecords->Label7.Click = [this] { rig.note("help"); };
    frmRecords->ListView1.MouseUp = [this](const MouseState & /*mouse*/) { rig.note("menu of the list"); };
    frmRecords->Show();
    Settle();
    QGuiApplication::clipboard()->setText("");
  }

  /// All that a key may change.
  QString State(const FormBase &form) {
    QString state;
    for (const std::string &line : rig.events())
      state += QString::fromStdString(line) + '\n';
    state += QStringLiteral("%1 %2 %3 %4 ").arg(form.Left()).arg(form.Top()).arg(form.Width()).arg(form.IsShown());
    state += QStringLiteral("%1 %2 ").arg(frmRecords->Label9.Visible()).arg(frmRecords->Label10.Visible());
    state += QStringLiteral("%1 %2 ").arg(frmRecords->ListView1.ListItems.Current()).arg(server.request_lines().size());
    return state + QGuiApplication::clipboard()->text();
  }

  /// Three rows, of which the user has chosen the second.
  static void FillList() {
    ListRows &rows = frmRecords->ListView1.ListItems;
    rows.Clear();
    for (const char *magnitude : {"3.1", "2.0", "1.6"})
      rows.Add({.Text = magnitude});
    rows.Choose(2);
    Settle();
  }

  void ExpectEffects(FormBase &form, const QStringList &keys) {
    for (const QString &key : keys) {
      // At a place that no key puts the bar to.
      if (&form != static_cast<FormBase *>(&*frmRecords)) {
        form.Left = 1500;
        form.Top = 1500;
      }
      FillList();
      rig.events();
      const QString before = State(form);
      // A menu does not return while it is open.
      QTimer look;
      QObject::connect(&look, &QTimer::timeout, &look, [this] {
        if (QWidget *menu = QApplication::activePopupWidget()) {
          rig.note("menu");
          menu->close();
        }
      });
      look.start(1);
      const QKeyCombination combination = QKeySequence(key)[0];
      QTest::keyClick(rig.window(form).windowHandle(), combination.key(), combination.keyboardModifiers());
      Settle();
      EXPECT_NE(State(form), before) << key.toStdString();
      if (!form.IsShown())
        form.Show();
    }
  }

  ScriptedServer server{Serves("17")};
  ScreenRig rig;
};

TEST_F(HelpKeys, OfTheWindowHaveAnEffectThere) { ExpectEffects(*frmRecords, KeysOfHelp("window-keys")); }

TEST_F(HelpKeys, OfTheListHaveAnEffectThere) { ExpectEffects(*frmRecords, KeysOfHelp("list-keys")); }

TEST_F(HelpKeys, OfTheBarsHaveAnEffectOnBoth) {
  newTagFrm->Show();
  ExpectEffects(*newTagFrm, KeysOfHelp("bar-keys") + KeysOfHelp("long-bar-keys"));
  Form1->Show();
  ExpectEffects(*Form1, KeysOfHelp("bar-keys"));
}

TEST_F(HelpKeys, WithoutAnEffectAreNoticed) {
  const QString before = State(*frmRecords);
  QTest::keyClick(rig.window(*frmRecords).windowHandle(), Qt::Key_X);
  Settle();

  EXPECT_EQ(State(*frmRecords), before);
}

TEST(Help, RefersToNothingOutside) {
  QFile file(QStringLiteral(BORVANE_HELP));
  ASSERT_TRUE(file.open(QFile::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  EXPECT_FALSE(text.contains(QRegularExpression("src=|url\\(|@import|<script|<link")));
  auto links = QRegularExpression("href=\"([^\"]*)\"").globalMatch(text);
  while (links.hasNext()) {
    const QString link = links.next().captured(1);
    ASSERT_TRUE(link.startsWith('#')) << link.toStdString();
    EXPECT_TRUE(text.contains("id=\"" + link.mid(1) + "\"")) << link.toStdString();
  }
}

}  // namespace
}  // namespace borvane
