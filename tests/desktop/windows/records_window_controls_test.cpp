#include <QToolButton>
#include <QWindow>
#include <QtTest/QTest>
#include <algorithm>
#include <string>
#include <vector>

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

const std::string one_row =
    "<PRE>\n<A HREF=\"/recenteqs/Maps/117-34.html\">map</A> 1.6  <A HREF=\"/recenteqs/Quakes/ci14155392.html\">"
    "2005/06/16 14:36:24 34.049N 116.990W 11.6</A>    6 km ( 4 mi) ENE of Yucaipa, CA\n</PRE>\n";

/// The records window of a monitor that watches Los Angeles, worked with real keys and clicks. All its hosts are one
/// server, which notes what the first panel said at each request.
class WatchingOnScreen : public testing::Test {
 protected:
  WatchingOnScreen() {
    for (const EndpointHost &row : endpoint_hosts)
      rig.store().Put(hosts_key, row.name, "127.0.0.1:" + server.port());
    conffrm->Combo2.Text = "Los Angeles";
    conffrm->Check5.Value = 0;
    frmRecords->Show();
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*frmRecords); }
  QWidget &widget(const char *name) const { return rig.widget(*frmRecords, name); }

  void press(Qt::Key key) const {
    QTest::keyClick(window().windowHandle(), key);
    Settle();
  }

  void click(const char *name) const {
    QTest::mouseClick(&widget(name), Qt::LeftButton);
    Settle();
  }

  static std::string panel(int number) { return frmRecords->StatusBar1.Panels(number).Text(); }

  /// What the first panel said at the requests of a target that begins so.
  std::vector<std::string> PanelAt(const std::string &target) const {
    std::vector<std::string> said;
    for (std::size_t i = 0; i < server.request_lines().size(); ++i) {
      if (server.request_lines()[i].rfind("GET " + target, 0) == 0)
        said.push_back(panels.at(i));
    }
    return said;
  }

  std::vector<std::string> panels;
  ScriptedServer server{[this](QTcpSocket &connection, const std::string &line) {
    panels.push_back(panel(1));
    Serves(line.find("/recenteqs") != std::string::npos ? one_row : "17")(connection, line);
  }};
  ScreenRig rig;
};

const std::string page = "/recenteqs/Maps/Los_Angeles.html";
const std::string service = "/cgi-bin/borvane/control.pl";

// The keys.

TEST_F(WatchingOnScreen, EscAsksWhetherToQuit) {
  press(Qt::Key_Escape);
  EXPECT_EQ(
      rig.events(),
      Lines{"message [Borvane - Quit] Are you sure you want to terminate Borvane ? (Yes, No) with a question mark"});
  EXPECT_TRUE(window().isVisible());
}

TEST_F(WatchingOnScreen, RRefreshesAtOnceAndSaysSoMeanwhile) {
  press(Qt::Key_R);
  EXPECT_EQ(PanelAt(page), std::vector<std::string>{"Refreshing"});
  EXPECT_EQ(panel(1), "");
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
  EXPECT_EQ(window().windowTitle(), "1.6 - Borvane - Last Events");
  EXPECT_EQ(panel(2).rfind("Last Refresh: ", 0), 0u);
}

TEST_F(WatchingOnScreen, ShiftMakesNoDifference) {
  QTest::keyClick(window().windowHandle(), Qt::Key_R, Qt::ShiftModifier);
  Settle();
  EXPECT_EQ(PanelAt(page).size(), 1u);
}

TEST_F(WatchingOnScreen, FAsksForTheUsersOnlineAndUShowsThem) {
  press(Qt::Key_F);
  EXPECT_EQ(PanelAt(service), std::vector<std::string>{"GET USRS"});
  EXPECT_EQ(panel(1), "");

  press(Qt::Key_U);
  EXPECT_TRUE(widget("Label9").isVisible());
  EXPECT_EQ(SpokenName(widget("Label9")), "Users Online: 17");
  EXPECT_GT(PixelsOf(Picture(widget("Label9")), window().palette().color(QPalette::WindowText), half), 50);

  press(Qt::Key_U);
  EXPECT_FALSE(widget("Label9").isVisible());
}

