#include "transfer/answer_head.h"

namespace borvane {

void AnswerHead::TakeLine(std::string_view line) {
  // Each head begins with its status line. The lines of a trailer come here, too, without the blank line that ends it.
  if (line.starts_with("HTTP/"))
    is_whole_ = false;
  else if (line == "\r\n" || line == "\n")
    is_whole_ = true;
}

}  // namespace borvane
