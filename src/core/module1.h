#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "basic/integer.h"

namespace borvane {

/// A 16-bit truth value of the shared variables: -1 for true and 0 for false.
using Flag = std::int16_t;
inline constexpr Flag flag_true = -1;
inline constexpr Flag flag_false = 0;

/// The faces of the program; one is up at a time.
inline constexpr std::uint8_t face_records = 0;
inline constexpr std::uint8_t face_short_bar = 1;
inline constexpr std::uint8_t face_long_bar = 2;

/// The variables that all windows share.
struct Module1Variables {
  float AlertThreshold = 0;          // magnitude from which an event alerts, taken from conffrm.Text1 at each refresh
  std::string LastAlertTime;         // what events are compared with: the last load of frmRecords or of Form1
  Flag RefreshBusy = flag_false;     // true from the choice of the page until the refresh has ended
  Flag GlobalScanFlag = flag_false;  // true while the world list is read for the headline and not for the list
  Integer RefreshCount;              // ticks of frmRecords.Timer1 since the last refresh
  std::string SiteRoot;              // the page's address until it has been fetched, then scheme, host and a slash
  std::string OpenLinkTarget;        // scratch address of the bars' web menu entries
  std::uint8_t AreaIndex = 0;        // position of the area that was stored at the start of the run
  std::uint8_t BarMode = face_records;  // the face that is up
  std::array<Integer, 4> ColorCodes;    // the colour code last picked for each box of the settings window
  Integer RunCount;                     // number of this run; -1 once it has been reported to the service
  std::string LogFolder;                // the folder that holds quakes.log
  std::string MacID;                    // what this client calls itself at the maker's service
  Flag ShowBanner = flag_false;         // show the banner after the records window
};

/// The shared variables' own name: `Module1->RefreshCount`.
struct Module1Handle {
  Module1Variables *operator->() const;
};

inline constexpr Module1Handle Module1;

}  // namespace borvane