TEST_F(WatchingOnScreen, F10ShowsTheHeartbeatAndHidesItAgain) {
  press(Qt::Key_F10);
  EXPECT_TRUE(widget("Label10").isVisible());
  EXPECT_EQ(SpokenName(widget("Label10")), "[ ]");
  press(Qt::Key_F10);
  EXPECT_FALSE(widget("Label10").isVisible());
}

TEST(RecordsHelp, ComesWithF1AsWithAClick) {
  ScreenRig rig;
  int clicks = 0;
  frmRecords->Label7.Click = [&] { ++clicks; };
  frmRecords->Show();
  Settle();
  QTest::keyClick(rig.window(*frmRecords).windowHandle(), Qt::Key_F1);
  Settle();
  EXPECT_EQ(clicks, 1);
  QTest::mouseClick(&rig.widget(*frmRecords, "Label7"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(clicks, 2);
}

// The toolbar.

TEST_F(WatchingOnScreen, SwitchGoesDownAndBringsRowsAndTheValuesOfTheMap) {
  click("refresh");
  EXPECT_TRUE(rig.widget<QToolButton>(*frmRecords, "refresh").isChecked());
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
  EXPECT_EQ(panel(3), "Auto Refresh On");
  EXPECT_EQ(SpokenName(widget("Label2(0)")), "Los Angeles");
  EXPECT_EQ(SpokenName(widget("Label2(1)")), "N/A");
  EXPECT_EQ(SpokenName(widget("Label2(2)")), "N/A");
  EXPECT_NE(SpokenName(widget("Label2(3)")), "N/A");
  EXPECT_EQ(frmRecords->Label9.Caption(), "Users Online: 17");

  click("refresh");
  EXPECT_FALSE(rig.widget<QToolButton>(*frmRecords, "refresh").isChecked());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(panel(3), "Auto Refresh On");
}

TEST_F(WatchingOnScreen, SettingsButtonShowsTheSettingsAboveTheWindowAndHidesThem) {
  click("settings");
  EXPECT_TRUE(rig.widget<QToolButton>(*frmRecords, "settings").isChecked());
  ASSERT_TRUE(rig.window(*conffrm).isVisible());
  EXPECT_EQ(rig.window(*conffrm).windowHandle()->transientParent(), window().windowHandle());
  EXPECT_EQ(rig.window(*conffrm).windowModality(), Qt::NonModal);

  conffrm->Combo2.Text = conffrm->Combo2.List(Module1->AreaIndex);
  click("settings");
  EXPECT_FALSE(rig.widget<QToolButton>(*frmRecords, "settings").isChecked());
  EXPECT_FALSE(rig.window(*conffrm).isVisible());
}

TEST_F(WatchingOnScreen, BarButtonsAreDeadUntilTheFirstSwitchingOn) {
  for (const char *button : {"longbar", "shortbar"}) {
    EXPECT_FALSE(widget(button).isEnabled());
    click(button);
  }
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(Module1->BarMode, 0);

  click("refresh");
  click("refresh");
  EXPECT_TRUE(widget("longbar").isEnabled()) << "also when it is switched off again";
  EXPECT_TRUE(widget("shortbar").isEnabled());
}

TEST_F(WatchingOnScreen, LongBarTakesTheWindowsPlace) {
  click("refresh");
  click("longbar");
  EXPECT_EQ(Module1->BarMode, 2);
  EXPECT_TRUE(rig.window(*newTagFrm).isVisible());
  EXPECT_EQ(rig.window(*newTagFrm).windowHandle()->transientParent(), nullptr);
  EXPECT_FALSE(window().isVisible());
  EXPECT_TRUE(frmRecords->Timer1.IsCounting());
}

TEST_F(WatchingOnScreen, ShortBarTakesTheWindowsPlace) {
  click("refresh");
  click("shortbar");
  EXPECT_EQ(Module1->BarMode, 1);
  EXPECT_TRUE(rig.window(*Form1).isVisible());
  EXPECT_EQ(rig.window(*Form1).windowHandle()->transientParent(), nullptr);
  EXPECT_FALSE(window().isVisible());
  EXPECT_TRUE(frmRecords->Timer1.IsCounting());
}

// The link labels; Version has a test of its own.

TEST_F(WatchingOnScreen, LogsAndRefreshAreDeadWhileTheyAreDisabled) {
  for (const char *label : {"Label5", "Label8"}) {
    EXPECT_FALSE(widget(label).isEnabled());
    click(label);
  }
  EXPECT_EQ(rig.events(), Lines());
  EXPECT_TRUE(server.request_lines().empty());
}

TEST_F(WatchingOnScreen, RefreshIsDisabledByItsClick) {
  frmRecords->Label8.Enabled = true;
  const QColor text = window().palette().color(QPalette::Active, QPalette::WindowText);
  EXPECT_GT(PixelsOf(Picture(widget("Label8")), text, half), 20);
  click("Label8");
  EXPECT_FALSE(widget("Label8").isEnabled());
  EXPECT_EQ(PixelsOf(Picture(widget("Label8")), text, half), 0);
}

// The watermark.

TEST_F(WatchingOnScreen, PointerBringsTheWatermarkBackInsideItsPlaceAlone) {
  struct Place {
    QPoint pixel;
    bool brings;
  };
  // 15 twips a pixel: 6720 is 448, 10665 is 711, 1350 is 90, 1890 is 126.
  for (const auto &[pixel, brings] :
       {Place{{448, 110}, false}, Place{{449, 110}, true}, Place{{710, 110}, true}, Place{{711, 110}, false},
        Place{{600, 90}, false}, Place{{600, 91}, true}, Place{{600, 125}, true}, Place{{600, 126}, false}}) {
    frmRecords->Timer2.Enabled = false;
    frmRecords->Image1.Visible = false;
    Settle();
    QTest::mouseMove(&window(), pixel);
    Settle();
    EXPECT_EQ(widget("Image1").isVisible(), brings) << pixel.x() << " " << pixel.y();
    EXPECT_EQ(frmRecords->Timer2.Enabled(), brings) << pixel.x() << " " << pixel.y();
  }
}

TEST_F(WatchingOnScreen, WatermarkGoesWithItsTimer) {
  EXPECT_TRUE(widget("Image1").isVisible());
  frmRecords->Timer2.Interval = 10;
  EXPECT_TRUE(QTest::qWaitFor([this] { return !widget("Image1").isVisible(); }));
  EXPECT_FALSE(frmRecords->Timer2.Enabled());
}

// The size.

/// The places of the controls that a resize moves.
std::vector<QRect> PlacesIn(const ScreenRig &rig) {
  std::vector<QRect> places;
  for (const char *name : {"Frame1", "Frame2", "Frame3", "Frame4", "ListView1", "ListView2", "Image1", "StatusBar1"})
    places.push_back(rig.widget(*frmRecords, name).geometry());
  return places;
}

TEST_F(WatchingOnScreen, TinySizesLeaveTheLayoutAndTheNextLargeOneBringsItBack) {
  const std::vector<QRect> before = PlacesIn(rig);
  for (const QSize tiny : {QSize(1, 1), QSize(80, 20), QSize(100, 400), QSize(735, 30), QSize(300, 160)}) {
    window().resize(tiny);
    Settle();
    EXPECT_EQ(window().size(), tiny) << "there is no smallest size";
    EXPECT_EQ(Picture(window()).size(), tiny);
  }
  window().resize(735, 555);
  Settle();
  EXPECT_EQ(PlacesIn(rig), before);
}

TEST_F(WatchingOnScreen, MinimisedWindowComesBackAsItWas) {
  const std::vector<QRect> before = PlacesIn(rig);
  window().showMinimized();
  Settle();
  EXPECT_TRUE(window().isMinimized());
  window().showNormal();
  Settle();
  EXPECT_EQ(window().size(), QSize(735, 555));
  EXPECT_EQ(PlacesIn(rig), before);
}

TEST_F(WatchingOnScreen, WatermarkKeepsItsDistanceFromTheRightEdge) {
  const QRect before = widget("Image1").geometry();
  window().resize(1000, 555);
  Settle();
  EXPECT_EQ(widget("Image1").geometry(), before.translated(265, 0));
  EXPECT_EQ(widget("Label3").geometry().x(), 98) << "the headline's label stays";
}

}  // namespace
}  // namespace borvane
