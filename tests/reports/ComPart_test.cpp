#include "reports/ComPart.h"

#include <gtest/gtest.h>

#include "support/program/report_rig.h"

namespace borvane {
namespace {

Lines EntriesOf(const ComboBox &box) {
  Lines entries;
  for (int position = 0; position < box.ListCount(); ++position)
    entries.emplace_back(box.List(position));
  return entries;
}

// The window as it is loaded.

TEST(ReportForm, HasItsDesignPlaces) {
  ReportRig rig;
  rig.open();
  ReportForm &form = ReportRig::form();
  EXPECT_EQ(form.Caption(), "Community Participation");
  EXPECT_EQ(form.ScaleWidth(), 7455);
  EXPECT_EQ(form.ScaleHeight(), 5865);
  EXPECT_EQ(form.border(), BorderStyle::Sizable);
  const auto place = [](const Control &control) {
    return std::vector<float>{control.Left(), control.Top(), control.Width(), control.Height()};
  };
  EXPECT_EQ(place(form.Frame1), (std::vector<float>{195, 510, 7065, 4740}));
  EXPECT_EQ(place(form.Frame2), (std::vector<float>{135, 450, 7185, 4485}));
  EXPECT_TRUE(form.Frame1.Visible());
  EXPECT_FALSE(form.Frame2.Visible());
}

TEST(ReportForm, HasItsListBesideTheWindow) {
  RecordProperty("quirk", "report-list-lies-beside-the-window");
  ReportRig rig;
  rig.open();
  const auto check = [] {
    const ListView &list = ReportRig::form().ListView1;
    EXPECT_EQ((std::vector<float>{list.Left(), list.Top(), list.Width(), list.Height()}),
              (std::vector<float>{9000, 390, 7200, 4950}));
    EXPECT_EQ(ReportRig::form().ScaleWidth(), 7455);
  };
  check();
  EXPECT_FALSE(ReportRig::form().ListView1.Visible());
  rig.serve(ReportRig::geta, VersionDigits() + "|" + ReportRig::key + "|1|2|0|0|9\n");
  rig.click(frmRecords->mnuViewReps);
  EXPECT_TRUE(ReportRig::form().ListView1.Visible());
  check();
  const ListColumns &columns = ReportRig::form().ListView1.ColumnHeaders;
  ASSERT_EQ(columns.Count(), 3);
  EXPECT_EQ((Lines{columns(1).Text, columns(2).Text, columns(3).Text}), (Lines{"Zip", "BV Mag", "Reports"}));
}

TEST(ReportForm, HasItsCaptions) {
  RecordProperty("quirk", "report-captions-keep-their-slips");
  ReportRig rig;
  rig.open();
  ReportForm &form = ReportRig::form();
  EXPECT_EQ(Captions(form.Label1), (Lines{"My Name is:", "I am", "Zip Code:", "My school name:", "What you did?",
                                          "years old", "How did it felt?", "Comments", "Where were you?"}));
  EXPECT_EQ(form.Check1.Caption(), "This computer is at school");
  Lines boxes;
  for (int i = 0; i < form.Check2.Count(); ++i)
    boxes.push_back(form.Check2(i).Caption());
  EXPECT_EQ(boxes,
            (Lines{"Pictures on walls moved from position", "Cracks appeared on walls", "Objects fell from shelves",
                   "Sleeping people awaked", "It was hard to stand", "I was at school", "I was scared"}));
  EXPECT_EQ(Captions(form.Label2),
            (Lines{"Event:", ReportRig::key, "Thank you!!" + std::string(15, ' ') + "Your report was received!",
                   "Your  BVMag  is:", "0.00"}));
  EXPECT_EQ(Captions(form.Label3), (Lines{"For reports to earthquakes non in the USA click here",
                                          "Fill and send a report to the  US Geological Survey", "View reports ",
                                          "Other activities you might be interested in:"}));
  EXPECT_EQ(form.Command1(0).Caption(), "Submit");
  EXPECT_EQ(form.Command1(1).Caption(), "Cancel");
}

TEST(ReportForm, HasItsLists) {
  ReportRig rig;
  rig.open();
  ReportForm &form = ReportRig::form();
  EXPECT_EQ(EntriesOf(form.Combo1), (Lines{"Froze up", "Duck", "Sat and waited", "sat under table",
                                           "stand under door frame", "Run to exterior"}));
  EXPECT_EQ(EntriesOf(form.Combo2), (Lines{"weak", "mild", "moderate", "strong", "violent!"}));
  EXPECT_EQ(EntriesOf(form.Combo3),
            (Lines{"Ground level", "1st floor", "2nd floor", "3rd floor", "4th floor", "5ft floor", "6th floor",
                   "7th floor", "8th floor", "9th floor", "10th floor", "11-20 floor", "21-30 floor", "Higher!"}));
  for (const ComboBox *box : {&form.Combo1, &form.Combo2, &form.Combo3}) {
    EXPECT_TRUE(box->editable());
    EXPECT_EQ(box->Text(), "");
    EXPECT_EQ(box->ListIndex(), -1);
  }
}

TEST(ReportForm, IsEmptyAtFirst) {
  ReportRig rig;
  rig.open();
  ReportForm &form = ReportRig::form();
  for (int i = 0; i < form.Text1.Count(); ++i) {
    EXPECT_EQ(form.Text1(i).Text(), "") << i;
    EXPECT_EQ(form.Text1(i).Enabled(), i != ReportForm::text_school) << i;
    EXPECT_EQ(form.Text1(i).multi_line(), i == ReportForm::text_comments) << i;
  }
  for (int i = 0; i < form.Label1.Count(); ++i)
    EXPECT_EQ(form.Label1(i).Enabled(), i != 3) << i;
  EXPECT_EQ(form.Check1.Value(), 0);
  for (int i = 0; i < form.Check2.Count(); ++i)
    EXPECT_EQ(form.Check2(i).Value(), 0) << i;
  EXPECT_FALSE(form.Command1(0).Enabled());
  EXPECT_TRUE(form.Command1(1).Enabled());
  EXPECT_FALSE(form.Timer1.IsCounting());
  EXPECT_EQ(form.Timer1.Interval(), 200);
  EXPECT_FALSE(form.Label2(2).Visible());
  EXPECT_EQ(form.MousePointer(), pointer_normal);
  EXPECT_EQ(form.Inet1.StillExecuting(), false);
}

Lines NamesIn(const Container &container) {
  Lines names;
  for (const Control *control : container.children())
    names.push_back(control->FullName());
  return names;
}

TEST(ReportForm, HasEachControlInItsFrameOrOnTheWindow) {
  ReportRig rig;
  rig.open();
  const ReportForm &form = ReportRig::form();
  EXPECT_EQ(NamesIn(form.Frame1),
            (Lines{"Label1(0)", "Label1(1)", "Label1(2)", "Label1(3)", "Label1(4)", "Label1(5)", "Label1(6)",
                   "Label1(7)", "Label1(8)", "Text1(0)",  "Text1(1)",  "Text1(2)",  "Text1(3)",  "Text1(4)",
                   "Check1",    "Check2(0)", "Check2(1)", "Check2(2)", "Check2(3)", "Check2(4)", "Check2(5)",
                   "Check2(6)", "Combo1",    "Combo2",    "Combo3"}));
  EXPECT_EQ(NamesIn(form.Frame2),
            (Lines{"Label2(2)", "Label2(3)", "Label2(4)", "Label3(0)", "Label3(1)", "Label3(2)", "Label3(3)"}));
  EXPECT_EQ(NamesIn(form), (Lines{"Frame1", "Frame2", "Label2(0)", "Label2(1)", "ListView1", "Command1(0)",
                                  "Command1(1)", "Timer1", "Inet1"}));
}

TEST(ReportForm, HasTwoBoldLabels) {
  ReportRig rig;
  rig.open();
  const ReportForm &form = ReportRig::form();
  Lines bold;
  for (const Container *container : std::initializer_list<const Container *>{&form, &form.Frame1, &form.Frame2}) {
    for (const Control *control : container->children()) {
      const auto *label = dynamic_cast<const Label *>(control);
      if (label != nullptr && label->Bold())
        bold.push_back(label->FullName());
    }
  }
  EXPECT_EQ(bold, (Lines{"Label2(2)", "Label3(3)"}));
}

TEST(ReportFormLoad, TakesZipAndSchoolFromTheStore) {
  ReportRig rig;
  rig.store()["Tzip"] = "90210";
  rig.store()["MySchool"] = "Hill School";
  rig.open();
  EXPECT_EQ(ReportRig::zip().Text(), "90210");
  EXPECT_EQ(ReportRig::school().Text(), "Hill School");
  EXPECT_FALSE(ReportRig::school().Enabled());
  EXPECT_EQ(rig.state().UserSlot, -1);
  EXPECT_EQ(rig.trace({"write"}), Lines{});
}

TEST(ReportFormLoad, LeavesScoreAndTouchAlone) {
  ReportRig rig;
  rig.state().FeltScore = 4;
  rig.state().FormTouched = true;
  rig.open();
  EXPECT_EQ(rig.state().FeltScore, 4);
  EXPECT_TRUE(rig.state().FormTouched);
}

// What the user fills in.

TEST(SchoolBox, IsEnabledExactlyWhileTheComputerIsAtSchool) {
  ReportRig rig;
  rig.open();
  for (const int value : {1, 0, 1, 2}) {
    rig.tick_off(ReportRig::form().Check1, value);
    EXPECT_EQ(ReportRig::school().Enabled(), value == 1);
    EXPECT_EQ(ReportRig::form().Label1(3).Enabled(), value == 1);
  }
}

TEST(ReportText, IsProperCasedForNameAndSchoolAlone) {
  ReportRig rig;
  rig.open();
  for (int i = 0; i < 5; ++i)
    rig.answer(ReportRig::form().Text1(i), "ANN lee");
  Lines texts;
  for (int i = 0; i < 5; ++i)
    texts.push_back(ReportRig::form().Text1(i).Text());
  EXPECT_EQ(texts, (Lines{"Ann Lee", "ANN lee", "ANN lee", "Ann Lee", "ANN lee"}));
}

TEST(ReportText, TouchesTheFormWhicheverIsLeft) {
  for (int i = 0; i < 5; ++i) {
    ReportRig rig;
    rig.open();
    rig.enter(ReportRig::form().Text1(i));
    rig.type(ReportRig::form().Text1(i), "x");
    EXPECT_FALSE(rig.state().FormTouched) << i;
    rig.leave(ReportRig::form().Text1(i));
    EXPECT_TRUE(rig.state().FormTouched) << i;
  }
}

TEST(ReportText, StoresZipAndSchoolWhenTheyAreLeft) {
  const Lines stored[] = {{}, {}, {"write Tzip=ann lee"}, {"write MySchool=Ann Lee"}, {}};
  for (int i = 0; i < 5; ++i) {
    ReportRig rig;
    rig.open();
    rig.answer(ReportRig::form().Text1(i), "ann lee");
    EXPECT_EQ(rig.trace({"write"}), stored[i]) << i;
  }
}

TEST(ZipBox, SelectsATextThatIsNoNumberAndStoresItAllTheSame) {
  RecordProperty("quirk", "any-zip-is-taken");
  ReportRig rig;
  rig.open();
  rig.answer(ReportRig::zip(), "K1A 0B1");
  EXPECT_EQ(ReportRig::zip().Selection(), (TextSelection{.start = 0, .length = 7}));
  EXPECT_EQ(ReportRig::zip().Text(), "K1A 0B1");
  EXPECT_TRUE(rig.store()["Tzip"] == "K1A 0B1");
  EXPECT_TRUE(rig.state().FormTouched);
}

TEST(ZipBox, SelectsNothingInANumber) {
  for (const char *zip : {"90210", " 90210 ", "-1", "9.5"}) {
    ReportRig rig;
    rig.open();
    rig.answer(ReportRig::zip(), zip);
    EXPECT_EQ(ReportRig::zip().Selection(), TextSelection{}) << zip;
    EXPECT_TRUE(rig.store()["Tzip"] == zip);
  }
}

TEST(ZipBox, StoresAnEmptyTextToo) {
  ReportRig rig;
  rig.store()["Tzip"] = "90210";
  rig.open();
  rig.answer(ReportRig::zip(), "");
  EXPECT_EQ(rig.trace({"write"}), Lines{"write Tzip="});
}

TEST(ZipBox, AloneStartsTheTimer) {
  RecordProperty("quirk", "submit-waits-for-the-zip-box");
  ReportRig rig;
  rig.open();
  for (int i = 0; i < 5; ++i) {
    if (i != ReportForm::text_zip)
      rig.answer(ReportRig::form().Text1(i), "x");
  }
  rig.choose_all();
  rig.tick(ReportRig::form().Timer1);
  EXPECT_FALSE(ReportRig::form().Timer1.Enabled());
  EXPECT_FALSE(ReportRig::submit_button().Enabled());

  rig.enter(ReportRig::zip());
  EXPECT_TRUE(ReportRig::form().Timer1.Enabled());
  rig.tick(ReportRig::form().Timer1);
  EXPECT_TRUE(ReportRig::submit_button().Enabled());
  rig.leave(ReportRig::zip());
  EXPECT_TRUE(ReportRig::form().Timer1.Enabled()) << "until the window is unloaded";
}

// When "Submit" can be pressed.

/// A form whose timer runs.
struct SubmitButton : testing::Test {
  SubmitButton() {
    rig.open();
    rig.enter(ReportRig::zip());
  }

