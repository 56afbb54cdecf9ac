#include "desktop/windows/tray_icon.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// The program after its start, with the icon.
class TrayIconTest : public testing::Test {
 protected:
  TrayIconTest() {
    frmRecords->Show();
    icon_.emplace(rig_.forms());
    Settle();
    rig_.events();
  }

  QSystemTrayIcon &icon() { return icon_->icon(); }

  void Activate(QSystemTrayIcon::ActivationReason reason = QSystemTrayIcon::Trigger) {
    Q_EMIT icon().activated(reason);
    Settle();
  }

  QAction &Entry(int number) { return *icon().contextMenu()->actions().at(number); }

  static void PutShortBarUp() { frmRecords->Toolbar1_ButtonClick(RecordsForm::button_short_bar); }
  static void PutLongBarUp() { frmRecords->Toolbar1_ButtonClick(RecordsForm::button_long_bar); }

  /// The windows that are loaded, those that show with a "+". The settings are always loaded.
  static std::string Loaded() {
    std::string windows;
    for (const FormBase *form : current->Forms()) {
      if (form != conffrm.IfLoaded())
        windows += (windows.empty() ? "" : " ") + std::string(form->name()) + (form->IsShown() ? "+" : "");
    }
    return windows;
  }

  /// What an activation must leave as it is.
  static std::string State() {
    const RecordsForm &records = *frmRecords;
    std::string state = std::to_string(Module1->BarMode) + " " + std::to_string(Module1->RefreshCount);
    for (const TimerControl *timer : {&records.Timer1, &records.Timer2, &records.Timer3})
      state += timer->Enabled() ? " on" : " off";
    if (const ShortBarForm *bar = Form1.IfLoaded())
      state += (bar->Timer1.Enabled() ? " on " : " off ") + std::to_string(bar->IdleTicks);
    if (const LongBarForm *bar = newTagFrm.IfLoaded())
      state += (bar->Timer1.Enabled() ? " on " : " off ") + std::to_string(bar->EdgeTicks);
    return state;
  }

  bool IsActive(const FormBase &form) const { return QApplication::activeWindow() == &rig_.window(form); }

  ScreenRig rig_;
  std::optional<TrayIcon> icon_;
};

TEST_F(TrayIconTest, HasTheCaptionOfTheRecordsWindowAsItsText) {
  EXPECT_EQ(icon().toolTip(), "Borvane - Last Events");
  frmRecords->Caption = "2.0 [*] - Sylmar";
  EXPECT_EQ(icon().toolTip(), "2.0 [*] - Sylmar");

  frmRecords->Hide();
  frmRecords->Caption = "2.1\x81";
  EXPECT_EQ(icon().toolTip(), "2.1?");
}

TEST_F(TrayIconTest, HasAPictureAndAMenu) {
  EXPECT_FALSE(icon().icon().isNull());
  ASSERT_EQ(icon().contextMenu()->actions().size(), 2);
  EXPECT_EQ(Entry(0).text(), "Show");
  EXPECT_EQ(Entry(1).text(), "Exit");
}

TEST_F(TrayIconTest, IsNotThereOnAScreenThatHasNoTray) { EXPECT_FALSE(icon().isVisible()); }

TEST_F(TrayIconTest, RaisesTheRecordsWindow) {
  conffrm->Show();
  Settle();
  ASSERT_FALSE(IsActive(*frmRecords));
  Activate();

  EXPECT_TRUE(IsActive(*frmRecords));
  EXPECT_EQ(Loaded(), "frmRecords+");
}

TEST_F(TrayIconTest, RaisesTheBarThatIsUp) {
  for (const bool is_short : {true, false}) {
    is_short ? PutShortBarUp() : PutLongBarUp();
    FormBase &bar = is_short ? static_cast<FormBase &>(*Form1) : *newTagFrm;
    conffrm->Show();
    Settle();
    ASSERT_FALSE(IsActive(bar));
    const std::string state = State();
    Activate();

    EXPECT_TRUE(IsActive(bar));
    EXPECT_FALSE(frmRecords->IsShown());
    EXPECT_EQ(State(), state);
    bar.Hide();
  }
}

TEST_F(TrayIconTest, BringsAMinimisedFaceBack) {
  QWidget &window = rig_.window(*frmRecords);
  window.showMinimized();
  Settle();
  ASSERT_TRUE(window.isMinimized());
  Activate();

  EXPECT_FALSE(window.isMinimized());
  EXPECT_TRUE(window.isVisible());
}

