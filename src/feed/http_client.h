#pragma once

#include "core/module1.h"

namespace borvane {

/// Whether conffrm's HTTP client is free for a new request. A request under way is cancelled after a short spin, in
/// which events run: so a later request takes the client over from an earlier one. A caller that gets false drops its
/// request.
Flag HttpClientFree();

}  // namespace borvane
