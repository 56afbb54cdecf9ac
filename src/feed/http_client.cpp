#include "feed/http_client.h"

#include "core/program.h"
#include "settings/conffrm.h"

namespace borvane {

Flag HttpClientFree() {
  constexpr int pass_that_cancels = 20;
  constexpr int last_pass = 22;

  for (int pass = 0;; ++pass) {
    platform().events.LetEventsRun();

    if (pass == pass_that_cancels)
      conffrm->Inet1.Cancel();

    if (pass == last_pass)
      return flag_false;

    if (!conffrm->Inet1.StillExecuting())
      return flag_true;
  }
}

}  // namespace borvane
