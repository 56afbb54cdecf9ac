#pragma once

#include <string_view>

namespace borvane {

enum class MessageButtons { Ok, OkCancel, YesNo };
enum class MessageIcon { None, Question };
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// Asks the user, or reports something with OK alone, and waits for the answer; events run meanwhile.
class MessageBox {
 public:
  /// Closing the box without a choice counts as Cancel or No; of a box with OK alone, as OK.
  virtual MessageAnswer Show(std::string_view text, std::string_view title, MessageButtons buttons,
                             MessageIcon icon) = 0;

 protected:
  ~MessageBox() = default;
};

}  // namespace borvane
