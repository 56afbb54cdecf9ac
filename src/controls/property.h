#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

namespace borvane {

class PropertyBase;

/// Sees the changes of one control or window; what draws it.
class PropertyWatcher {
 public:
  virtual void PropertyChanged(const PropertyBase &property) = 0;

 protected:
  ~PropertyWatcher() = default;
};

/// What has properties: a control, a window, a part of a control.
class PropertyOwner {
 public:
  PropertyOwner() = default;
  PropertyOwner(const PropertyOwner &) = delete;
  PropertyOwner &operator=(const PropertyOwner &) = delete;

  /// Sets the one watcher; null for none. It must outlive this owner or be taken back.
  void Watch(PropertyWatcher *watcher) { watcher_ = watcher; }

  /// Called by a property whose value has changed: notifies the watcher, then lets the owner raise its event.
  void NotifyChanged(const PropertyBase &property) {
    if (watcher_ != nullptr)
      watcher_->PropertyChanged(property);
    Changed(property);
  }

 protected:
  virtual ~PropertyOwner() = default;

  /// Raises the event for a change of `property`, if it has one.
  virtual void Changed(const PropertyBase & /*property*/) {}

 private:
  PropertyWatcher *watcher_ = nullptr;
};

/// A property is known by its address: `if (&property == &Value)`.
class PropertyBase {
 public:
  explicit PropertyBase(PropertyOwner &owner) : owner_(&owner) {}
  PropertyBase(const PropertyBase &) = delete;
  PropertyBase &operator=(const PropertyBase &) = delete;

 protected:
  ~PropertyBase() = default;
  void NotifyOwner() const { owner_->NotifyChanged(*this); }

 private:
  PropertyOwner *owner_;
};

/// One value of a control: `=` writes it and notifies the owner if it has changed, `()` reads it.
template <class T>
class Property : public PropertyBase {
 public:
  Property(PropertyOwner &owner, T value) : PropertyBase(owner), value_(std::move(value)) {}

  Property &operator=(T value) requires(!std::same_as<T, std::string>) {
    if (value == value_)
      return *this;
    value_ = std::move(value);
    NotifyOwner();
    return *this;
  }

  Property &operator=(std::string_view value) requires std::same_as<T, std::string> {
    if (value == value_)
      return *this;
    value_ = value;
    NotifyOwner();
    return *this;
  }

  const T &operator()() const { return value_; }

 protected:
  /// Writes the value without notifying the owner.
  void Store(T value) { value_ = std::move(value); }

 private:
  T value_;
};

/// A width or a height in twips. Raises an invalid property value when it would become negative.
class Extent : public Property<float> {
 public:
  using Property<float>::Property;

  Extent &operator=(float value);

 private:
  friend class FormBase;
};

}  // namespace borvane
