#include <QLabel>
#include <QPushButton>
#include <QTextDocument>
#include <QtTest/QTest>
#include <cstdlib>

#include <gtest/gtest.h>

#include "desktop/appearance.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

TEST(Label, ShowsItsCaptionAndEachChangeOfIt) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(SpokenName(label), "Depth");

  sample->Label1.Caption = "Depth: \x96 7.1 km";

  EXPECT_EQ(SpokenName(label), "Depth: – 7.1 km");
}

TEST(Label, TakesNoMarkupFromAPage) {
  ScreenRig rig;
  sample->Show();
  sample->Label1.Caption = "<b>7</b> &amp; <img src=x>";

  EXPECT_EQ(rig.widget<QLabel>(*sample, "Label1").textFormat(), Qt::PlainText);
  EXPECT_EQ(SpokenName(rig.widget(*sample, "Label1")), "<b>7</b> &amp; <img src=x>");
}

TEST(Label, TakesNoMarkupIntoItsHoverTextEither) {
  ScreenRig rig;
  sample->Show();
  const QWidget &label = rig.widget(*sample, "Label1");
  const auto shown = [&] {
    QTextDocument document;
    Qt::mightBeRichText(label.toolTip()) ? document.setHtml(label.toolTip()) : document.setPlainText(label.toolTip());
    return document.toPlainText().toStdString();
  };
  for (const char *text : {"World: <b>7</b> &amp; <img src=x>", "World: 5.8 M & L", "a &lt; b", "<i>", "2 < 3"}) {
    sample->Label1.ToolTipText = text;
    EXPECT_EQ(shown(), text);
  }
  sample->Label1.ToolTipText = "World: Mag: 5.8";
  EXPECT_EQ(label.toolTip(), "World: Mag: 5.8");
}

TEST(Label, HasAHoverTextOfAThousandCharactersAtMost) {
  ScreenRig rig;
  sample->Label1.ToolTipText = std::string(100'000, 'x');
  sample->Show();
  const QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(label.toolTip().size(), 1'000);
  sample->Label1.ToolTipText = std::string(1'001, 'y');
  EXPECT_EQ(label.toolTip().size(), 1'000);
}

TEST(Label, ShowsItsColour) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(PixelsOf(Picture(label), Qt::red, half), 0);

  sample->Label1.ForeColor = 0x0000FF;
  EXPECT_GT(PixelsOf(Picture(label), Qt::red, half), 5);

  sample->Label1.ForeColor = color_button_text;
  EXPECT_EQ(PixelsOf(Picture(label), Qt::red, half), 0);
}

TEST(Label, IsUnderlinedAndBoldWhileItsPropertiesSaySo) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  const QImage plain = Picture(label);

  sample->Label1.Underline = true;
  const QImage underlined = Picture(label);
  sample->Label1.Bold = true;
  const QImage bold = Picture(label);
  sample->Label1.Bold = false;
  sample->Label1.Underline = false;

  EXPECT_NE(underlined, plain);
  EXPECT_NE(bold, underlined);
  EXPECT_EQ(Picture(label), plain);
}

TEST(Label, ShowsAndHides) {
  ScreenRig rig;
  sample->Label1.Visible = false;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_FALSE(label.isVisible());

  sample->Label1.Visible = true;
  EXPECT_TRUE(label.isVisible());
}

TEST(Label, TakesUpTheTextOfItsHiddenTimeWhenItShows) {
  ScreenRig rig;
  sample->Label1.Width = 45;
  sample->Label1.Visible = false;
  sample->Show();
  auto &label = rig.widget<QLabel>(*sample, "Label1");
  for (const char *text : {"-", "+", "Users Online: 12"})
    sample->Label1.Caption = text;
  EXPECT_EQ(label.text(), "Depth") << "nobody sees it";

  sample->Label1.Visible = true;

  EXPECT_EQ(label.text(), "Users Online: 12");
  EXPECT_GE(label.width(), label.sizeHint().width());
}

TEST(Label, IsPaleWhileItIsDisabled) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  const int dark = PixelsOf(Picture(label), label.palette().color(QPalette::WindowText), half);
  sample->Label1.Enabled = false;

  EXPECT_GT(dark, 0);
  EXPECT_EQ(PixelsOf(Picture(label), label.palette().color(QPalette::Active, QPalette::WindowText), half), 0);
}

TEST(Label, MovesWithItsTwips) {
  ScreenRig rig;
  sample->Show();
  sample->Label1.Left = 1500;
  sample->Label1.Top = 300;
  sample->Label1.Width = 1800;

  EXPECT_EQ(rig.widget(*sample, "Label1").geometry(), QRect(100, 20, 120, 13));
}

TEST(Label, GrowsWithATextThatIsWiderThanItself) {
  ScreenRig rig;
  sample->Label1.Width = 45;
  sample->Show();
  sample->Label1.Caption = "Users Online: 12";

  EXPECT_GE(rig.widget(*sample, "Label1").width(), rig.widget<QLabel>(*sample, "Label1").sizeHint().width());
}

TEST(Label, GrowsOnBothSidesWhenItIsCentredAndToTheLeftWhenItEndsAtTheRight) {
  ScreenRig rig;
  notice->Label1.Caption = "";
  for (Label *label : {&notice->Label1, &notice->Label2})
    label->Width = 45;
  notice->Show();
  const QWidget &centred = rig.widget(*notice, "Label1");
  const QWidget &right = rig.widget(*notice, "Label2");
  const QRect narrow_centred = centred.geometry();
  const QRect narrow_right = right.geometry();
  notice->Label1.Caption = "Magnitude";
  notice->Label2.Caption = "Users Online: 12";

  EXPECT_GT(right.width(), narrow_right.width());
  EXPECT_EQ(right.geometry().right(), narrow_right.right());
  EXPECT_GT(centred.width(), narrow_centred.width());
  EXPECT_LE(std::abs(centred.geometry().center().x() - narrow_centred.center().x()), 1);
}

/// The smallest rectangle with all that is drawn on a background.
QRect Drawn(const QImage &picture) {
  QRect drawn;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.pixel(x, y) != picture.pixel(0, 0))
        drawn |= QRect(x, y, 1, 1);
    }
  }
  return drawn;
}

