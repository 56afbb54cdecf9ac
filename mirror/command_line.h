#pragma once

#include <QStringList>

#include "options.h"

namespace borvane::mirror {

/// Options, or what is wrong with the command line.
struct CommandLine {
  Options options;
  QString fault;  ///< empty when all is well
};

/// Reads the arguments after the program's name. What they do not set stays as it is in `options`; the hosts that they
/// name take the place of those.
CommandLine ReadCommandLine(const QStringList &arguments, Options options = {});

/// What the options are and do.
const char *Usage();

}  // namespace borvane::mirror
