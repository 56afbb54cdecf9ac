#pragma once

#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"

namespace borvane {

/// The settings window as the user gets to it, above the records window, and worked by hand. What it stores is in the
/// trace.
class SettingsByHand : public testing::Test {
 protected:
  SettingsByHand() {
    frmRecords->Show();
    conffrm->Show(&*frmRecords);
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*conffrm); }
  QWidget &widget(const char *name) const { return rig.widget(*conffrm, name); }

  /// Clicks where a check box or an option button has its mark.
  void Click(const char *name) const {
    QWidget &there = widget(name);
    QTest::mouseClick(&there, Qt::LeftButton, {}, QPoint(8, there.height() / 2));
  }

  void Press(const char *name, Qt::Key key) const {
    widget(name).setFocus();
    QTest::keyClick(&widget(name), key);
  }

  /// Replaces the text of a box by typing.
  void Type(const char *name, const char *text) const {
    QTest::mouseClick(&widget(name), Qt::LeftButton);
    QTest::keyClick(&widget(name), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&widget(name), text);
  }

  /// What has been stored or done since the last look.
  Lines happened() {
    Lines lines = rig.events();
    std::erase_if(lines, [](const std::string &line) { return line.starts_with("read "); });
    return lines;
  }

  ScreenRig rig;
};

}  // namespace borvane
