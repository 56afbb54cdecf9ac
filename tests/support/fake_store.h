#pragma once

#include <map>
#include <ostream>
#include <utility>

#include "platform/settings_store.h"
#include "support/trace.h"

namespace borvane {

class FakeStore;

/// A value of the program's key: `store["Area"] = "Los Angeles"`, `EXPECT_EQ(store["Area"], "Los Angeles")`.
class StoreEntry {
 public:
  StoreEntry(FakeStore &store, std::string_view name) : store_(store), name_(name) {}

  // They write to the store.
  // NOLINTBEGIN(misc-unconventional-assign-operator)
  void operator=(std::string_view text) { Put(std::string(text)); }
  void operator=(std::uint32_t number) { Put(number); }
  void operator=(OtherValue other) { Put(other); }
  // NOLINTEND(misc-unconventional-assign-operator)

  /// True when there is such a value and it is this text.
  bool operator==(std::string_view text) const;

  friend void PrintTo(const StoreEntry &entry, std::ostream *stream);

 private:
  void Put(StoredValue value);
  std::string Shown() const;

  FakeStore &store_;
  std::string name_;
};

/// Settings in memory. Every access is in the trace by the value's name, with its key unless that is the program's
/// own: "read Area", "write Area=Los Angeles", "read Hosts\National", "delete Area".
class FakeStore final : public SettingsStore {
 public:
  explicit FakeStore(Trace &trace) : trace_(trace) {}

  StoreEntry operator[](std::string_view name) { return {*this, name}; }
  bool Has(std::string_view name) const;

  /// The text of a value of the program's key; empty when it is missing or not a text.
  std::string TextOf(std::string_view name) const;

  /// The names of all values of the program's key.
  Lines Names() const;

  void Put(std::string_view key, std::string_view name, StoredValue value);
  const StoredValue *Get(std::string_view key, std::string_view name) const;

  /// From now on, the store silently ignores writes.
  void RefuseWrites() { takes_writes_ = false; }

  /// Every read raises this error.
  void FailReads(int number) { read_failure_ = number; }

  /// Every read throws a foreign exception.
  void BreakReads() { is_broken_ = true; }

  std::optional<StoredValue> Read(std::string_view key, std::string_view name) override;
  void Write(std::string_view key, std::string_view name, std::string_view text) override;
  void Delete(std::string_view key, std::string_view name) override;
  void BeginEvent() override { ++events_; }
  void EndEvent() override { --events_; }

  /// How many events it knows to be under way, one inside the other.
  int events() const { return events_; }

 private:
  Trace &trace_;
  std::map<std::pair<std::string, std::string>, StoredValue> values_;
  bool takes_writes_ = true;
  int read_failure_ = 0;
  bool is_broken_ = false;
  int events_ = 0;
};

}  // namespace borvane
