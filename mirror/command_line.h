#pragma once

#include <QHostAddress>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "common/hosts.h"
#include "store/store_address.h"

namespace borvane::mirror {

/// What the command line asks for.
struct Options {
  QString catalogue;                    ///< file of events; empty for the bundled sample
  std::vector<QHostAddress> addresses;  ///< where to listen; empty for both loopback addresses
  quint16 port = mirror_port;
  StoreAddress store = DefaultStoreAddress();  ///< of the maker's service
  QStringList hosts;                           ///< names, in lower case, by which monitors reach the maker's service
  QString newest_version = BORVANE_VERSION;    ///< that the maker's service reports
  QString attended;                            ///< folder of the socket for monitors; empty to run without them
  bool help = false;
  bool version = false;
};

/// Options, or what is wrong with the command line.
struct CommandLine {
  Options options;
  QString fault;  ///< empty when all is well
};

/// Reads the arguments after the program's name.
CommandLine ReadCommandLine(const QStringList &arguments);

/// What the options are and do.
const char *Usage();

}  // namespace borvane::mirror
