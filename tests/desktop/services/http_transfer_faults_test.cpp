#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "core/program.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/scripted_server.h"
#include "support/program/list_pages.h"

namespace borvane {
namespace {

constexpr const char *page =
    "<PRE>\n<A HREF=\"/recenteqs/Maps/117-34.html\">map</A> 1.6  <A HREF=\"/recenteqs/Quakes/ci14155392.html\">"
    "2005/06/16 14:36:24 34.049N 116.990W 11.6</A>    6 km ( 4 mi) ENE of Yucaipa, CA\n</PRE>\n";

/// What becomes of one answer on its way.
enum class Fault { Closed, HalfHead, HalfBody, Slow, ByteByByte };

struct FaultCase {
  const char *name;
  Fault fault;
  bool is_failure;  // of the request, and not only a delay
};

void PrintTo(const FaultCase &fault, std::ostream *stream) { *stream << fault.name; }

/// Writes the bytes one at a time.
void WriteSlowly(QTcpSocket &connection, const std::string &bytes) {
  auto *timer = new QTimer(&connection);
  QObject::connect(timer, &QTimer::timeout, &connection, [&connection, timer, bytes, at = std::size_t{0}]() mutable {
    if (at < bytes.size()) {
      connection.write(&bytes[at++], 1);
      return;
    }
    timer->stop();
    connection.disconnectFromHost();
  });
  timer->start(0);
}

/// A monitor that watches Los Angeles, and one server for all its hosts, whose answer number `broken`, counted from 1,
/// meets the fault.
class BrokenNet {
 public:
  BrokenNet(const FaultCase &fault, std::size_t broken) : fault_(fault), broken_(broken) {
    for (const EndpointHost &row : endpoint_hosts)
      rig_.store().Put(hosts_key, row.name, "127.0.0.1:" + server_.port());
    rig_.store()["Area"] = "Los Angeles";
    conffrm->Combo2.Text = "Los Angeles";
    frmRecords->Show();
    // After a failure the next tick refreshes again, which would replace what the failure has left.
    frmRecords->Timer1.Interval = 600'000;
    Settle();
  }

  /// Switches the refresh on, and refreshes again when the fault is over. Gives whether there was such an answer.
  bool SurvivesTheFault() {
    QTest::mouseClick(&rig_.widget(*frmRecords, "refresh"), Qt::LeftButton);
    Settle();
    const bool has_struck = server_.request_lines().size() >= broken_;
    const std::string broken_request = has_struck ? server_.request_lines()[broken_ - 1] : "";
    const bool ends_the_refresh = fault_.is_failure && (broken_request.find("cmd=add") != std::string::npos ||
                                                        broken_request.find("/recenteqs/") != std::string::npos);
    EXPECT_EQ(rows(), ends_the_refresh ? 0 : 1) << broken_request;
    // A headline that cannot be read leaves the hourglass.
    const bool ends_the_headline = fault_.is_failure && broken_request.find("/eqcenter/") != std::string::npos;
    ExpectWaiting(ends_the_headline ? Qt::WaitCursor : Qt::ArrowCursor);

    QTest::keyClick(rig_.window(*frmRecords).windowHandle(), Qt::Key_R);
    Settle();
    EXPECT_EQ(rows(), 1) << broken_request;
    ExpectWaiting(Qt::ArrowCursor);
    return has_struck;
  }

 private:
  void Answer(QTcpSocket &connection, const std::string &request_line) {
    const bool is_list = request_line.starts_with("GET /recenteqs/");
    const bool is_world = request_line.starts_with("GET /eqcenter/");
    const std::string body = is_list ? page : is_world ? WorldPage(WorldRow("4.4")) : "17";
    const std::string head =
        "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n";
    if (server_.request_lines().size() != broken_) {
      Writes(head + body)(connection, request_line);
      return;
    }
    switch (fault_.fault) {
      case Fault::Closed:
        connection.abort();
        break;
      case Fault::HalfHead:
        Writes(head.substr(0, head.size() / 2))(connection, request_line);
        break;
      case Fault::HalfBody:
        Writes(head + body.substr(0, body.size() / 2))(connection, request_line);
        break;
      case Fault::Slow:
        QTimer::singleShot(300, &connection, [&connection, bytes = head + body] { Writes(bytes)(connection, {}); });
        break;
      case Fault::ByteByByte:
        WriteSlowly(connection, head + body);
        break;
    }
  }

  int rows() const { return rig_.widget<QTreeView>(*frmRecords, "ListView1").model()->rowCount(); }

  /// The window takes a key and shows what it does.
  void ExpectAlive() const {
    auto &users = rig_.widget(*frmRecords, "Label9");
    const bool was_visible = users.isVisible();
    QTest::keyClick(rig_.window(*frmRecords).windowHandle(), Qt::Key_U);
    EXPECT_NE(users.isVisible(), was_visible);
  }

  /// No refresh is under way, the clock will begin the next one, and nothing has been said or lost.
  void ExpectWaiting(Qt::CursorShape pointer) {
    ExpectAlive();
    EXPECT_TRUE(frmRecords->Timer1.Enabled());
    EXPECT_EQ(Module1->RefreshBusy, flag_false);
    EXPECT_EQ(rig_.window(*frmRecords).cursor().shape(), pointer);
    EXPECT_EQ(conffrm->Combo2.Text(), "Los Angeles");
    EXPECT_EQ(rig_.store()["Area"], "Los Angeles");
    for (const std::string &line : rig_.events())
      EXPECT_FALSE(line.starts_with("message") || line.starts_with("error") || line.starts_with("end")) << line;
  }

  const FaultCase &fault_;
  std::size_t broken_;
  ScriptedServer server_{
      [this](QTcpSocket &connection, const std::string &request_line) { Answer(connection, request_line); }};
  ScreenRig rig_;
};

class FetchFaults : public testing::TestWithParam<FaultCase> {};

TEST_P(FetchFaults, LeaveTheMonitorWatchingWhicheverAnswerTheyMeet) {
  // Presence, the run, the page, the headline, the users online, the version; and one more that never comes.
  std::size_t answer = 1;
  while (BrokenNet(GetParam(), answer).SurvivesTheFault() && !HasFailure())
    ++answer;
  EXPECT_GT(answer, 6U);
  EXPECT_FALSE(HasFailure()) << "with the fault at answer " << answer;
}

INSTANTIATE_TEST_SUITE_P(Net, FetchFaults,
                         testing::Values(FaultCase{"Closed", Fault::Closed, true},
                                         FaultCase{"HalfHead", Fault::HalfHead, true},
                                         FaultCase{"HalfBody", Fault::HalfBody, true},
                                         FaultCase{"Slow", Fault::Slow, false},
                                         FaultCase{"ByteByByte", Fault::ByteByByte, false}),
                         [](const auto &fault) { return std::string(fault.param.name); });

}  // namespace
}  // namespace borvane
