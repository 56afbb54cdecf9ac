#pragma once

#include <string>
#include <string_view>

#include "basic/integer.h"
#include "controls/control.h"
#include "controls/property.h"

namespace borvane {

class FormBase;

/// Puts windows on a screen. It must never refer to a window through its handle, which would load it.
class FormHost {
 public:
  /// `form` has come to life; its Load handler has not run yet.
  virtual void FormLoaded(FormBase &form) = 0;
  virtual void FormUnloaded(FormBase &form) = 0;

  /// Shows `form`, above `owner` if there is one; brings it to the front when it shows already.
  virtual void ShowForm(FormBase &form, FormBase *owner) = 0;
  virtual void HideForm(FormBase &form) = 0;

 protected:
  ~FormHost() = default;
};

/// Where an edge of a window stands on the screen, in twips. Until the program sets it, the screen chooses.
class Position : public Property<float> {
 public:
  using Property<float>::Property;

  /// The first time, also the value that it has already is a change.
  Position &operator=(float value);

  /// Whether the program has set it.
  bool is_set() const { return is_set_; }

 private:
  friend class FormBase;

  bool is_set_ = false;
};

/// Who asks a window to go: the user by its close box, or the program.
enum class UnloadMode { CloseBox, Code };

/// How a window is framed.
enum class BorderStyle { Sizable, FixedSingle, FixedDialog };

/// A window. Its struct declares the controls with their design values, then the handlers.
class FormBase : public PropertyOwner, public Container {
 public:
  struct Design {
    std::string_view Name;
    std::string_view Caption;
    float ClientWidth = 0;
    float ClientHeight = 0;
    BorderStyle Border = BorderStyle::Sizable;
  };

  /// What the frame adds to the client area, always: the window manager is not asked.
  static constexpr float frame_width = 120;
  static constexpr float frame_height = 405;

  explicit FormBase(const Design &design);

  std::string_view name() const { return name_; }
  BorderStyle border() const { return border_; }

  /// The inner size, in twips.
  float ScaleWidth() const { return Width() - frame_width; }
  float ScaleHeight() const { return Height() - frame_height; }

  /// Shows the window without waiting for it, above `owner` if one is given.
  void Show(FormBase *owner = nullptr);
  void Hide();
  bool IsShown() const { return is_shown_; }

  /// The user or the screen gives the window another outer size, in twips: one notice and one Resize for both sides. A
  /// negative side raises an invalid property value and changes neither.
  void SetSize(float width, float height);

  /// The user or the screen has moved the window's upper left corner, frame included, there. No notice: what tells of
  /// it shows it already.
  void SetPlace(float left, float top);

  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  virtual void Form_QueryUnload(Integer & /*cancel*/, UnloadMode /*mode*/) {}
  virtual void Form_KeyUp(Integer /*key_code*/, Integer /*shift*/) {}
  virtual void Form_MouseMove(const MouseState & /*mouse*/) {}

 private:
  std::string_view name_;
  BorderStyle border_;
  bool is_shown_ = false;
  bool has_been_shown_ = false;

 public:
  Property<std::string> Caption;
  Position Left;
  Position Top;
  Extent Width;   // outer, in twips
  Extent Height;  // outer, in twips
  Property<Integer> MousePointer;

 protected:
  void Changed(const PropertyBase &property) override;
};

inline constexpr int pointer_normal = 0;
inline constexpr int pointer_hourglass = 11;

}  // namespace borvane
