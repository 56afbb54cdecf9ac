// How the felt report's window goes: by the message to those who have reported today, and while a report is on its way.
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "support/desktop/next_message_box.h"
#include "support/desktop/report_by_hand.h"

namespace borvane {
namespace {

constexpr const char *today = "02-07-2018";

/// Jane Doe has reported today already, as the store says. Her name has been entered and still has the keyboard.
class DailyMessageOnScreen : public ReportByHand {
 protected:
  DailyMessageOnScreen() : ReportByHand(MessageBoxes::Real) {
    rig.store()["User1"] = "Jane Doe";
    rig.store()["UserRep1"] = today;
    Open();
    Type("jane doe");
    rig.events();
  }

  /// Opens the form and closes the message that comes with it.
  void Open() {
    const NextMessageBox next([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); });
    OpenForReport();
  }

  /// Presses a key and releases it, unless the window has gone meanwhile.
  void PressInWindow(Qt::Key key) const {
    const QPointer<QWindow> there(window().windowHandle());
    QTest::keyPress(there, key);
    if (!there.isNull())
      QTest::keyRelease(there, key);
  }

  /// The same with the mouse, in the middle of a control.
  void ClickInWindow(const char *name) const {
    const QPointer<QWindow> there(window().windowHandle());
    const QPoint place = widget(name).mapTo(&window(), widget(name).rect().center());
    QTest::mousePress(there, Qt::LeftButton, {}, place);
    if (!there.isNull())
      QTest::mouseRelease(there, Qt::LeftButton, {}, place);
  }

  /// Expects that `leave`, which takes the keyboard from the name, brings the message, and that the answer to it closes
  /// the window for good.
  void ExpectToBeRefused(const std::function<void()> &leave) {
    const QPointer<FormWindow> form(&window());
    bool is_left = false;
    {
      const NextMessageBox next([](QMessageBox &box) {
        EXPECT_EQ(box.text(), "You already filled a report today");
        EXPECT_EQ(box.windowTitle(), "Borvane");
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_NE(ComPart.IfLoaded(), nullptr) << "the window goes after the answer";
        QTest::keyClick(&box, Qt::Key_Return);
      });
      QObject events;
      QTimer::singleShot(0, &events, [&] {
        leave();
        is_left = true;
      });
      EXPECT_TRUE(Comes([&] { return is_left; }));
    }
    EXPECT_EQ(ComPart.IfLoaded(), nullptr);
    EXPECT_TRUE(Comes([&] { return form.isNull(); })) << "nothing is left of the window";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the message comes once";
    EXPECT_FALSE(program().report.FormTouched);
    EXPECT_EQ(program().report.UserSlot, 1);
    for (const std::string &line : rig.events())
      EXPECT_FALSE(line.starts_with("write ") || line.starts_with("error ")) << line;
  }
};

TEST_F(DailyMessageOnScreen, ComesWhenTheTabKeyLeavesTheName) {
  ExpectToBeRefused([this] { PressInWindow(Qt::Key_Tab); });
}

TEST_F(DailyMessageOnScreen, ComesWhenAnotherBoxIsClicked) {
  ExpectToBeRefused([this] { ClickInWindow("Text1(2)"); });
}

TEST_F(DailyMessageOnScreen, ComesWhenCancelIsClicked) {
  ExpectToBeRefused([this] { ClickInWindow("Command1(1)"); });
}

TEST_F(DailyMessageOnScreen, ComesWhenTheWindowIsClosedWhileTheNameHasTheKeyboard) {
  ExpectToBeRefused([this] { window().close(); });
}

TEST_F(DailyMessageOnScreen, ComesWhenTheRecordsWindowIsEntered) {
  ExpectToBeRefused([this] {
    QApplication::setActiveWindow(&rig.window(*frmRecords));
    rig.widget(*frmRecords, "ListView1").setFocus();
  });
}

TEST_F(DailyMessageOnScreen, LetsTheFormBeOpenedAgainForAnotherReporter) {
  ExpectToBeRefused([this] { PressInWindow(Qt::Key_Tab); });
  Open();
  EXPECT_TRUE(widget("Text1(0)").hasFocus());
  EXPECT_EQ(SpokenValue(widget("Text1(0)")), "");
  Type("john smith");
  PressInWindow(Qt::Key_Tab);
  EXPECT_TRUE(widget("Text1(1)").hasFocus());
  EXPECT_EQ(SpokenValue(widget("Text1(0)")), "John Smith");
  EXPECT_EQ(program().report.UserSlot, 2);
  EXPECT_TRUE(program().report.FormTouched);
}

/// A report on its way to a service of the test's own.
class SubmissionOnScreen : public ReportByHand {
 protected:
  void UseService(const ScriptedServer &service) { rig.store().Put(hosts_key, "Maker", "127.0.0.1:" + service.port()); }

  /// Opens the form and fills in what it needs, but for a name.
  void FillIn() {
    OpenForReport();
    Click("Text1(2)");
    Press(Qt::Key_A, Qt::ControlModifier);
    Type("90210");
    for (const char *box : {"Combo1", "Combo2", "Combo3"}) {
      ASSERT_TRUE(TabTo(box));
      Type("x");
    }
    ASSERT_TRUE(IsSubmitReady());
    rig.events();
  }

