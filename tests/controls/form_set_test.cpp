#include "controls/form_set.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "controls/buttons.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "support/recording_host.h"

namespace borvane {
namespace {

struct SecondForm : FormBase {
  SecondForm() : FormBase({.Name = "second", .Caption = "Second"}) {}

  TextBox Text1{*this, "Text1", {.Text = "design"}};
};

constexpr Form<SecondForm> second;

/// A window whose handlers a test can set.
struct FirstForm : FormBase {
  FirstForm() : FormBase({.Name = "first", .Caption = "First"}) { ++alive; }
  ~FirstForm() override { --alive; }

  CommandButton Command1{*this, "Command1", {.Caption = "Close"}};
  TimerControl Timer1{*this, "Timer1", {.Interval = 100}};
  TextBox Text1{*this, "Text1", {.Text = "design"}};

  void Form_Load() override {
    if (on_load)
      on_load();
  }
  void Form_QueryUnload(Integer &cancel, UnloadMode mode) override {
    asked_by = mode;
    if (refuses)
      cancel = 1;
  }

  bool refuses = false;
  UnloadMode asked_by = UnloadMode::Code;

  static inline int alive = 0;
  static inline std::function<void()> on_load;
};

constexpr Form<FirstForm> first;

/// The windows of one test, with the code that runs at the load of `first`.
struct Loading : Windows {
  explicit Loading(std::function<void()> on_load = {}) { FirstForm::on_load = std::move(on_load); }
  ~Loading() { FirstForm::on_load = {}; }
};

Lines Names(const FormSet &set) {
  Lines names;
  for (const FormBase *form : set.Forms())
    names.emplace_back(form->name());
  return names;
}

TEST(FormSet, LoadsAWindowAtItsFirstReference) {
  Loading windows;
  EXPECT_EQ(first.IfLoaded(), nullptr);
  EXPECT_TRUE(windows.host.seen.empty());
  EXPECT_EQ(first->Text1.Text(), "design");
  EXPECT_EQ(windows.host.seen, Lines{"load first"});
  EXPECT_FALSE(first->IsShown());
}

TEST(FormSet, LoadsAWindowOnce) {
  Loading windows;
  first->Text1.Text = "typed";
  EXPECT_EQ(first->Text1.Text(), "typed");
  EXPECT_EQ(&*first, first.IfLoaded());
  EXPECT_EQ(windows.host.seen, Lines{"load first"});
}

TEST(FormSet, RunsTheLoadHandlerAtTheReferenceThatLoads) {
  int loads = 0;
  const Loading windows([&] { ++loads; });
  first->Text1.Text = "typed";
  EXPECT_EQ(loads, 1);
  first->Text1.Text = "again";
  EXPECT_EQ(loads, 1);
}

TEST(FormSet, NotifiesTheHostBeforeTheLoadHandlerRuns) {
  Loading windows;
  Lines before_load;
  FirstForm::on_load = [&] { before_load = windows.host.seen; };
  first->Show();
  EXPECT_EQ(before_load, Lines{"load first"});
}

TEST(FormSet, GivesTheLoadHandlerItsOwnWindow) {
  const Loading windows([] { first->Text1.Text = "by load"; });
  EXPECT_EQ(first->Text1.Text(), "by load");
  EXPECT_EQ(FirstForm::alive, 1);
}

TEST(FormSet, LoadsAWindowInsideTheLoadOfAnother) {
  Loading windows([] { second->Text1.Text = first->Text1.Text() + " and more"; });
  EXPECT_EQ(second.IfLoaded(), nullptr);
  first->Show();
  EXPECT_EQ(second->Text1.Text(), "design and more");
  EXPECT_EQ(Names(windows.set), (Lines{"first", "second"}));
}

TEST(FormSet, ListsWindowsInTheOrderOfTheirLoading) {
  Loading windows;
  second->Show();
  first->Show();
  EXPECT_EQ(Names(windows.set), (Lines{"second", "first"}));
  second.Unload();
  second->Show();
  EXPECT_EQ(Names(windows.set), (Lines{"first", "second"}));
}

TEST(FormSet, UnloadHidesAndForgetsTheWindow) {
  Loading windows;
  first->Show();
  EXPECT_TRUE(windows.set.Unload(*first));
  EXPECT_EQ(first.IfLoaded(), nullptr);
  EXPECT_EQ(FirstForm::alive, 0);
  EXPECT_EQ(windows.host.seen, (Lines{"load first", "show first", "hide first", "unload first"}));
}

TEST(FormSet, StartsFromScratchAtTheReferenceAfterAnUnload) {
  const Loading windows;
  first->Text1.Text = "typed";
  first.Unload();
  EXPECT_EQ(first->Text1.Text(), "design");
}

TEST(FormSet, UnloadDoesNothingToAWindowThatIsNotLoaded) {
  Loading windows;
  first.Unload();
  EXPECT_TRUE(windows.host.seen.empty());
}

TEST(FormSet, KeepsAWindowThatRefusesItsUnload) {
  Loading windows;
  first->refuses = true;
  first->Show();
  EXPECT_FALSE(windows.set.Unload(*first));
  EXPECT_NE(first.IfLoaded(), nullptr);
  EXPECT_TRUE(first->IsShown());
  EXPECT_EQ(windows.host.seen, (Lines{"load first", "show first"}));
}

TEST(FormSet, PassesTheUnloadModeToTheWindow) {
  Loading windows;
  first->refuses = true;
  windows.set.Unload(*first, UnloadMode::CloseBox);
  EXPECT_EQ(first->asked_by, UnloadMode::CloseBox);
  first.Unload();
  EXPECT_EQ(first->asked_by, UnloadMode::Code);
}

TEST(FormSet, KeepsTheMemoryOfAWindowUnloadedByItsOwnHandler) {
  Loading windows;
  first->Command1.Click = [] {
    FirstForm &self = *first;
    first.Unload();
    self.Text1.Text = "still there";
    self.Command1.Caption = self.Text1.Text();
  };
  windows.set.BeginEvent();
  first->Command1.Click.Raise();
  EXPECT_EQ(first.IfLoaded(), nullptr);
  EXPECT_EQ(FirstForm::alive, 1);
  windows.set.EndEvent();
  EXPECT_EQ(FirstForm::alive, 0);
}

TEST(FormSet, KeepsTheMemoryUntilTheOutermostEventHasEnded) {
  Loading windows;
  windows.set.BeginEvent();
  first->Timer1.Timer = [&] {
    windows.set.BeginEvent();
    first.Unload();
    windows.set.EndEvent();
    EXPECT_EQ(FirstForm::alive, 1) << "the handler of the outer event continues in a window that is gone";
  };
  first->Timer1.Tick();
  EXPECT_EQ(FirstForm::alive, 1);
  windows.set.EndEvent();
  EXPECT_EQ(FirstForm::alive, 0);
}

TEST(FormSet, LoadsANewWindowNextToTheOneBeingUnloaded) {
  Loading windows;
  windows.set.BeginEvent();
  FirstForm *old = &*first;
  first.Unload();
  EXPECT_NE(&*first, old);
  EXPECT_EQ(FirstForm::alive, 2);
  windows.set.EndEvent();
  EXPECT_EQ(FirstForm::alive, 1);
  EXPECT_NE(first.IfLoaded(), nullptr);
}

TEST(FormSet, UnloadsNothingTwice) {
  Loading windows;
  windows.set.BeginEvent();
  FirstForm &old = *first;
  EXPECT_TRUE(windows.set.Unload(old));
  EXPECT_FALSE(windows.set.Unload(old));
  windows.set.EndEvent();
  EXPECT_EQ(windows.host.seen, (Lines{"load first", "unload first"}));
}

TEST(FormSet, DestroysItsWindowsInItsDestructor) {
  {
    const Loading windows;
    first->Show();
    EXPECT_EQ(FirstForm::alive, 1);
  }
  EXPECT_EQ(FirstForm::alive, 0);
}

}  // namespace
}  // namespace borvane
