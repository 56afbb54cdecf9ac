#pragma once

#include <string_view>

#include "basic/integer.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/menu.h"
#include "controls/timer.h"

namespace borvane {

// What the menus, labels and keys of both bars do. `bar` is the one that they belong to.

/// Opens the product's page.
void OpenHomePage(FormBase &bar);

/// Opens `address`, which becomes the shared `OpenLinkTarget`.
void OpenLink(FormBase &bar, std::string_view address);

/// Opens the archive of strong motion maps.
void OpenStrongMotionMaps(FormBase &bar);

/// Opens the page of the event that is selected in the list.
void OpenSelectedEvent(FormBase &bar);

/// Shows the headline of the world under the pointer over `label` if "World Snapshot" is ticked.
void ShowHeadline(Label &label);

/// Shows the settings window and starts its timer.
void ShowSettings();

/// Puts the records window in the place of a bar whose timer is `timer`; the bar itself stays as it is.
void ReturnToRecords(TimerControl &timer);

/// Stores the tick of a bar's "On Top".
void StoreOnTop(const MenuItem &entry);

/// Whether these keys open a bar's menu: the menu key, or F10 with Shift.
bool IsMenuKey(Integer key_code, Integer shift);

}  // namespace borvane
