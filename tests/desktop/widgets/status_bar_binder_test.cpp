#include <QLabel>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class StatusBarOnScreen : public testing::Test {
 protected:
  StatusBarOnScreen() {
    sample->StatusBar1.Panels(1).Text = "Depth: 7.1";
    sample->Show();
    Settle();
  }

  QList<QLabel *> panels() const {
    return rig.widget(*sample, "StatusBar1").findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
  }

  ScreenRig rig;
};

TEST_F(StatusBarOnScreen, ShowsItsPanels) {
  ASSERT_EQ(panels().size(), 2);
  EXPECT_EQ(SpokenName(*panels().at(0)), "Depth: 7.1");

  sample->StatusBar1.Panels(2).Text = "Last Refresh: 10:00:00";

  EXPECT_EQ(SpokenName(*panels().at(1)), "Last Refresh: 10:00:00");
}

TEST_F(StatusBarOnScreen, PanelShowsTheBeginningOfATextThatNoScreenCouldShow) {
  const std::string text(10'000'000, '7');
  sample->StatusBar1.Panels(2).Text = text;

  EXPECT_EQ(SpokenName(*panels().at(1)), text.substr(0, 1'000));
  EXPECT_EQ(sample->StatusBar1.Panels(2).Text(), text);
}

TEST_F(StatusBarOnScreen, PanelHasOneLine) {
  sample->StatusBar1.Panels(2).Text = "Depth: 7.1\r\n\t(km)    above";

  EXPECT_EQ(SpokenName(*panels().at(1)), "Depth: 7.1   (km)    above");
}

TEST_F(StatusBarOnScreen, LiesAlongTheLowerEdge) {
  const QWidget &bar = rig.widget(*sample, "StatusBar1");
  EXPECT_EQ(bar.geometry(), QRect(0, 375, 600, 25));

  rig.window(*sample).resize(500, 300);
  Settle();

  EXPECT_EQ(bar.geometry(), QRect(0, 275, 500, 25));
}

TEST_F(StatusBarOnScreen, PanelsKeepTheirWidthsInANarrowWindow) {
  rig.window(*sample).resize(100, 300);
  Settle();

  EXPECT_EQ(panels().at(0)->width(), 118);
  EXPECT_GE(panels().at(1)->geometry().left(), 120);
  EXPECT_EQ(panels().at(1)->width(), 198);
}

}  // namespace
}  // namespace borvane
