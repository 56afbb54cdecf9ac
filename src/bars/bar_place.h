#pragma once

#include <initializer_list>

#include "controls/form.h"
#include "controls/pictures.h"
#include "settings/values.h"

namespace borvane {

/// Ticks "On Top" of the short bar as it is stored, sets its timer, and puts it to the top that the settings window
/// names, or to the stored place if places are kept. Raises an overflow for a number that is too large for its use.
void PlaceShortBar();

/// The same for the long bar, and lays out its controls.
void PlaceLongBar();

/// What the keys of both bars do: the arrows move the bar by 50 twips, C, L and R put it to the middle and to the edges
/// of the screen, W opens the product's page.
void MoveByKey(FormBase &bar, Integer key_code);

/// S and E make `bar` and its box smaller and larger by 50 twips, and move the controls at its end. Returns whether
/// `key_code` is one of them.
bool ChangeWidthByKey(FormBase &bar, PictureBox &box, std::initializer_list<Control *> at_end, Integer key_code);

/// Where the place and width of a bar are stored.
struct PlaceSettings {
  Setting top;
  Setting left;
  Setting width;
};

/// Stores place and width of `bar` if places are kept.
void KeepPlace(const FormBase &bar, const PlaceSettings &settings);

}  // namespace borvane
