#pragma once

#include <memory>

#include "desktop/services/tone_player.h"

class QString;

namespace borvane {

/// Opens a stream of the sound server, PulseAudio or what speaks its protocol. Null when the library or the server is
/// missing, or the server refuses. Blocks for up to 30 s when the server does not answer. The library is loaded by the
/// first call: a start does not pay for it.
std::unique_ptr<ToneStream> OpenPulseStream();

/// The same with the library of that name.
std::unique_ptr<ToneStream> OpenPulseStream(const QString &library);

}  // namespace borvane
