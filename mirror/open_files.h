#pragma once

namespace borvane::mirror {

/// Raises the number of files that this process may have open at a time to `wanted`, or as near to it as the system
/// allows. Gives the number that holds from now on.
int AllowOpenFiles(int wanted);

}  // namespace borvane::mirror
