#include "reports/reporter_slots.h"

#include "basic/number.h"
#include "core/program.h"
#include "core/registry.h"

namespace borvane {

namespace {

constexpr int slots = 20;

std::string UserValue(Integer slot) { return "User" + IntegerText(slot); }

std::string DayOfReportValue(Integer slot) { return "UserRep" + IntegerText(slot); }

std::string Today() { return FormatDate(platform().clock.Now(), "mm-dd-yyyy"); }

}  // namespace

Reporter FindReporter(std::string_view name) {
  Integer highest_used = 0;
  for (int slot = 1; slot <= slots; ++slot) {
    const std::string stored = ReadRegValue(HKEY_CURRENT_USER, program_key, UserValue(slot));
    if (!stored.empty())
      highest_used = slot;
    // Meant (empty-name-is-the-first-unused-slot): a reporter without a name should have a slot after all others. An
    // unused slot reads as an empty text, which is the same name.
    if (stored == name)
      return {.slot = slot, .is_known = true};
  }

  // Meant (reporters-from-21-on-share-a-slot): each reporter should have a slot. Only the first twenty are looked at,
  // so that the next one is always the same.
  return {.slot = highest_used + 1};
}

bool HasReportedToday(Integer slot) {
  return ReadRegValue(HKEY_CURRENT_USER, program_key, DayOfReportValue(slot)) == Today();
}

void SaveReporter(Integer slot, std::string_view name) {
  SaveRegValue(HKEY_CURRENT_USER, program_key, UserValue(slot), name);

  // Meant (report-day-replaces-the-name): the day should go into the slot's UserRep value, which would allow a reporter
  // one report a day. It replaces the name, so that the slot is never found again by it, and a further report of the
  // same day goes into the next one. Where a UserRep value was put into the store by others, it counts.
  SaveRegValue(HKEY_CURRENT_USER, program_key, UserValue(slot), Today());
}

}  // namespace borvane
