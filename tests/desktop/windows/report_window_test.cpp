#include "desktop/windows/report_window.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QResizeEvent>
#include <QTimer>
#include <QTreeView>

#include "support/desktop/report_by_hand.h"

namespace borvane {
namespace {

TEST_F(ReportByHand, HasTheClientAreaAndThePlacesOfItsForm) {
  OpenForReport();
  EXPECT_EQ(window().size(), QSize(497, 391));
  EXPECT_EQ(widget("Frame1").geometry(), QRect(13, 34, 471, 316));
  EXPECT_EQ(widget("Frame2").geometry(), QRect(9, 30, 479, 299));
  EXPECT_EQ(widget("ListView1").geometry(), QRect(600, 26, 480, 330));
}

TEST_F(ReportByHand, BeginsWithTheName) {
  OpenForReport();
  EXPECT_TRUE(widget("Text1(0)").hasFocus());
}

TEST_F(ReportByHand, ShowsTheEventAndTheFormWithoutTheThanks) {
  OpenForReport();
  EXPECT_EQ(SpokenName(widget("Label2(1)")), "3.1-2024:02:29-23:59:59-34.000N-117.000W");
  EXPECT_TRUE(widget("Frame1").isVisible());
  EXPECT_FALSE(widget("Frame2").isVisible());
  EXPECT_FALSE(widget("ListView1").isVisible());
  EXPECT_FALSE(widget("Command1(0)").isEnabled());
  EXPECT_TRUE(widget("Command1(1)").isEnabled());
}

TEST_F(ReportByHand, ListsTheChoicesOfItsBoxes) {
  OpenForReport();
  const auto entries = [this](const char *name) {
    const auto &box = rig.widget<QComboBox>(*ComPart, name);
    std::string all;
    for (int position = 0; position < box.count(); ++position)
      all += box.itemText(position).toStdString() + ";";
    EXPECT_EQ(box.currentText(), "") << name;
    EXPECT_TRUE(box.isEditable()) << name;
    return all;
  };
  EXPECT_EQ(entries("Combo1"), "Froze up;Duck;Sat and waited;sat under table;stand under door frame;Run to exterior;");
  EXPECT_EQ(entries("Combo2"), "weak;mild;moderate;strong;violent!;");
  EXPECT_EQ(entries("Combo3"),
            "Ground level;1st floor;2nd floor;3rd floor;4th floor;5ft floor;6th floor;7th floor;8th floor;9th "
            "floor;10th floor;11-20 floor;21-30 floor;Higher!;");
}

/// The boxes of a row are read with the words before and after them.
TEST_F(ReportByHand, NamesItsBoxesForAScreenReader) {
  OpenForReport();
  EXPECT_EQ(SpokenName(widget("Text1(0)")), "My Name is:");
  EXPECT_EQ(SpokenName(widget("Text1(1)")), "I am years old");
  EXPECT_EQ(SpokenName(widget("Text1(4)")), "Comments");
  EXPECT_EQ(SpokenName(*rig.widget<QComboBox>(*ComPart, "Combo2").lineEdit()), "How did it felt?");
  EXPECT_EQ(SpokenName(widget("ListView1")), "Reports");
}

TEST_F(ReportByHand, EnablesTheSchoolWithItsBox) {
  OpenForReport();
  EXPECT_FALSE(widget("Text1(3)").isEnabled());
  EXPECT_FALSE(widget("Label1(3)").isEnabled());
  Click("Check1");
  EXPECT_TRUE(widget("Text1(3)").isEnabled());
  EXPECT_TRUE(widget("Label1(3)").isEnabled());
  Click("Check1");
  EXPECT_FALSE(widget("Text1(3)").isEnabled());
}

TEST_F(ReportByHand, SelectsAZipThatIsNoNumberWhenItIsLeft) {
  OpenForReport();
  Click("Text1(2)");
  Type("W1A 1AA");
  Press(Qt::Key_Tab);
  const auto &zip = rig.widget<QLineEdit>(*ComPart, "Text1(2)");
  EXPECT_EQ(zip.selectedText(), "W1A 1AA");
  EXPECT_FALSE(zip.hasFocus());

  Click("Text1(2)");
  Press(Qt::Key_A, Qt::ControlModifier);
  Type("90210");
  Press(Qt::Key_Tab);
  EXPECT_EQ(zip.selectedText(), "");
}

TEST_F(ReportByHand, WritesNamesWithCapitalsWhenTheirBoxIsLeft) {
  OpenForReport();
  Type("mary ANN o'neil");
  Press(Qt::Key_Tab);
  EXPECT_EQ(SpokenValue(widget("Text1(0)")), "Mary Ann O'neil");
}

TEST_F(ReportByHand, PutsTheFormBelowTheWindowWhileAReportIsSent) {
  std::vector<QPointer<QTcpSocket>> held;
  ScriptedServer slow([&](QTcpSocket &connection, const std::string &) { held.emplace_back(&connection); });
  rig.store().Put(hosts_key, "Maker", "127.0.0.1:" + slow.port());
  OpenForReport();
  QTimer::singleShot(0, [&] {
    EXPECT_TRUE(Comes([&] { return !held.empty(); }));
    EXPECT_EQ(window().cursor().shape(), Qt::WaitCursor);
    EXPECT_FALSE(window().rect().intersects(widget("Frame1").geometry()));
    EXPECT_TRUE(widget("Frame2").isVisible());
    EXPECT_FALSE(widget("Label2(2)").isVisible());
    EXPECT_EQ(SpokenName(widget("Label2(4)")), "1.285714");
    Serves("no")(*held[0], {});
  });
  Dispatch([] { ComPart->Command1(ReportForm::button_submit).Click.Raise(); });
  EXPECT_TRUE(widget("Command1(0)").isEnabled());
  EXPECT_FALSE(widget("Label2(2)").isVisible());
}

TEST_F(ReportByHand, PassesOverTheFormByTheTabKeyWhileItIsBelowTheWindow) {
  OpenForReport();
  ComPart->Frame2.Visible = true;
  ComPart->Frame1.Top = 6825;
  widget("Command1(1)").setFocus();
  Press(Qt::Key_Tab);
  EXPECT_TRUE(widget("Label3(1)").hasFocus());

  window().resize(497, 800);
  Settle();
  widget("Command1(1)").setFocus();
  Press(Qt::Key_Tab);
  EXPECT_TRUE(widget("Text1(0)").hasFocus()) << "the user has made the window higher";
}

/// The text that comes at the end has its room from the start.
TEST_F(ReportByHand, MovesNothingWhenTheThanksCome) {
  OpenForReport();
  ComPart->Frame2.Visible = true;
  Settle();
  const QRect magnitude = widget("Label2(4)").geometry();
  ComPart->Label2(2).Visible = true;
  Settle();
  EXPECT_EQ(widget("Label2(4)").geometry(), magnitude);
  EXPECT_LT(widget("Label2(2)").geometry().bottom(), magnitude.top());
}

TEST_F(ReportByHand, UnderlinesTheLinkUnderThePointer) {
  OpenForReport();
  ComPart->Frame1.Visible = false;
  ComPart->Frame2.Visible = true;
  Settle();
  PointAt("Label3(1)");
  EXPECT_TRUE(widget("Label3(1)").font().underline());
  PointAt("Label3(3)");
  EXPECT_TRUE(widget("Label3(3)").font().underline());
  PointAt("Frame2");
  EXPECT_FALSE(widget("Label3(1)").font().underline());
  EXPECT_TRUE(widget("Label3(3)").font().underline());
}

TEST_F(ReportByHand, KeepsTheThanksInFrontOfAFormThatComesBack) {
  OpenForReport();
  ComPart->Frame2.Visible = true;
  OpenForReport();
  const QPoint inside = widget("Frame2").geometry().center();
  EXPECT_EQ(window().childAt(inside), &widget("Frame2"));
  EXPECT_EQ(widget("Check1").focusPolicy() & Qt::TabFocus, 0) << "nor does the Tab key reach it";

  // Nothing of the form shows through.
  const auto picture = [this] {
    const qreal scale = window().devicePixelRatioF();
    const QRectF place = widget("Frame2").geometry().adjusted(2, 2, -2, -2);
    return Picture(window()).copy(QRectF(place.topLeft() * scale, place.size() * scale).toRect());
  };
  const QImage with_form = picture();
  ComPart->Frame1.Visible = false;
  EXPECT_EQ(with_form, picture());

  ComPart->Frame1.Visible = true;
  ComPart->Frame2.Visible = false;
  EXPECT_NE(widget("Check1").focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(ReportByHand, ShowsTheListOfReportsInAWindowThatIsMadeWider) {
  answer =
      "235|3.1-2024:02:29-23:59:59-34.000N-117.000W|12|2.5|0|0|90210\n"
      "235|another event|12|9|0|0|90210\n"
      "235|3.1-2024:02:29-23:59:59-34.000N-117.000W||3.5|0|0|90210\n";
  Choose(frmRecords->mnuViewReps);
  EXPECT_FALSE(widget("Frame1").isVisible());
  auto &list = rig.widget<QTreeView>(*ComPart, "ListView1");
  EXPECT_TRUE(list.isVisible());
  EXPECT_FALSE(window().rect().intersects(list.geometry()));

  window().resize(1100, 391);
  Settle();
  EXPECT_TRUE(window().rect().contains(list.geometry()));
  const auto text = [&](int row, int column) {
    return list.model()->index(row, column).data().toString().toStdString();
  };
  ASSERT_EQ(list.model()->rowCount(), 1);
  EXPECT_EQ(text(0, 0), "90210");
  EXPECT_EQ(text(0, 1), "3");
  EXPECT_EQ(text(0, 2), "2");
  EXPECT_EQ(list.model()->headerData(1, Qt::Horizontal).toString(), "BV Mag");
}

TEST_F(ReportByHand, IsNotReadByAWindowThatOutlivesIt) {
  OpenForReport();
  FormWindow &left = window();
  const QWidget &name = widget("Text1(0)");
  ComPart.Unload();
  left.setFixedSize(1, 1);
  QResizeEvent resized(left.size(), QSize(497, 391));
  QApplication::sendEvent(&left, &resized);

  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
  EXPECT_TRUE(name.focusPolicy() & Qt::TabFocus) << "the form below the window is passed over";
}

TEST_F(ReportByHand, GoesWithCancelAndWithItsCloseBox) {
  OpenForReport();
  Click("Command1(1)");
  Settle();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);

  OpenForReport();
  window().close();
  Settle();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

}  // namespace
}  // namespace borvane