TEST(Label, ShowsItsTextWhereItsAlignmentSays) {
  ScreenRig rig;
  notice->Label2.Caption = "12";
  notice->Show();
  sample->Show();
  QWidget &centred = rig.widget(*notice, "Label1");
  QWidget &right = rig.widget(*notice, "Label2");
  QWidget &left = rig.widget(*sample, "Label1");

  EXPECT_LE(std::abs(Drawn(Picture(centred)).center().x() - centred.rect().center().x()), 2);
  EXPECT_GE(Drawn(Picture(right)).right(), right.width() - 3);
  EXPECT_LE(Drawn(Picture(left)).left(), 2);
}

TEST(Label, HasItsFontSizeInPointsOfWhichEightAndAQuarterAreElevenPixels) {
  ScreenRig rig;
  sample->Label1.FontSize = 8.25;
  sample->Show();
  notice->Show();
  const QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(rig.widget(*notice, "Label1").font().pixelSize(), 24);
  EXPECT_EQ(label.font().pixelSize(), 11);

  sample->Label1.FontSize = 9;
  EXPECT_EQ(label.font().pixelSize(), 12);
}

TEST(Label, ContinuesATextOnTheNextLineAndGrowsDownwards) {
  ScreenRig rig;
  notice->Show();
  QWidget &label = rig.widget(*notice, "Label1");
  const QRect before = label.geometry();
  EXPECT_EQ(before, QRect(4, 8, 106, 30));
  notice->Label1.Caption = "5.2 or stronger";

  EXPECT_EQ(label.width(), before.width());
  EXPECT_GT(label.height(), before.height());
  EXPECT_GT(Drawn(Picture(label)).height(), before.height());
}

TEST(Label, IsReadableOnTheBackgroundOfItsWindowInLightAndDark) {
  ScreenRig rig;
  notice->Label2.Caption = "near Ridgecrest";
  notice->Show();
  for (const bool dark : {false, true}) {
    PreferDark(dark);
    for (const char *name : {"Label1", "Label2"}) {
      const QPalette palette = rig.widget(*notice, name).palette();
      EXPECT_EQ(palette.color(QPalette::Window), QColor(0x00, 0x18, 0x30));
      EXPECT_GE(Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)), 4.5) << name << dark;
    }
  }
  PreferDark(false);
}