TEST_F(TrayIconTest, ShowsTheRecordsWindowAfterItsCloseBox) {
  rig_.window(*frmRecords).close();
  ASSERT_EQ(Loaded(), "frmRecords");
  const std::string state = State();
  Activate();

  EXPECT_EQ(Loaded(), "frmRecords+");
  EXPECT_TRUE(rig_.window(*frmRecords).isVisible());
  EXPECT_EQ(State(), state);
}

TEST_F(TrayIconTest, ShowsTheHiddenBarThatIsUp) {
  PutShortBarUp();
  Form1->Hide();
  const std::string with_short_bar = State();
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords Form1+");
  EXPECT_EQ(State(), with_short_bar);

  Form1->Hide();
  PutLongBarUp();
  newTagFrm->EdgeTicks = 3;
  newTagFrm->Hide();
  const std::string with_long_bar = State();
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords Form1 newTagFrm+");
  EXPECT_TRUE(rig_.window(*newTagFrm).isVisible());
  EXPECT_EQ(State(), with_long_bar);
}

TEST_F(TrayIconTest, ShowsTheHiddenLongBarAfterCloseBesideItHasLoadedTheShortOne) {
  frmRecords->ListView1.ListItems.Add({"3.1"});
  PutLongBarUp();
  conffrm->Command2_Click();
  ASSERT_EQ(Module1->BarMode, face_short_bar);
  newTagFrm->Hide();
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords newTagFrm+ Form1");
}

TEST_F(TrayIconTest, ShowsTheRecordsWindowAfterABarThatTheWindowManagerHasClosed) {
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    face == face_short_bar ? PutShortBarUp() : PutLongBarUp();
    rig_.window(face == face_short_bar ? static_cast<FormBase &>(*Form1) : *newTagFrm).close();
    Settle();
    ASSERT_EQ(Loaded(), "frmRecords");
    Activate();

    EXPECT_EQ(Loaded(), "frmRecords+");
    EXPECT_EQ(Module1->BarMode, face);
  }
}

TEST_F(TrayIconTest, RaisesWhatTheUserSeesAlsoWhereAnotherFaceIsMeantToBeUp) {
  PutShortBarUp();
  Module1->BarMode = face_records;
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords Form1+");

  PutLongBarUp();
  Form1->Hide();
  Module1->BarMode = face_short_bar;
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords Form1 newTagFrm+");

  newTagFrm->Hide();
  frmRecords->Show();
  Module1->BarMode = face_long_bar;
  Activate();
  EXPECT_EQ(Loaded(), "frmRecords+ Form1 newTagFrm");
}

TEST_F(TrayIconTest, PrefersTheFaceThatIsUpWhereTwoShow) {
  PutShortBarUp();
  frmRecords->Show();
  conffrm->Show();
  Settle();
  Activate();
  EXPECT_TRUE(IsActive(*Form1));

  Module1->BarMode = face_records;
  Activate();
  EXPECT_TRUE(IsActive(*frmRecords));
}

TEST_F(TrayIconTest, ShowsTheSameByItsMenu) {
  PutShortBarUp();
  Form1->Hide();
  Entry(0).trigger();

  EXPECT_EQ(Loaded(), "frmRecords Form1+");
}

TEST_F(TrayIconTest, ShowsAFaceAtTheSecondClickOfTwoAsWell) {
  Activate();
  frmRecords->Hide();
  Activate(QSystemTrayIcon::DoubleClick);

  EXPECT_EQ(Loaded(), "frmRecords+");
}

TEST_F(TrayIconTest, DoesNothingAtTheOtherButtonsOfTheMouse) {
  frmRecords->Hide();
  for (const auto reason : {QSystemTrayIcon::Context, QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Unknown})
    Activate(reason);

  EXPECT_EQ(Loaded(), "frmRecords");
}

TEST_F(TrayIconTest, EndsTheProgramByItsMenu) {
  frmRecords->ListView1.ListItems.Add({"3.1"});
  PutLongBarUp();
  rig_.events();
  // Not by trigger(): what ends a test instead of the process would leave something of Qt's allocated there.
  EXPECT_THROW(Entry(1).triggered(false), ProcessEnded);

  EXPECT_EQ(rig_.events(), Lines({"end 0"}));
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0);
  EXPECT_EQ(Loaded(), "frmRecords");
}

TEST_F(TrayIconTest, DoesNothingWhileTheProgramEnds) {
  frmRecords->Hide();
  rig_.events();
  rig_.forms().Stop();
  Activate();
  Entry(0).trigger();
  Entry(1).trigger();

  EXPECT_EQ(rig_.events(), Lines());
  EXPECT_EQ(Loaded(), "frmRecords");
}

}  // namespace
}  // namespace borvane
