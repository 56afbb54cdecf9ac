#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string_view>

#include "basic/failure.h"
#include "controls/control.h"

namespace borvane {

/// Controls of one kind under one name, distinguished by their position from 0 on: `Label1(2)`.
template <class T, std::size_t N>
class ControlArray {
 public:
  ControlArray(Container &container, std::string_view name, const std::array<typename T::Design, N> &designs) {
    for (std::size_t i = 0; i < N; ++i)
      controls_.emplace_back(container, name, designs[i], static_cast<int>(i));
  }

  /// A control of the array and what holds it.
  struct Member {
    Container &container;
    typename T::Design design;
  };

  /// Controls that are not all in one container.
  ControlArray(std::string_view name, const std::array<Member, N> &members) {
    for (std::size_t i = 0; i < N; ++i)
      controls_.emplace_back(members[i].container, name, members[i].design, static_cast<int>(i));
  }

  /// Raises a subscript failure when there is no such position.
  T &operator()(int index) {
    if (index < 0 || index >= static_cast<int>(N))
      Fail(Failure::Subscript);
    return controls_[static_cast<std::size_t>(index)];
  }

  static constexpr int Count() { return static_cast<int>(N); }

 private:
  std::deque<T> controls_;
};

}  // namespace borvane
