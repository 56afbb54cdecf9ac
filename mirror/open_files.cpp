#include "open_files.h"

#include <QtGlobal>
#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace borvane::mirror {

int AllowOpenFiles([[maybe_unused]] int wanted) {
#ifdef Q_OS_UNIX
  rlimit files = {};
  if (::getrlimit(RLIMIT_NOFILE, &files) != 0)
    return wanted;
  rlimit raised = files;
  raised.rlim_cur = std::clamp(static_cast<rlim_t>(wanted), files.rlim_cur, files.rlim_max);
  if (::setrlimit(RLIMIT_NOFILE, &raised) == 0)
    files = raised;
  return static_cast<int>(std::min(files.rlim_cur, static_cast<rlim_t>(wanted)));
#else
  return wanted;
#endif
}

}  // namespace borvane::mirror
