#pragma once

#include <string>

#include "scan/event_fields.h"
#include "scan/event_rows.h"
#include "scan/working_text.h"

namespace borvane {

/// What the scanners' readers share: the page, and the fields of the row that was read last.
class PageReader {
 public:
  EventFields &fields() { return fields_; }

  /// Whether the page has been used up; there may be no further row before that.
  bool IsAtEnd() const { return text_.IsEmpty(); }

 protected:
  PageReader(std::string &page, int upper_bound) : text_(page), fields_(upper_bound) {}

  WorkingText text_;
  EventFields fields_;
};

/// Lists the rows of a page, until `Reader` finds none or has used the page up. The list of the world, which is also
/// read for the headline alone, has a loop of its own.
template <typename Reader>
void ListEvents(std::string &page) {
  Reader reader(page);
  while (reader.ReadRow()) {
    ListEvent(reader.fields());

    if (reader.IsAtEnd())
      return;
  }
}

}  // namespace borvane
