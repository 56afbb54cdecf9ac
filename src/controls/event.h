#pragma once

#include <functional>
#include <utility>

namespace borvane {

/// Something that happens to a control. A window wires its handler to it with `=`; without one nothing happens.
template <class... Arguments>
class Event {
 public:
  Event() = default;
  Event(const Event &) = delete;
  Event &operator=(const Event &) = delete;

  template <class Handler>
  Event &operator=(Handler handler) {
    handler_ = std::move(handler);
    return *this;
  }

  void Raise(Arguments... arguments) const {
    if (handler_)
      handler_(arguments...);
  }

  bool IsWired() const { return static_cast<bool>(handler_); }

 private:
  std::function<void(Arguments...)> handler_;
};

}  // namespace borvane
