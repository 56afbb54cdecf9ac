#include "controls/form.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "basic/failure.h"
#include "controls/form_set.h"

namespace borvane {

namespace {

/// Whether the pixels of a place on the screen, in twips, fit 32 bits.
bool FitsTheScreen(float twips) {
  constexpr double twips_per_pixel = 15;
  using Limits = std::numeric_limits<std::int32_t>;
  const double pixels = std::round(twips / twips_per_pixel);
  return pixels >= Limits::min() && pixels <= Limits::max();
}

}  // namespace

Position &Position::operator=(float value) {
  if (!FitsTheScreen(value))
    Fail(Failure::Overflow);
  if (is_set_ && value == (*this)())
    return *this;
  is_set_ = true;
  Store(value);
  NotifyOwner();
  return *this;
}

FormBase::FormBase(const Design &design)
    : name_(design.Name),
      border_(design.Border),
      start_(design.Start),
      takes_focus_(design.TakesFocus),
      spoken_name_(design.SpokenName),
      Caption(*this, std::string(design.Caption)),
      Left(*this, 0),
      Top(*this, 0),
      Width(*this, design.ClientWidth + FrameSizeOf(design.Border).width),
      Height(*this, design.ClientHeight + FrameSizeOf(design.Border).height),
      BackColor(*this, design.BackColor),
      MousePointer(*this, pointer_normal) {}

void FormBase::Show(FormBase *owner) { Appear(owner, takes_focus_); }

void FormBase::ShowWithoutFocus() { Appear(nullptr, false); }

void FormBase::Appear(FormBase *owner, bool with_focus) {
  is_shown_ = true;
  if (!has_been_shown_) {
    has_been_shown_ = true;
    Form_Resize();
  }
  current->host().ShowForm(*this, owner, with_focus);
}

void FormBase::Hide() {
  if (!is_shown_)
    return;
  is_shown_ = false;
  current->host().HideForm(*this);
}

void FormBase::Repaint() { current->host().RepaintForm(*this); }

void FormBase::KeepOnTop(bool on) { current->host().KeepOnTop(*this, on); }

void FormBase::PopupMenu(Menu &menu) { current->host().ShowPopupMenu(*this, menu); }

void FormBase::TakeStartPlace() {
  if (start_ != StartPlace::MiddleOfFirstScreen)
    return;
  const Size screen = current->host().FirstScreen();
  Left = (screen.width - Width()) / 2;
  Top = (screen.height - Height()) / 2;
}

Size FormBase::FrameSizeOf(BorderStyle border) {
  return border == BorderStyle::None ? Size{} : Size{.width = 120, .height = 405};
}

void FormBase::SetSize(float width, float height) {
  if (width < 0 || height < 0)
    Fail(Failure::InvalidPropertyValue);
  if (width == Width() && height == Height())
    return;
  Width.Store(width);
  Height.Store(height);
  // A watcher that saw one side changed without the other would give the window a size that nobody asked for.
  NotifyChanged(Width);
}

void FormBase::SetPlace(float left, float top) {
  Left.Store(left);
  Top.Store(top);
}

void FormBase::Changed(const PropertyBase &property) {
  if (&property == &Width || &property == &Height)
    Form_Resize();
}

}  // namespace borvane