  bool can_be_pressed() {
    rig.tick(ReportRig::form().Timer1);
    return ReportRig::submit_button().Enabled();
  }

  ReportRig rig;
};

TEST_F(SubmitButton, NeedsATextInAllThreeLists) {
  ReportForm &form = ReportRig::form();
  for (int lacking = 0; lacking < 8; ++lacking) {
    form.Combo1.Text = (lacking & 1) != 0 ? "" : "x";
    form.Combo2.Text = (lacking & 2) != 0 ? "" : "x";
    form.Combo3.Text = (lacking & 4) != 0 ? "" : "x";
    EXPECT_EQ(can_be_pressed(), lacking == 0) << lacking;
  }
}

TEST_F(SubmitButton, NeedsNameAgeOrZipOnceTheFormIsTouched) {
  rig.choose_all();
  rig.leave(ReportRig::comments());
  EXPECT_FALSE(can_be_pressed());
  for (TextBox *box : {&ReportRig::name(), &ReportRig::age(), &ReportRig::zip()}) {
    rig.type(*box, " ");
    EXPECT_TRUE(can_be_pressed()) << box->FullName();
    rig.type(*box, "");
    EXPECT_FALSE(can_be_pressed()) << box->FullName();
  }
  rig.type(ReportRig::school(), "x");
  rig.type(ReportRig::comments(), "x");
  EXPECT_FALSE(can_be_pressed()) << "school and comments do not count";
}

TEST_F(SubmitButton, NeedsNobodyWhileTheFormIsUntouched) {
  RecordProperty("quirk", "untouched-form-needs-no-name");
  rig.choose_all();
  EXPECT_TRUE(can_be_pressed());
  rig.leave(ReportRig::comments());
  EXPECT_FALSE(can_be_pressed());
  rig.submit();
  EXPECT_TRUE(can_be_pressed()) << "a submission forgets that the form was touched";
}

TEST_F(SubmitButton, StaysAsItIsWhileTheTimerRests) {
  rig.choose_all();
  EXPECT_FALSE(ReportRig::submit_button().Enabled()) << "before the next tick";
  EXPECT_TRUE(can_be_pressed());
  ReportRig::form().Combo2.Text = "";
  EXPECT_TRUE(ReportRig::submit_button().Enabled());
  EXPECT_FALSE(can_be_pressed());
}

// The way out.

TEST(CancelButton, UnloadsTheWindowAndKeepsWhatOutlivesIt) {
  ReportRig rig;
  rig.fill_in();
  rig.cancel();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
  EXPECT_EQ(rig.trace({"hide", "unload", "message", "request", "write"}), (Lines{"hide ComPart", "unload ComPart"}));
  EXPECT_EQ(rig.state().FeltScore, 1);
  EXPECT_TRUE(rig.state().FormTouched);
  EXPECT_EQ(rig.state().UserSlot, 1);

  rig.open();
  EXPECT_EQ(ReportRig::name().Text(), "");
  EXPECT_EQ(ReportRig::zip().Text(), "90210") << "from the store";
  EXPECT_FALSE(ReportRig::form().Timer1.Enabled());
}

TEST(CancelButton, IsEnabledAtEveryMoment) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  const std::string requests[] = {ReportRig::puta(), ReportRig::putb(), ReportRig::putc()};
  int enabled = 0;
  for (const std::string &request : requests)
    rig.during_request(request, [&enabled] { enabled += ReportRig::form().Command1(1).Enabled() ? 1 : 0; });
  rig.submit();
  EXPECT_EQ(enabled, 3);
  EXPECT_TRUE(ReportRig::form().Command1(1).Enabled());
}

// The links.

TEST(ReportLinks, OpenTheFeltFormsTheOtherWayRoundThanTheySay) {
  RecordProperty("quirk", "felt-forms-are-crossed");
  ReportRig rig;
  rig.open();
  const std::string host = "http://feltforms.localhost:17650";
  EXPECT_EQ(rig.click_entry(ReportRig::form().Label3(0)),
            Lines{"open " + host + "/shake/ca/html/unknown_form.html for ComPart"});
  EXPECT_EQ(rig.click_entry(ReportRig::form().Label3(1)),
            Lines{"open " + host + "/shake/ous/html/unknown_form.html for ComPart"});
}

TEST(ReportLinks, OpenTheFeltFormsOfTheHostInTheSettings) {
  ReportRig rig;
  rig.store().Put(R"(Software\Nalvorin\Borvane\Hosts)", "FeltForms", "https://example.org");
  rig.open();
  EXPECT_EQ(rig.click_entry(ReportRig::form().Label3(1)),
            Lines{"open https://example.org/shake/ous/html/unknown_form.html for ComPart"});
}

TEST(ReportLinks, ShowTheListInPlaceOfTheThanks) {
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.submit();
  rig.serve(ReportRig::geta, ReportRig::summary() + "\n");
  ReportForm &form = ReportRig::form();
  rig.watch(form.ListView1, form.ListView1.Visible, "list");
  rig.watch(form.Frame2, form.Frame2.Visible, "thanks");
  rig.clear_trace();
  rig.click(form.Label3(ReportForm::link_reports));
  EXPECT_EQ(rig.trace({"request", "set", "message"}),
            (Lines{"request " + ReportRig::geta, "set list=true", "set thanks=false"}));
  EXPECT_EQ(ReportRig::report_rows(), Lines{"90210 1.571429 1"}) << "of the event of the report just made";
}

TEST(ReportLinks, LeaveTheHeadingWithoutAClick) {
  ReportRig rig;
  rig.open();
  EXPECT_FALSE(ReportRig::form().Label3(3).Click.IsWired());
  EXPECT_EQ(rig.click_entry(ReportRig::form().Label3(3)), Lines{});
}

Lines Underlined() {
  Lines labels;
  for (int i = 0; i < 4; ++i) {
    if (ReportRig::form().Label3(i).Underline())
      labels.push_back(ReportRig::form().Label3(i).FullName());
  }
  return labels;
}

TEST(ReportLinks, AreUnderlinedWhileThePointerIsOverThem) {
  for (int i = 0; i < 3; ++i) {
    ReportRig rig;
    rig.open();
    const std::string name = ReportRig::form().Label3(i).FullName();
    rig.Rig::move_mouse_over(ReportRig::form().Label3(i));
    EXPECT_EQ(Underlined(), Lines{name});
    rig.Rig::move_mouse_over(ReportRig::form().Frame2);
    EXPECT_EQ(Underlined(), Lines{});
    rig.Rig::move_mouse_over(ReportRig::form().Label3(i));
    rig.happen([] { ReportRig::form().Form_MouseMove({.button = 0, .shift = 0}); });
    EXPECT_EQ(Underlined(), Lines{});
  }
}

TEST(ReportLinks, StayUnderlinedUntilThePointerIsBesideThem) {
  ReportRig rig;
  rig.open();
  rig.Rig::move_mouse_over(ReportRig::form().Label3(0));
  rig.Rig::move_mouse_over(ReportRig::form().Label3(1));
  EXPECT_EQ(Underlined(), (Lines{"Label3(0)", "Label3(1)"}));
}

TEST(ReportLinks, LeaveTheHeadingUnderlined) {
  RecordProperty("quirk", "heading-stays-underlined");
  ReportRig rig;
  rig.open();
  rig.Rig::move_mouse_over(ReportRig::form().Label3(3));
  rig.Rig::move_mouse_over(ReportRig::form().Frame2);
  rig.happen([] { ReportRig::form().Form_MouseMove({.button = 0, .shift = 0}); });
  EXPECT_EQ(Underlined(), Lines{"Label3(3)"});
}

}  // namespace
}  // namespace borvane
