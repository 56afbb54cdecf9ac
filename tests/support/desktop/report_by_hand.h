#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QMouseEvent>
#include <QtTest/QTest>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "core/dispatch.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/scripted_server.h"
#include "support/desktop/timeout.h"

namespace borvane {

/// The felt report's window as the user gets to it, on the event that is selected in the list, and worked by hand. The
/// service answers "ok" until the test sets another answer.
class ReportByHand : public testing::Test {
 protected:
  explicit ReportByHand(MessageBoxes boxes = MessageBoxes::Fake) : rig(boxes) {
    rig.store().Put(hosts_key, "Maker", "127.0.0.1:" + maker.port());
    frmRecords->Label2(0).Caption = "Los Angeles";
    frmRecords->ListView1.ListItems.Add(
        {.Text = "3.1", .SubItemTexts = {"2024/02/29", "23:59:59", "34.000N", "117.000W"}});
    frmRecords->Show();
  }

  /// Chooses an entry of the list's menu.
  void Choose(MenuItem &entry) {
    Dispatch([&] { entry.Click.Raise(); });
    QApplication::setActiveWindow(&window());
    Settle();
    rig.events();
  }

  void OpenForReport() { Choose(frmRecords->mnuReportIt); }

  FormWindow &window() const { return rig.window(*ComPart); }
  QWidget &widget(const char *name) const { return rig.widget(*ComPart, name); }

  static bool Comes(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, timeout); }

  bool IsSubmitReady() const {
    return Comes([this] { return widget("Command1(0)").isEnabled(); });
  }

  bool IsThanked() const {
    return Comes([this] { return widget("Label2(2)").isVisible(); });
  }

  // By the mouse.

  void Click(const char *name) const {
    QWidget &there = widget(name);
    QTest::mouseClick(&there, Qt::LeftButton, {}, QPoint(8, there.height() / 2));
  }

  /// Moves the pointer over a control.
  void PointAt(const char *name) const {
    const QPointF place(4, 4);
    QMouseEvent move(QEvent::MouseMove, place, widget(name).mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(&widget(name), &move);
  }

  void Pick(const char *name, int position) const {
    auto &box = rig.widget<QComboBox>(*ComPart, name);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 8, box.height() / 2));
    Settle();
    QAbstractItemView &list = *box.view();
    const QRect entry = list.visualRect(list.model()->index(position, 0));
    QTest::mouseMove(list.viewport(), entry.center());
    // The list takes a press right after it opens for the one that opened it.
    QTest::qWait(QApplication::doubleClickInterval() + 20);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, entry.center());
    Settle();
  }

  // By the keyboard, in whatever has it.

  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  static void Type(const char *text) { QTest::keyClicks(QApplication::focusWidget(), text); }

  /// Goes on to the control of that name by the Tab key, however many are in between.
  bool TabTo(const char *name) const {
    constexpr int more_than_there_are = 40;
    QWidget &there = widget(name);
    for (int press = 0; press < more_than_there_are; ++press) {
      if (QApplication::focusWidget() == &there || there.isAncestorOf(QApplication::focusWidget()))
        return true;
      Press(Qt::Key_Tab);
    }
    return false;
  }

  /// Opens the list of the box that has the keyboard, goes down to an entry and takes it.
  void PickByKeys(const char *name, int position) const {
    auto &box = rig.widget<QComboBox>(*ComPart, name);
    Press(Qt::Key_Down, Qt::AltModifier);
    Settle();
    while (box.view()->currentIndex().row() < position)
      QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    Settle();
  }

  std::string answer = "ok";
  ScriptedServer maker{
      [this](QTcpSocket &connection, const std::string &request_line) { Serves(answer)(connection, request_line); }};
  ScreenRig rig;
};

}  // namespace borvane
