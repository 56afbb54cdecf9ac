#pragma once

namespace borvane::mirror {

/// Gives the system back what a large text, its JSON and the catalogue before it took. The C library keeps it
/// otherwise, a hundred megabytes after a large catalogue.
void ReturnFreeMemory();

}  // namespace borvane::mirror
