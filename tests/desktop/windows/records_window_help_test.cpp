#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>
#include <QWindow>
#include <QXmlStreamReader>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "core/program.h"
#include "desktop/windows_1252.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
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

QString HelpFile() {
  QFile file(QStringLiteral(BORVANE_HELP));
  EXPECT_TRUE(file.open(QFile::ReadOnly));
  return QString::fromUtf8(file.readAll());
}

/// What a reader sees of the help, in one line.
QString HelpText() {
  QXmlStreamReader reader(HelpFile());
  QString text;
  while (!reader.atEnd()) {
    if (reader.readNext() == QXmlStreamReader::Characters)
      text += reader.text();
  }
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString() << " in line " << reader.lineNumber();
  return text.simplified();
}

TEST(Help, HasEveryElementClosedAndEveryMarkOnce) {
  EXPECT_GT(HelpText().size(), 10'000);
  auto marks = QRegularExpression(" id=\"([^\"]*)\"").globalMatch(HelpFile());
  QStringList seen;
  while (marks.hasNext())
    seen += marks.next().captured(1);
  EXPECT_GT(seen.size(), 10);
  EXPECT_EQ(seen.removeDuplicates(), 0);
}

TEST(Help, RefersToNothingOutside) {
  const QString text = HelpFile();
  EXPECT_FALSE(text.contains(QRegularExpression("url\\(|@import|<script|<link|https?:")));
  auto links = QRegularExpression("href=\"([^\"]*)\"").globalMatch(text);
  while (links.hasNext()) {
    const QString link = links.next().captured(1);
    ASSERT_TRUE(link.startsWith('#')) << link.toStdString();
    EXPECT_TRUE(text.contains("id=\"" + link.mid(1) + "\"")) << link.toStdString();
  }
}

TEST(Help, HasPicturesOfTheDocsWithATextForEach) {
  const QDir docs(QFileInfo(QStringLiteral(BORVANE_HELP)).dir().filePath("../docs"));
  const QString text = HelpFile();
  auto sources = QRegularExpression("src(set)?=\"([^\"]*)\"").globalMatch(text);
  int pictures = 0;
  for (; sources.hasNext(); ++pictures) {
    const QString source = sources.next().captured(2);
    ASSERT_TRUE(source.startsWith("help/")) << source.toStdString();
    EXPECT_TRUE(docs.exists(source.mid(5))) << source.toStdString();
  }
  EXPECT_GT(pictures, 5);
  EXPECT_EQ(text.count("<img "), text.count(QRegularExpression("<img [^>]* alt=\"[^\"]+\"/>")));
}

/// The texts by which a user knows what is in a window: of its menus, buttons, boxes and frames, of its links, and with
/// `labels` of all its labels.
QStringList TextsOf(const Container &container, bool labels) {
  QStringList texts;
  for (Control *control : container.children()) {
    std::string text;
    if (const auto *entry = dynamic_cast<MenuItem *>(control))
      text = entry->Caption();
    else if (const auto *check_box = dynamic_cast<CheckBox *>(control))
      text = check_box->Caption();
    else if (const auto *option = dynamic_cast<OptionButton *>(control))
      text = option->Caption();
    else if (const auto *button = dynamic_cast<CommandButton *>(control))
      text = button->Caption();
    else if (const auto *frame = dynamic_cast<Frame *>(control))
      text = frame->Caption();
    else if (const auto *label = dynamic_cast<Label *>(control); label != nullptr && (labels || label->Click.IsWired()))
      text = label->Caption();
    texts += ShownText(text).simplified();
    if (const auto *inner = dynamic_cast<const Container *>(control))
      texts += TextsOf(*inner, labels);
  }
  texts.removeAll("");
  texts.removeAll("-");
  return texts;
}

TEST(Help, NamesEveryMenuEntryButtonBoxAndSetting) {
  ScreenRig rig;
  QStringList texts = TextsOf(*frmRecords, false) + TextsOf(*conffrm, true) + TextsOf(ComPart->Frame1, true) +
                      TextsOf(*ComPart, false) + QStringList(ShownText(ComPart->Caption()));
  for (int column = 1; column <= ComPart->ListView1.ColumnHeaders.Count(); ++column)
    texts += ShownText(ComPart->ListView1.ColumnHeaders(column).Text);
  // The labels of the bars have the texts of events.
  for (const FormBase *bar : {static_cast<FormBase *>(&*Form1), static_cast<FormBase *>(&*newTagFrm)}) {
    for (const QString &text : TextsOf(*bar, false)) {
      if (!text.startsWith("Label"))
        texts += text;
    }
  }
  for (int button = 1; button <= frmRecords->Toolbar1.ButtonCount(); ++button)
    texts += ShownText(frmRecords->Toolbar1.Buttons(button).ToolTipText);
  for (int entry = 0; entry < conffrm->Combo1.ListCount(); ++entry)
    texts += ShownText(conffrm->Combo1.List(entry));
  EXPECT_GT(texts.size(), 60);

  const QString help = HelpText();
  for (const QString &text : texts)
    EXPECT_TRUE(help.contains('"' + text + '"')) << text.toStdString();
}

}  // namespace
}  // namespace borvane
