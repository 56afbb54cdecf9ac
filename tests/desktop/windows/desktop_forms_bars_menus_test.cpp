// The menus of the two bars on a screen: what opens them, and what each entry does.
#include "core/program.h"
#include "info/Aboutfrm.h"
#include "records/frmRecords.h"
#include "support/desktop/bar_on_screen.h"

namespace borvane {
namespace {

TEST_F(ShortBarOnScreen, OpensItsMenuByABoxAndByKeys) {
  const std::string entries = "Settings;Expand;-;More Info;Strong Motion Maps;-;On Top;About;Exit;";
  {
    const MenuWork work;
    QTest::mouseClick(&widget(*Form1, "Check1"), Qt::LeftButton, {}, Middle(widget(*Form1, "Check1")));
    EXPECT_EQ(work.opened, entries);
    EXPECT_EQ(Form1->Check1.Value(), 0);
  }
  {
    const MenuWork work("On Top");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_EQ(work.opened, entries);
  }
  {
    const MenuWork work;
    Press(*Form1, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(work.opened, "Settings;Expand;-;More Info;Strong Motion Maps;-;On Top*;About;Exit;");
  }
}

TEST_F(ShortBarOnScreen, OpensItsMenuByShiftAndF10WhicheverIsReleasedFirst) {
  const MenuWork work;
  QWindow *window = rig.window(*Form1).windowHandle();
  QTest::keyPress(window, Qt::Key_Shift);
  QTest::keyPress(window, Qt::Key_F10, Qt::ShiftModifier);
  QTest::keyRelease(window, Qt::Key_Shift, Qt::ShiftModifier);
  QTest::keyRelease(window, Qt::Key_F10);
  Settle();
  EXPECT_NE(work.opened, "");
}

TEST_F(ShortBarOnScreen, ExpandsToTheRecordsWindow) {
  frmRecords->Hide();
  const MenuWork work("Expand");
  Press(*Form1, Qt::Key_Menu);
  EXPECT_TRUE(rig.window(*frmRecords).isVisible());
  EXPECT_FALSE(rig.window(*Form1).isVisible());
}

/// A list with one event, whose page is on the site that is watched.
void ListAnEvent() {
  frmRecords->ListView1.ListItems.Add({.Text = "2.0", .SubItemTexts = {"", "", "", "", "", "", "/quakes/1.html"}});
  Module1->SiteRoot = "http://southern";
}

TEST_F(ShortBarOnScreen, DoesWhatEachEntryOfItsMenuSays) {
  ListAnEvent();
  rig.events();
  {
    const MenuWork work("Settings");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_TRUE(rig.window(*conffrm).isVisible());
    EXPECT_TRUE(conffrm->Timer1.Enabled());
  }
  {
    const MenuWork work("More Info");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_EQ(rig.events().back(), "open http://southern/quakes/1.html for Form1");
  }
  {
    const MenuWork work("Strong Motion Maps");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_EQ(rig.events().back(),
              "open http://strongmotion.localhost:17650/research/strongmotion/effects/shake/archive/ for Form1");
  }
  {
    const MenuWork work("About");
    Press(*Form1, Qt::Key_Menu);
    EXPECT_TRUE(rig.window(*Aboutfrm).isVisible());
  }
  {
    const MenuWork work("Exit");
    EXPECT_THROW(current->host().ShowPopupMenu(*Form1, Form1->Tmnu), ProcessEnded);
    EXPECT_EQ(rig.events().back(), "end 0");
  }
}

TEST_F(LongBarOnScreen, DoesWhatEachEntryOfItsMenuSays) {
  conffrm->Text2.Text = "700";
  rig.events();
  {
    const MenuWork work("Refresh");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_EQ(Module1->RefreshCount, 699);
  }
  {
    const MenuWork work("More Info");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_EQ(rig.events().back(), "open http://worldlist.localhost:17650/recenteqsww/ for newTagFrm");
  }
  {
    const MenuWork work("Strong Motion Maps");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_EQ(rig.events().back(),
              "open http://strongmotion.localhost:17650/research/strongmotion/effects/shake/archive/"
              " for newTagFrm");
  }
  {
    const MenuWork work("Settings");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_TRUE(rig.window(*conffrm).isVisible());
    EXPECT_EQ(conffrm->Text3.Text(), "0");
  }
  {
    const MenuWork work("About");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_TRUE(rig.window(*Aboutfrm).isVisible());
  }
  {
    frmRecords->Hide();
    const MenuWork work("Expand");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_TRUE(rig.window(*frmRecords).isVisible());
    EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
  }
}

TEST_F(LongBarOnScreen, EndsTheProgramByItsMenu) {
  rig.events();
  const MenuWork work("Exit");
  EXPECT_THROW(current->host().ShowPopupMenu(*newTagFrm, newTagFrm->Tmnu), ProcessEnded);
  EXPECT_EQ(rig.events().back(), "end 0");
}

/// Its user may have minimised it together with the records window.
void MinimiseSettings(const ScreenRig &rig) {
  conffrm->Show();
  Settle();
  rig.window(*conffrm).showMinimized();
  Settle();
  ASSERT_TRUE(rig.window(*conffrm).isMinimized());
}

TEST_F(ShortBarOnScreen, BringsMinimisedSettingsBack) {
  MinimiseSettings(rig);
  const MenuWork work("Settings");
  Press(*Form1, Qt::Key_Menu);
  EXPECT_FALSE(rig.window(*conffrm).isMinimized());
  EXPECT_TRUE(rig.window(*conffrm).isVisible());
}

TEST_F(LongBarOnScreen, BringsMinimisedSettingsBack) {
  MinimiseSettings(rig);
  const MenuWork work("Settings");
  Press(*newTagFrm, Qt::Key_Menu);
  EXPECT_FALSE(rig.window(*conffrm).isMinimized());
  EXPECT_TRUE(rig.window(*conffrm).isVisible());
}

TEST_F(LongBarOnScreen, HasItsHandleInFrontOfTheBox) {
  const QWidget &handle = widget(*newTagFrm, "Check1");
  const QPoint middle = handle.geometry().center();
  ASSERT_TRUE(widget(*newTagFrm, "Picture1").geometry().contains(middle));
  EXPECT_EQ(rig.window(*newTagFrm).childAt(middle), &handle);
  const MenuWork work;
  RightClick(*newTagFrm, middle);
  EXPECT_NE(work.opened, "");
}

TEST_F(LongBarOnScreen, OpensItsMenuByTheRightButtonAndByAKey) {
  const std::string entries = "Refresh;More Info;Strong Motion Maps;-;Expand;Settings;-;On Top;About;Exit;";
  {
    const MenuWork work;
    QTest::mouseClick(&widget(*newTagFrm, "Check1"), Qt::RightButton, {}, Middle(widget(*newTagFrm, "Check1")));
    EXPECT_EQ(work.opened, entries);
  }
  {
    const MenuWork work("On Top");
    Press(*newTagFrm, Qt::Key_Menu);
    EXPECT_EQ(work.opened, entries);
    EXPECT_TRUE(rig.window(*newTagFrm).windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  }
}

}  // namespace
}  // namespace borvane
