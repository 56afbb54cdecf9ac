#pragma once

#include <vector>

#include "controls/control.h"

namespace borvane {

/// A box with a text that can be typed or picked from a list. Text written by code raises nothing.
class ComboBox : public Control {
 public:
  struct Design {
    std::string_view Text = "";
    std::vector<std::string_view> Entries = {};
    bool Editable = true;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  ComboBox(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Text(*this, std::string(design.Text)),
        editable_(design.Editable),
        entries_(design.Entries.begin(), design.Entries.end()) {}

  bool editable() const { return editable_; }

  /// Appends an entry. Entries are added in the window's Load, before anything draws the list.
  void AddItem(std::string_view entry) { entries_.emplace_back(entry); }

  int ListCount() const { return static_cast<int>(entries_.size()); }

  /// The entry at `position`, from 0 on; empty where there is none.
  std::string_view List(int position) const;

  /// The position last picked; -1 before that and after another text has been written or typed.
  int ListIndex() const { return list_index_; }

  /// The user picks the entry at `position`: it becomes the text, and Click is raised. Raises a subscript failure where
  /// there is no entry.
  void Select(int position);

  Property<std::string> Text;

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  bool editable_;
  std::vector<std::string> entries_;
  int list_index_ = -1;
};

}  // namespace borvane
