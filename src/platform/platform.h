#pragma once

#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/files.h"
#include "platform/http_transfer.h"
#include "platform/message_box.h"
#include "platform/process.h"
#include "platform/random_source.h"
#include "platform/region.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/sound.h"

namespace borvane {

/// All that the program asks of a host.
struct Platform {
  SettingsStore &settings;
  HttpTransfer &http;
  EventPump &events;
  Clock &clock;
  RandomSource &random;
  MessageBox &message_box;
  Shell &shell;
  Files &files;
  Sound &sound;
  Region &region;
  Process &process;
};

}  // namespace borvane
