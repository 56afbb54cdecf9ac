#pragma once

#include <memory>
#include <optional>

#include "catalogue/catalogue_file.h"
#include "command_line.h"
#include "http/router.h"
#include "http/server.h"
#include "monitors.h"
#include "pages/site.h"
#include "service/service.h"

namespace borvane::mirror {

/// The program's parts joined: the catalogue's file, the pages made from it, the maker's service, and the server that
/// answers with them.
class Mirror {
 public:
  explicit Mirror(Options options);

  /// Reads the catalogue and begins to listen, and says so on standard output. Returns the exit status when the mirror
  /// has to end already, with the reason on standard error.
  std::optional<int> Start();

 private:
  /// How an attempt to listen ended.
  enum class Listening {
    Begun,
    MirrorIsThere,   ///< another mirror has the port
    ForeignIsThere,  ///< another program has the port
    Impossible,      ///< the address is none of this computer's
  };

  void ReadCatalogue();
  std::optional<int> Listen();
  Listening ListenAt(const QHostAddress &address);
  std::optional<int> WaitForMonitors();

  Options options_;
  Site site_;
  Service service_;
  Router router_{{&service_, &site_}};
  Server server_;
  std::unique_ptr<CatalogueFile> file_;
  std::unique_ptr<Monitors> monitors_;
};

}  // namespace borvane::mirror
