#pragma once

#include <deque>
#include <functional>

#include "core/dispatch.h"
#include "platform/message_box.h"
#include "support/trace.h"

namespace borvane {

/// Questions that the test has answered in advance; one without an answer is closed without a choice.
class FakeMessageBox final : public MessageBox {
 public:
  explicit FakeMessageBox(Trace &trace) : trace_(trace) {}

  void Answer(MessageAnswer answer) { answers_.push_back(answer); }

  /// `event` happens while the next question is open.
  void DuringNext(std::function<void()> event) { event_ = std::move(event); }

  MessageAnswer Show(std::string_view text, std::string_view title, MessageButtons buttons, MessageIcon icon) override {
    trace_.Add("message [" + std::string(title) + "] " + std::string(text) +
               (buttons == MessageButtons::YesNo ? " (Yes, No)" : " (OK, Cancel)") +
               (icon == MessageIcon::Question ? " with a question mark" : ""));
    if (event_)
      Dispatch(std::exchange(event_, {}));
    if (answers_.empty())
      return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Cancel;
    const MessageAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

 private:
  Trace &trace_;
  std::deque<MessageAnswer> answers_;
  std::function<void()> event_;
};

}  // namespace borvane