  /// What has been stored of the reporter or shown since the form was filled.
  Lines outcome() {
    Lines lines = rig.events();
    std::erase_if(lines, [](const std::string &line) {
      return !line.starts_with("write User") && !line.starts_with("message") && !line.starts_with("error");
    });
    return lines;
  }

  /// Which requests have come, as their commands.
  static std::string Commands(const ScriptedServer &service) {
    std::string commands;
    for (const std::string &line : service.request_lines())
      commands += line.substr(line.find("cmd=") + 4, 4) + " ";
    return commands;
  }
};

TEST_F(SubmissionOnScreen, GoesOnWhenItsWindowIsClosedWhileARequestIsUnderWay) {
  int reports = 0;
  for (const bool by_close_box : {false, true}) {
    for (const std::size_t moment : {1U, 2U, 3U}) {
      QPointer<FormWindow> form;
      bool was_closed = false;
      const auto close = [&] {
        EXPECT_EQ(form->cursor().shape(), Qt::WaitCursor);
        EXPECT_TRUE(form->isVisible());
        if (by_close_box)
          form->close();
        else
          Click("Command1(1)");
        EXPECT_EQ(ComPart.IfLoaded(), nullptr);
        EXPECT_FALSE(!form.isNull() && form->isVisible());
        was_closed = true;
      };
      std::size_t requests = 0;
      ScriptedServer service([&](QTcpSocket &connection, const std::string & /*request_line*/) {
        if (++requests != moment) {
          Serves("ok")(connection, {});
          return;
        }
        QTimer::singleShot(0, &connection, [&close, held = &connection] {
          close();
          Serves("ok")(*held, {});
        });
      });
      UseService(service);
      FillIn();
      form = &window();
      Click("Command1(0)");

      EXPECT_TRUE(was_closed);
      EXPECT_EQ(Commands(service), "puta putb putc ");
      const std::string slot = "write User" + std::to_string(++reports) + "=";
      EXPECT_EQ(outcome(), (Lines{slot, slot + today}));
      EXPECT_EQ(ComPart.IfLoaded(), nullptr) << "no other window is loaded";
      EXPECT_TRUE(Comes([&] { return form.isNull(); })) << "nothing is left of the window";
      EXPECT_EQ(program().report.FeltScore, 0);
    }
  }
}

TEST_F(SubmissionOnScreen, IsRefusedAfterItsWindowHasGone) {
  ScriptedServer service([this](QTcpSocket &connection, const std::string & /*request_line*/) {
    QTimer::singleShot(0, &connection, [this, held = &connection] {
      Click("Command1(1)");
      Serves("busy")(*held, {});
    });
  });
  UseService(service);
  FillIn();
  Click("Command1(0)");
  EXPECT_EQ(Commands(service), "puta ");
  EXPECT_EQ(outcome(), Lines{"message [Borvane] Failed to submit. Please wait a few minutes and try again. (OK)"});
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

/// The service takes the report and goes, each time in another way. The report ends without a word, and another try is
/// a report of its own.
TEST_F(SubmissionOnScreen, EndsSilentlyWhenTheServiceGoesAfterItsFirstAnswer) {
  struct Case {
    const char *name;
    ScriptedServer::Answer to_second;  // none: the port is closed, and there is no second request
    const char *commands;
  };
  for (const Case &it :
       {Case{"closed port", nullptr, "puta "},
        Case{"dropped connection", [](QTcpSocket &connection, const std::string & /*line*/) { connection.abort(); },
             "puta putb "},
        Case{"half an answer", Writes("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\nok"), "puta putb "},
        Case{"no answer of HTTP", Writes("\x01gone\r\n\r\n"), "puta putb "}}) {
    SCOPED_TRACE(it.name);
    std::unique_ptr<ScriptedServer> service;
    service = std::make_unique<ScriptedServer>([&](QTcpSocket &connection, const std::string &line) {
      if (service->request_lines().size() > 1) {
        it.to_second(connection, line);
        return;
      }
      if (it.to_second == nullptr)
        service->Close();
      Serves("ok")(connection, line);
    });
    UseService(*service);
    FillIn();
    Click("Command1(0)");

    EXPECT_EQ(Commands(*service), it.commands);
    EXPECT_EQ(outcome(), Lines{});
    EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(widget("Frame2").isVisible());
    EXPECT_EQ(SpokenName(widget("Label2(4)")), "1.285714");
    EXPECT_FALSE(widget("Label2(2)").isVisible()) << "no word of thanks";
    EXPECT_FALSE(window().rect().intersects(widget("Frame1").geometry()));

    UseService(maker);
    ASSERT_TRUE(IsSubmitReady());
    Click("Command1(0)");
    EXPECT_TRUE(widget("Label2(2)").isVisible());
    EXPECT_EQ(outcome().size(), 2U);
    Click("Command1(1)");
    Settle();
  }
  EXPECT_EQ(Commands(maker), "puta putb putc puta putb putc puta putb putc puta putb putc ");
}

}  // namespace
}  // namespace borvane
