#include "desktop/widgets/binders.h"
#include "desktop/widgets/frame_widget.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

class FrameBinder final : public Binder {
 public:
  FrameBinder(Frame &frame, FrameWidget &widget, const Surroundings &surroundings)
      : Binder(frame, widget, surroundings), frame_(frame), frame_widget_(widget) {
    Show(frame_.Caption);
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { frame_widget_.ShowCaption(ShownText(frame_.Caption())); }

 private:
  Frame &frame_;
  FrameWidget &frame_widget_;
};

}  // namespace

Binder *BindFrame(Frame &frame, const Surroundings &surroundings) {
  return new FrameBinder(frame, *new FrameWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
