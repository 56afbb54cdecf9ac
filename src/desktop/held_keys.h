#pragma once

namespace borvane {

/// Makes the X server report a held key's release once, at its end. By default it sends a release and a press with
/// every repetition, which Qt does not always recognise as such: a key would be released many times. Does nothing
/// without an X server.
void CountHeldKeysOnce();

}  // namespace borvane
