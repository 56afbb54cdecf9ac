#include "controls/control.h"

#include <array>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "controls/buttons.h"
#include "controls/control_array.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "support/box.h"

namespace borvane {
namespace {

TEST(Control, StartsWithItsDesignValues) {
  Box box;
  Label label{box,
              "Label5",
              {.Caption = "Logs",
               .Left = 90,
               .Top = 3525,
               .Width = 510,
               .Height = 225,
               .Enabled = false,
               .Visible = false,
               .ToolTipText = "The log",
               .FontName = "Arial"}};
  EXPECT_EQ(label.Caption(), "Logs");
  EXPECT_EQ(label.Left(), 90);
  EXPECT_EQ(label.Top(), 3525);
  EXPECT_EQ(label.Width(), 510);
  EXPECT_EQ(label.Height(), 225);
  EXPECT_FALSE(label.Enabled());
  EXPECT_FALSE(label.Visible());
  EXPECT_EQ(label.ToolTipText(), "The log");
  EXPECT_EQ(label.FontName(), "Arial");
  EXPECT_EQ(label.Tag(), "");
}

TEST(Control, AcceptsANegativeLeftEdgeButNoNegativeSize) {
  Box box;
  Label label{box, "Label1", {.Width = 10, .Height = 10}};
  label.Left = -5000;
  label.Top = -1;
  EXPECT_EQ(label.Left(), -5000);
  EXPECT_EQ(label.Top(), -1);
  EXPECT_THROW(label.Width = -1, RuntimeError);
  EXPECT_THROW(label.Height = -0.5F, RuntimeError);
}

TEST(Control, IsNamedByItsNameAndItsPositionInAnArray) {
  Box box;
  const Label alone{box, "Label5", {}};
  ControlArray<Label, 3> labels{box, "Label1", {}};
  EXPECT_EQ(alone.FullName(), "Label5");
  EXPECT_EQ(alone.index(), Control::no_index);
  EXPECT_EQ(labels(2).FullName(), "Label1(2)");
  EXPECT_EQ(labels(2).index(), 2);
}

TEST(Container, ListsItsControlsInTheOrderOfTheirDeclaration) {
  Box box;
  const Label first{box, "Label4", {}};
  Frame frame{box, "Frame1", {.Caption = " History "}};
  ControlArray<Label, 2> inside{frame, "Label1", {}};
  const Label last{box, "Label3", {}};
  EXPECT_EQ(box.children(), (std::vector<Control *>{const_cast<Label *>(&first), &frame, const_cast<Label *>(&last)}));
  EXPECT_EQ(frame.children(), (std::vector<Control *>{&inside(0), &inside(1)}));
  EXPECT_EQ(&inside(1).container(), &frame);
  EXPECT_EQ(frame.Caption(), " History ");
}

TEST(ControlArray, GivesEachPositionItsOwnDesign) {
  Box box;
  ControlArray<Label, 2> labels{box, "Label1", {{{.Caption = "City:"}, {.Caption = "Latitude:"}}}};
  EXPECT_EQ(labels(0).Caption(), "City:");
  EXPECT_EQ(labels(1).Caption(), "Latitude:");
  EXPECT_EQ(labels.Count(), 2);
}

TEST(ControlArray, MayHaveItsMembersInSeveralContainers) {
  Box box;
  Frame frame{box, "Frame2", {}};
  ControlArray<Label, 3> labels{"Label2", {{{box, {.Caption = "Event:"}}, {frame, {.Caption = "0.00"}}, {box, {}}}}};
  EXPECT_EQ(box.children(), (std::vector<Control *>{&frame, &labels(0), &labels(2)}));
  EXPECT_EQ(frame.children(), (std::vector<Control *>{&labels(1)}));
  EXPECT_EQ(&labels(1).container(), &frame);
  EXPECT_EQ(labels(1).FullName(), "Label2(1)");
  EXPECT_EQ(labels(0).Caption(), "Event:");
  EXPECT_EQ(labels(1).Caption(), "0.00");
}

TEST(ControlArray, RaisesASubscriptFailureOutsideItsBounds) {
  Box box;
  ControlArray<Label, 2> labels{box, "Label1", {}};
  for (const int position : {-1, 2, 32767}) {
    try {
      labels(position);
      FAIL() << "position " << position << " was accepted";
    } catch (const RuntimeError &error) {
      EXPECT_EQ(error.number(), static_cast<int>(Failure::Subscript)) << "position " << position;
    }
  }
}

TEST(Event, DoesNothingWithoutAHandler) {
  Box box;
  const Label label{box, "Label1", {}};
  EXPECT_FALSE(label.Click.IsWired());
  EXPECT_NO_THROW(label.Click.Raise());
}

TEST(Event, PassesItsArgumentsToTheHandlerSetLast) {
  Event<int> event;
  int first = 0;
  int second = 0;
  event = [&](int number) { first = number; };
  event = [&](int number) { second = number; };
  event.Raise(5);
  EXPECT_TRUE(event.IsWired());
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 5);
}

}  // namespace
}  // namespace borvane
