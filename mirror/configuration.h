#pragma once

#include <QByteArray>
#include <QStringList>

#include "options.h"

namespace borvane::mirror {

/// What a configuration file asks for.
struct Configuration {
  Options options;
  QStringList faults;  ///< "mirror.toml:12: unknown key "perod"", in the order of the lines; empty when all is well
};

/// Reads the text of a configuration file, which is TOML. Each option of the command line is a key with its name; the
/// sources of live events and the boxes of the areas are tables, see docs/live.md. What the text does not set stays as
/// it is in `options`. Names of files are relative to the folder of `file`.
Configuration ReadConfiguration(const QByteArray &text, const QString &file, Options options = {});

/// The options of the program.
struct Setup {
  Options options;
  QString file;        ///< the configuration file that was read; empty for none
  QString usage;       ///< what is wrong with the command line; empty when all is well
  QStringList faults;  ///< of the file
};

/// Reads the command line and the file that it names. Without a name it is the one that BORVANE_MIRROR_CONFIG names, or
/// mirror.toml in the configuration folder of the user or the computer, which need not be there.
Setup ReadSetup(const QStringList &arguments);

}  // namespace borvane::mirror
