#include <QAbstractButton>
#include <QPointer>
#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <QtTest/QTest>
#include <functional>
#include <utility>

#include <gtest/gtest.h>

#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/scripted_server.h"
#include "support/desktop/timeout.h"

namespace borvane {
namespace {

std::string PageOf(int rows) {
  std::string page = "<PRE>\n";
  for (int row = 0; row < rows; ++row)
    page +=
        "<A HREF=\"/recenteqs/Maps/117-34.html\">map</A> 1.6  <A HREF=\"/recenteqs/Quakes/ci14155392.html\">"
        "2005/06/16 14:36:24 34.049N 116.990W 11.6</A>    6 km ( 4 mi) ENE of Yucaipa, CA\n";
  return page + "</PRE>\n";
}

/// A monitor that watches Los Angeles, with a page server that answers when the test says so.
class FetchOnScreen : public testing::Test {
 protected:
  FetchOnScreen() {
    for (const EndpointHost &row : endpoint_hosts) {
      const bool is_maker = row.endpoint == Endpoint::Maker;
      rig.store().Put(hosts_key, row.name, "127.0.0.1:" + (is_maker ? maker : pages).port());
    }
    conffrm->Combo2.Text = "Los Angeles";
    conffrm->Check5.Value = 0;
    frmRecords->Show();
    Settle();
  }

  FormWindow &window() const { return rig.window(*frmRecords); }
  QTreeView &list() const { return rig.widget<QTreeView>(*frmRecords, "ListView1"); }

  /// Answers the page request number `number`, counted from 0.
  void answer(std::size_t number, const std::string &page) const {
    ASSERT_LT(number, held.size());
    ASSERT_FALSE(held[number].isNull()) << "the connection has gone";
    Serves(page)(*held[number], {});
  }

  /// Does `action` as soon as that many page requests wait for their answers.
  void when_waiting(std::size_t requests, const std::function<void()> &action) {
    auto *look = new QTimer(&timers);
    QObject::connect(look, &QTimer::timeout, &timers, [this, look, requests, action] {
      if (held.size() < requests)
        return;
      look->stop();
      action();
    });
    look->start(5);
  }

  QObject timers;
  std::vector<QPointer<QTcpSocket>> held;
  ScriptedServer pages{
      [this](QTcpSocket &connection, const std::string & /*request_line*/) { held.emplace_back(&connection); }};
  ScriptedServer maker{Serves("0")};
  ScreenRig rig;
};

TEST_F(FetchOnScreen, WindowLivesWhileThePageIsAwaited) {
  when_waiting(1, [this] {
    EXPECT_EQ(window().cursor().shape(), Qt::WaitCursor);

    window().resize(800, 600);
    Settle();
    EXPECT_EQ(rig.widget(*frmRecords, "StatusBar1").width(), 800);

    QTest::keyClick(window().windowHandle(), Qt::Key_U);
    EXPECT_TRUE(rig.widget(*frmRecords, "Label9").isVisible());

    answer(0, PageOf(3));
  });
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  EXPECT_EQ(pages.request_lines(), std::vector<std::string>({"GET /recenteqs/Maps/Los_Angeles.html HTTP/1.1"}));
  EXPECT_EQ(list().model()->rowCount(), 3);
  EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
  EXPECT_TRUE(window().windowTitle().startsWith("1.6"));
}

TEST_F(FetchOnScreen, SecondClickReleasesTheSwitchAndTheClockRunsAllTheSame) {
  auto &button = rig.widget<QAbstractButton>(*frmRecords, "refresh");
  when_waiting(1, [&] {
    EXPECT_TRUE(button.isChecked());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_FALSE(button.isChecked());
    EXPECT_FALSE(frmRecords->Timer1.Enabled());
    answer(0, PageOf(2));
  });
  QTest::mouseClick(&button, Qt::LeftButton);
  Settle();

  EXPECT_EQ(list().model()->rowCount(), 2);
  EXPECT_FALSE(button.isChecked());
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh On");
}

TEST_F(FetchOnScreen, LaterRequestTakesTheClientOver) {
  when_waiting(1, [this] { QTest::keyClick(window().windowHandle(), Qt::Key_R); });
  when_waiting(2, [this] {
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return held[0].isNull() || held[0]->state() != QTcpSocket::ConnectedState; }, timeout))
        << "the first request is still under way";
    answer(1, PageOf(5));
  });
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  EXPECT_EQ(pages.request_lines().size(), 2U);
  EXPECT_EQ(list().model()->rowCount(), 5);
}

TEST_F(FetchOnScreen, HostThatRefusesLeavesTheWindowAlive) {
  pages.Close();
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  EXPECT_EQ(list().model()->rowCount(), 0);
  EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

TEST_F(FetchOnScreen, AnswerThatIsNoAnswerLeavesTheWindowAlive) {
  when_waiting(1, [this] { Writes("\x01garbage\r\n\r\n")(*held[0], {}); });
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  EXPECT_EQ(list().model()->rowCount(), 0);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

TEST_F(FetchOnScreen, TenThousandRowsArePaintedAtOnce) {
  constexpr int rows = 10'000;
  when_waiting(1, [this] { answer(0, PageOf(rows)); });
  QTest::mouseClick(&rig.widget(*frmRecords, "refresh"), Qt::LeftButton);
  Settle();

  ASSERT_EQ(list().model()->rowCount(), rows);
  EXPECT_GT(PixelsOf(Picture(*list().viewport()), list().palette().color(QPalette::Text), half), 500);
}

}  // namespace
}  // namespace borvane