TEST(Label, ShowsTheBeginningOfATextThatNoScreenCouldShow) {
  ScreenRig rig;
  sample->Show();
  for (const char *piece : {"7", "a b ", "7\r\n"}) {
    std::string text;
    while (text.size() < 10'000'000)
      text += piece;
    sample->Label1.Caption = text;

    EXPECT_EQ(sample->Label1.Caption(), text);
    EXPECT_EQ(SpokenName(rig.widget(*sample, "Label1")), text.substr(0, 1'000));
  }
}

Lines EventsOfThePointerOverTheLabel(ScreenRig &rig) {
  sample->FormMouseMove = [&](const MouseState &) { rig.note("form"); };
  sample->Show();
  Settle();
  rig.events();

  QTest::mouseMove(&rig.widget(*sample, "Label1"), QPoint(20, 5));
  Settle();
  return rig.events();
}

TEST(Label, RaisesMouseMoveWithThePointerInTwipsOfItsContainer) {
  ScreenRig rig;
  sample->Label1.MouseMove = [&](const MouseState &mouse) {
    rig.note(std::to_string(static_cast<int>(mouse.x)) + " " + std::to_string(static_cast<int>(mouse.y)));
  };
  EXPECT_EQ(EventsOfThePointerOverTheLabel(rig), Lines({"3600 225"}));
}

TEST(Label, WithoutAMouseMoveOfItsOwnKeepsThePointerFromTheForm) {
  ScreenRig rig;
  EXPECT_EQ(EventsOfThePointerOverTheLabel(rig), Lines());
}

class LinkLabel : public testing::Test {
 protected:
  LinkLabel() {
    sample->Link1.Click = [this] { rig.note("click"); };
    sample->Show();
    Settle();
    rig.events();
  }

  QWidget &link() const { return rig.widget(*sample, "Link1"); }

  ScreenRig rig;
};

TEST_F(LinkLabel, RaisesClick) {
  QTest::mouseClick(&link(), Qt::LeftButton);

  EXPECT_EQ(rig.events(), Lines({"click"}));
}

TEST_F(LinkLabel, IsReachedAndPressedWithTheKeyboard) {
  EXPECT_TRUE(link().focusPolicy() & Qt::TabFocus);
  link().setFocus(Qt::TabFocusReason);
  QTest::keyClick(&link(), Qt::Key_Space);

  EXPECT_EQ(rig.events(), Lines({"click"}));
}

TEST_F(LinkLabel, DoesNothingWhileItIsDisabled) {
  sample->Link1.Enabled = false;
  QTest::mouseClick(&link(), Qt::LeftButton);

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(LinkLabel, ShowsItsCaption) {
  sample->Link1.Caption = "Version";

  EXPECT_EQ(SpokenName(link()), "Version");
  EXPECT_GT(PixelsOf(Picture(link()), link().palette().color(QPalette::WindowText), half), 5);
}

TEST_F(LinkLabel, TakesNoKeyFromTheTextOfAPage) {
  sample->Link1.Caption = "Q&A";

  EXPECT_EQ(SpokenName(link()), "Q&A");
  EXPECT_TRUE(rig.widget<QPushButton>(*sample, "Link1").shortcut().isEmpty());
  const int width = link().width();
  sample->Link1.Caption = "Q&&A";
  EXPECT_EQ(SpokenName(link()), "Q&&A");
  EXPECT_GE(link().width(), width);
}

TEST(LinkLabelOfANotice, IsCentredAndWrappedAsAnyLabelIs) {
  ScreenRig rig;
  notice->Label1.Click = [] {};
  notice->Show();
  auto &link = rig.widget<QPushButton>(*notice, "Label1");
  EXPECT_LE(std::abs(Drawn(Picture(link)).center().x() - link.rect().center().x()), 2);
  EXPECT_GT(PixelsOf(Picture(link), link.palette().color(QPalette::WindowText), half), 20);

  notice->Label1.Caption = "5.2 or stronger";
  EXPECT_EQ(link.width(), 106);
  EXPECT_GT(Drawn(Picture(link)).height(), 30);
}

TEST_F(LinkLabel, IsPaleWhileItIsDisabled) {
  const QColor text = link().palette().color(QPalette::Active, QPalette::WindowText);
  EXPECT_GT(PixelsOf(Picture(link()), text, half), 0);

  sample->Link1.Enabled = false;

  EXPECT_EQ(PixelsOf(Picture(link()), text, half), 0);
}

}  // namespace
}  // namespace borvane
