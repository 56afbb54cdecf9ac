#pragma once

namespace borvane {

/// Random numbers.
class RandomSource {
 public:
  /// Begins the sequence that belongs to `seed`.
  virtual void Seed(double seed) = 0;

  /// The next number, at least 0 and below 1.
  virtual double Next() = 0;

 protected:
  ~RandomSource() = default;
};

}  // namespace borvane
