#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace borvane::mirror {

/// Who publishes events.
struct Source {
  QString name;    ///< as in the log and on the index page
  QString credit;  ///< whom to thank wherever its events are shown
  int rank = 0;    ///< of two sources that report one event, that of the greater rank is believed
};

/// The form of a feed's text.
enum class FeedForm {
  Summary,    ///< GeoJSON, see summary_feed.h
  EventText,  ///< a line an event, see event_text.h
};

/// What it means that a feed lacks an event that it had.
struct FeedSpan {
  /// How far back from its making the feed has every event of its source: one that it lacks has been taken back.
  /// Nothing for a feed of what is recent, which events leave as they grow old.
  std::optional<std::chrono::seconds> whole;
};

/// A text on the web that names events, and how to read it.
struct Feed {
  QString url;  ///< https, or plain http for a relay on the same network
  FeedForm form = FeedForm::Summary;
  std::chrono::seconds period{60};  ///< from one request to the next, when all is well
  FeedSpan span;
  int source = 0;  ///< its place in the list of sources
};

}  // namespace borvane::mirror
