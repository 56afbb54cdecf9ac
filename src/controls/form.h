#pragma once

#include <string>
#include <string_view>

#include "basic/integer.h"
#include "controls/color.h"
#include "controls/control.h"
#include "controls/font.h"
#include "controls/property.h"

namespace borvane {

class FormBase;
class Menu;

/// A size on the screen, in twips.
struct Size {
  float width = 0;
  float height = 0;
};

/// Puts windows on a screen. It must never refer to a window through its handle, which would load it.
class FormHost {
 public:
  /// `form` has been created; its Load handler has not run yet.
  virtual void FormLoaded(FormBase &form) = 0;
  virtual void FormUnloaded(FormBase &form) = 0;

  /// Shows `form`, above `owner` if there is one; a minimised one is restored. With the focus it is brought to the
  /// front and gets the keyboard, even if it is open already; without, it is only shown, and nothing happens if it is
  /// open.
  virtual void ShowForm(FormBase &form, FormBase *owner, bool with_focus) = 0;
  virtual void HideForm(FormBase &form) = 0;

  /// Paints `form` at once if it is shown.
  virtual void RepaintForm(FormBase &form) = 0;

  /// Keeps `form` above the windows of other programs, or no longer. It may not have been shown yet.
  virtual void KeepOnTop(FormBase &form, bool on) = 0;

  /// The size of the first screen.
  virtual Size FirstScreen() = 0;

  /// The size that a label needs to show `text` in one line.
  virtual Size SizeOfText(std::string_view text, const Font &font) = 0;

  /// Shows `menu` at the pointer, on behalf of `form`, and waits until the user has chosen an entry or none; events run
  /// meanwhile. The Click of the chosen entry comes before the call returns.
  virtual void ShowPopupMenu(FormBase &form, Menu &menu) = 0;

 protected:
  ~FormHost() = default;
};

/// Where an edge of a window is on the screen, in twips. Until the program sets it, the window manager chooses.
class Position : public Property<float> {
 public:
  using Property<float>::Property;

  /// The first time, also the value that it has already is a change. Raises an overflow where its pixels need more than
  /// 32 bits.
  Position &operator=(float value);

  /// Whether the program has set it.
  bool is_set() const { return is_set_; }

 private:
  friend class FormBase;

  bool is_set_ = false;
};

/// What unloads a window: the user by its close box, or the program.
enum class UnloadMode { CloseBox, Code };

/// How a window is framed.
enum class BorderStyle { Sizable, FixedSingle, FixedDialog, None };

/// Where a window is when it is loaded.
enum class StartPlace { Screen, MiddleOfFirstScreen };

/// A window. Its struct declares the controls with their design values, then the handlers.
class FormBase : public PropertyOwner, public Container {
 public:
  struct Design {
    std::string_view Name;
    std::string_view Caption;
    float ClientWidth = 0;
    float ClientHeight = 0;
    BorderStyle Border = BorderStyle::Sizable;
    StartPlace Start = StartPlace::Screen;  // the window manager chooses
    Color BackColor = color_button_face;
    bool TakesFocus = true;            // whether a Show brings it to the front and gives it the keyboard
    std::string_view SpokenName = "";  // what a screen reader calls it; empty for its caption
  };

  explicit FormBase(const Design &design);

  std::string_view name() const { return name_; }
  BorderStyle border() const { return border_; }
  bool takes_focus() const { return takes_focus_; }
  std::string_view spoken_name() const { return spoken_name_; }

  /// What the frame adds to the client area, always: the window manager is not asked.
  Size FrameSize() const { return FrameSizeOf(border_); }

  /// The inner size, in twips.
  float ScaleWidth() const { return Width() - FrameSize().width; }
  float ScaleHeight() const { return Height() - FrameSize().height; }

  /// Shows the window without waiting for it, above `owner` if one is given.
  void Show(FormBase *owner = nullptr);

  /// Shows the window where it is among the others and leaves the keyboard where it is, whatever its design says: for a
  /// window that comes back by itself.
  void ShowWithoutFocus();
  void Hide();

  /// Paints the window at once if it is shown.
  void Repaint();

  /// Keeps the window above those of other programs, or no longer.
  void KeepOnTop(bool on);

  /// Shows `menu`, one of the window's own, at the pointer and waits until it is closed; events run meanwhile. The
  /// chosen entry's Click comes before the return.
  void PopupMenu(Menu &menu);

  /// Moves the window to the place of its design; called before its Load handler.
  void TakeStartPlace();

  bool IsShown() const { return is_shown_; }

  /// The user or the screen has resized the window to an outer size, in twips: one notice and one Resize for both
  /// sides. A negative side raises an invalid property value and changes neither.
  void SetSize(float width, float height);

  /// The user or the screen has moved the window's upper left corner, frame included, there. No notice: the caller
  /// shows it already.
  void SetPlace(float left, float top);

  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  virtual void Form_QueryUnload(Integer & /*cancel*/, UnloadMode /*mode*/) {}
  virtual void Form_KeyUp(Integer /*key_code*/, Integer /*shift*/) {}
  virtual void Form_MouseMove(const MouseState & /*mouse*/) {}

 private:
  static Size FrameSizeOf(BorderStyle border);
  void Appear(FormBase *owner, bool with_focus);

  std::string_view name_;
  BorderStyle border_;
  StartPlace start_;
  bool takes_focus_;
  std::string_view spoken_name_;
  bool is_shown_ = false;
  bool has_been_shown_ = false;

 public:
  Property<std::string> Caption;
  Position Left;
  Position Top;
  Extent Width;   // outer, in twips
  Extent Height;  // outer, in twips
  Property<Color> BackColor;
  Property<Integer> MousePointer;

 protected:
  void Changed(const PropertyBase &property) override;
};

inline constexpr int pointer_normal = 0;
inline constexpr int pointer_hourglass = 11;
inline constexpr int pointer_custom = 99;

}  // namespace borvane
