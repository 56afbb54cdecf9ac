#pragma once

#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/program/list_pages.h"
#include "support/rig.h"

namespace borvane {

/// A started program that watches Los Angeles, whose page has one event of magnitude 2.0; the world's page has one
/// of 4.4. Nothing has been fetched yet, and the trace is empty.
struct WatchingRig : Rig {
  WatchingRig() {
    store()["ad"] = "5";
    store()["Area"] = "Los Angeles";
    serve(los_angeles, Page(Row("2.0")));
    serve(world_page, WorldPage(WorldRow("4.4")));
    start();
    clear_trace();
  }

  /// A refresh as by the R key, without the key.
  void refresh() { refresh(3); }
  void refresh(int mode);

  /// How often the area's page has been requested.
  int fetches() const {
    const Lines requests = trace({"request"});
    return static_cast<int>(std::count(requests.begin(), requests.end(), "request " + los_angeles));
  }
};

/// The magnitude of the newest event in the upper list.
inline std::string Newest() { return frmRecords->ListView2.ListItems(1).Text; }

/// The panel that shows that a refresh has succeeded.
inline std::string LastRefresh() { return frmRecords->StatusBar1.Panels(2).Text(); }

}  // namespace borvane
