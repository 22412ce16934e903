// The inner button `Botao`: made when it is first shown, given what the text box keeps for it.
#include "controls/us_text_box/us_text_box.h"

namespace kestrelon {
namespace {

constexpr DISPID kButtonMouseEnter = 1;  // of the button's own events

}  // namespace

void USTextBox::make_button() {
  botao_.reset();
  if (!ButtonVisible.get() || window() == nullptr) return;
  botao_ = std::make_unique<InnerControl<USButton>>(
      ambient(), [this](DISPID event, DISPPARAMS&) { button_event(event); });
  (*botao_)->Theme.put(Theme.get());
  push_button_pictures();
  push_button();
}

void USTextBox::button_changed() {
  const bool wanted = ButtonVisible.get() && window() != nullptr;
  if (wanted != static_cast<bool>(botao_)) {
    make_button();
  } else {
    push_button();
  }
  relayout();
}

void USTextBox::button_pictures_changed() {
  push_button_pictures();
}

void USTextBox::push_button() {
  if (!botao_) return;
  USButton& button = **botao_;
  button.Caption.put(ButtonCaption.get());
  button.Enabled.put(ButtonEnabled.get() && Enabled.get());
  button.ForeColor.put(ButtonForeColor.get());
  button.ForeColorOver.put(ButtonForeColor.get());
  button.ForeColorDown.put(ButtonForeColor.get());
  button.GradientColors.put(ButtonGradientColors.get());
  button.HandPointer.put(ButtonHandPointer.get());
  button.PictureAlignment.put(ButtonPictureAlignment.get());
  button.Font.put(ButtonFont.get().get());
  button.ShowFocusRect.put(false);
}

void USTextBox::push_button_pictures() {
  if (!botao_) return;
  USButton& button = **botao_;
  button.Picture.put(ButtonPicture.get().get());
  button.PictureOver.put(ButtonPictureOver.get().get());
  button.PictureSize.put(ButtonPictureSize.get());
  if (ButtonPictureSize.get() == Picture_Custom) {
    button.PictureSizeX.put(ButtonPictureSizeX.get());
    button.PictureSizeY.put(ButtonPictureSizeY.get());
  }
}

void USTextBox::button_event(DISPID event) {
  if (event == DISPID_CLICK) return raise_button_click();
  if (event == kButtonMouseEnter) enter_hover();
}

}  // namespace kestrelon
