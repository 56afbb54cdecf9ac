#pragma once

#include <functional>
#include <map>
#include <string>
#include <type_traits>

#include "basic/number.h"
#include "controls/list_view.h"
#include "controls/property.h"
#include "support/trace.h"

namespace borvane {

/// Writes changes of chosen properties of one control or window into the trace: "set frmRecords.MousePointer=11".
class TracedProperties final : public PropertyWatcher {
 public:
  TracedProperties(Trace &trace, PropertyOwner &owner) : trace_(trace) { owner.Watch(this); }

  template <class T>
  void Add(const Property<T> &property, std::string name) {
    properties_[&property] = [&property, name = std::move(name)] { return name + "=" + TextOf(property()); };
  }

  void PropertyChanged(const PropertyBase &property) override {
    const auto place = properties_.find(&property);
    if (place != properties_.end())
      trace_.Add("set " + place->second());
  }

 private:
  template <class T>
  static std::string TextOf(const T &value) {
    if constexpr (std::is_same_v<T, std::string>)
      return value;
    else if constexpr (std::is_same_v<T, bool>)
      return value ? "true" : "false";
    else if constexpr (std::is_same_v<T, float>)
      return SingleText(value);
    else if constexpr (std::is_unsigned_v<T>)
      return std::to_string(value);
    else
      return IntegerText(value);
  }

  Trace &trace_;
  std::map<const PropertyBase *, std::function<std::string()>> properties_;
};

/// Writes changes of a list's rows and columns into the trace: "rows frmRecords.ListView1 cleared".
class TracedRows final : public ListWatcher {
 public:
  TracedRows(Trace &trace, ListView &list, std::string name) : trace_(trace), name_(std::move(name)) {
    list.WatchRows(this);
  }

  void RowAdded(int row) override { Add(IntegerText(row) + " added"); }
  void RowsMoved() override { Add("moved"); }
  void RowChanged(int row) override { Add(IntegerText(row) + " changed"); }
  void RowsCleared() override { Add("cleared"); }
  void ColumnsChanged() override {}

 private:
  void Add(const std::string &what) { trace_.Add("rows " + name_ + " " + what); }

  Trace &trace_;
  std::string name_;
};

}  // namespace borvane
