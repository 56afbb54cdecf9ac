#include "controls/property.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "basic/integer.h"

namespace borvane {
namespace {

/// An owner with a property of each kind, which records its notifications.
struct Owner : PropertyOwner {
  Property<int> Count{*this, 1};
  Property<std::string> Text{*this, "first"};
  Extent Width{*this, 100};
  std::vector<std::string> changes;

 protected:
  void Changed(const PropertyBase &property) override { changes.emplace_back(NameOf(property)); }

 private:
  const char *NameOf(const PropertyBase &property) const {
    return &property == &Count ? "Count" : &property == &Text ? "Text" : &property == &Width ? "Width" : "?";
  }
};

struct Watcher : PropertyWatcher {
  std::vector<const PropertyBase *> seen;
  std::size_t owner_changes = 0;
  Owner *owner = nullptr;

  void PropertyChanged(const PropertyBase &property) override {
    seen.push_back(&property);
    owner_changes = owner == nullptr ? 0 : owner->changes.size();
  }
};

TEST(Property, HoldsItsInitialValueWithoutANotification) {
  Owner owner;
  EXPECT_EQ(owner.Count(), 1);
  EXPECT_EQ(owner.Text(), "first");
  EXPECT_TRUE(owner.changes.empty());
}

TEST(Property, NotifiesItsOwnerWhichValueChanged) {
  Owner owner;
  owner.Count = 2;
  owner.Text = "second";
  EXPECT_EQ(owner.Count(), 2);
  EXPECT_EQ(owner.Text(), "second");
  EXPECT_EQ(owner.changes, (std::vector<std::string>{"Count", "Text"}));
}

TEST(Property, NotifiesNobodyWhenTheSameValueIsWritten) {
  Owner owner;
  owner.Count = 1;
  owner.Text = "first";
  owner.Width = 100;
  EXPECT_TRUE(owner.changes.empty());
}

TEST(Property, HasTheNewValueWhenItNotifiesTheWatcherAndThenTheOwner) {
  Owner owner;
  Watcher watcher;
  watcher.owner = &owner;
  owner.Watch(&watcher);
  owner.Count = 7;
  ASSERT_EQ(watcher.seen.size(), 1u);
  EXPECT_EQ(watcher.seen[0], &owner.Count);
  EXPECT_EQ(watcher.owner_changes, 0u);
  EXPECT_EQ(owner.changes.size(), 1u);
}

TEST(Property, NotifiesNoWatcherThatHasBeenRemoved) {
  Owner owner;
  Watcher watcher;
  owner.Watch(&watcher);
  owner.Watch(nullptr);
  owner.Count = 7;
  EXPECT_TRUE(watcher.seen.empty());
}

TEST(Property, AcceptsAPieceOfItsOwnText) {
  Owner owner;
  owner.Text = std::string_view(owner.Text()).substr(2);
  EXPECT_EQ(owner.Text(), "rst");
}

TEST(Extent, RefusesANegativeValueAndKeepsTheOldOne) {
  Owner owner;
  try {
    owner.Width = -1;
    FAIL() << "a negative width was accepted";
  } catch (const RuntimeError &error) {
    EXPECT_EQ(error.number(), static_cast<int>(Failure::InvalidPropertyValue));
  }
  EXPECT_EQ(owner.Width(), 100);
  EXPECT_TRUE(owner.changes.empty());
}

TEST(Extent, AcceptsZero) {
  Owner owner;
  owner.Width = 0;
  EXPECT_EQ(owner.Width(), 0);
  EXPECT_EQ(owner.changes, std::vector<std::string>{"Width"});
}

}  // namespace
}  // namespace borvane
