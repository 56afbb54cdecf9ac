#pragma once

#include <deque>
#include <functional>

#include "core/dispatch.h"
#include "platform/message_box.h"
#include "support/trace.h"

namespace borvane {

/// Questions that the test has answered in advance; one without an answer is closed without a choice. A box with OK
/// alone takes no answer.
class FakeMessageBox final : public MessageBox {
 public:
  explicit FakeMessageBox(Trace &trace) : trace_(trace) {}

  void Answer(MessageAnswer answer) { answers_.push_back(answer); }

  /// `event` happens while the next question is open.
  void DuringNext(std::function<void()> event) { event_ = std::move(event); }

  MessageAnswer Show(std::string_view text, std::string_view title, MessageButtons buttons, MessageIcon icon) override {
    trace_.Add("message [" + std::string(title) + "] " + std::string(text) + " (" + Captions(buttons) + ")" +
               (icon == MessageIcon::Question ? " with a question mark" : ""));
    if (event_)
      Dispatch(std::exchange(event_, {}));
    if (buttons == MessageButtons::Ok)
      return MessageAnswer::Ok;
    if (answers_.empty())
      return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Cancel;
    const MessageAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

 private:
  static std::string Captions(MessageButtons buttons) {
    switch (buttons) {
      case MessageButtons::Ok:
        return "OK";
      case MessageButtons::YesNo:
        return "Yes, No";
      default:
        return "OK, Cancel";
    }
  }

  Trace &trace_;
  std::deque<MessageAnswer> answers_;
  std::function<void()> event_;
};

}  // namespace borvane
