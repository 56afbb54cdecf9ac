#pragma once

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/pictures.h"
#include "controls/status_bar.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"
#include "desktop/widgets/binder.h"

namespace borvane {

// Each makes the widget of one kind of control in the window around it, and the binder that keeps the two the same. The
// widget owns the binder, the window the widget.

Binder *BindLabel(Label &label, const Surroundings &surroundings);
Binder *BindFrame(Frame &frame, const Surroundings &surroundings);
Binder *BindTextBox(TextBox &text_box, const Surroundings &surroundings);
Binder *BindCheckBox(CheckBox &check_box, const Surroundings &surroundings);
Binder *BindOptionButton(OptionButton &option_button, const Surroundings &surroundings);
Binder *BindCommandButton(CommandButton &button, const Surroundings &surroundings);
Binder *BindComboBox(ComboBox &combo_box, const Surroundings &surroundings);
Binder *BindPictureBox(PictureBox &picture_box, const Surroundings &surroundings);
Binder *BindImage(Image &image, const Surroundings &surroundings);
Binder *BindToolbar(Toolbar &toolbar, const Surroundings &surroundings);
Binder *BindStatusBar(StatusBar &status_bar, const Surroundings &surroundings);
Binder *BindListView(ListView &list, const Surroundings &surroundings);

/// The one of these that fits the control's kind; null for a control that is never seen, such as a timer.
Binder *BindControl(Control &control, const Surroundings &surroundings);

}  // namespace borvane
