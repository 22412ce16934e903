// Life of the text box, and the setters that do more than draw again.
#include "controls/us_text_box/us_text_box.h"

#include <shlwapi.h>

#include "frame/kit/theme.h"

namespace kestrelon {
namespace {

ControlTraits text_box_traits() {
  ControlTraits traits;
  traits.initial_pixels = {121, 25};
  return traits;
}

}  // namespace

USTextBox::USTextBox() : USTextBoxGlue(text_box_traits()) {}

void USTextBox::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
  ButtonFont.set_default(ambient().font().get());
}

void USTextBox::init_properties() {
  Font.reset();
  ButtonFont.reset();
  box_.set_rules(settings());
  redraw_enabled_ = true;
  relayout();
}

// What was saved shows as it was saved: no setter runs, so no text is made anew.
void USTextBox::properties_read() {
  redraw_enabled_ = true;
  apply_form();
  box_.set_rules(settings());
  box_.set_locked(Locked.get());
  apply_password();
  const auto at = [&](long position) {
    return std::min(static_cast<size_t>(std::max(position, 0L)), Value.get().size());
  };
  const size_t start = at(SelStart.get());
  const size_t length = std::min(at(SelLength.get()), Value.get().size() - start);
  box_.adopt({Value.get(), start, start + length});
  apply_drops();
  relayout();
}

void USTextBox::window_created() {
  apply_form();
  box_.set_rules(settings());
  box_.set_locked(Locked.get());
  apply_password();
  make_button();
  relayout();
}

void USTextBox::resized() {
  relayout();
}

void USTextBox::shown() {
  create_tool_tip();
}

void USTextBox::terminate() {
  redraw_enabled_ = false;
  hover_watch_.stop();
  suggestions_.close();
  text_events_.Texto_Finalizar();
  botao_.reset();
  tip_.Destroy();
}

void USTextBox::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_TEXT;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (Locked.get()) item.state |= STATE_SYSTEM_READONLY;
  if (!PasswordChar.get().empty()) {
    item.state |= STATE_SYSTEM_PROTECTED;
  } else {
    item.value = box_.text();
  }
}

void USTextBox::refresh() {
  redraw_enabled_ = true;
  relayout();
}

void USTextBox::apply_theme() {
  kestrelon::apply_theme(theme::kTextBox, Theme.get(), [this](const wchar_t* name, uint32_t color) {
    if (std::wstring_view(name) == BorderColor.name()) BorderColor.put(color);
  });
  if (botao_) (*botao_)->Theme.put(Theme.get());
}

void USTextBox::apply_locked() {
  box_.set_locked(Locked.get());
  repaint();
}

void USTextBox::apply_password() {
  box_.set_password(PasswordChar.get().empty() ? L'\0' : PasswordChar.get()[0]);
}

void USTextBox::apply_form() {
  const EntryBox::Form form{Multiline.get(), Alignment.get(), ScrollBars.get()};
  window() != nullptr ? box_.create(form) : box_.prepare(form);
  relayout();
}

void USTextBox::enabled_changed() {
  apply_enabled();
  over_ = over_ && Enabled.get();
  relayout();
}

void USTextBox::create_tool_tip() {
  if (ToolTipDescription.get().empty() || !user_mode()) return;
  tip_.Destroy();
  tip_.BackColor = ToolTipBackColor.get();
  tip_.Centered = ToolTipCentered.get();
  tip_.DelayTime = ToolDelayTime.get();
  tip_.ForeColor = ToolTipForeColor.get();
  tip_.set_Icon(ToolTipIcon.get());
  tip_.Style = ToolTipStyle.get();
  tip_.set_TipText(ToolTipDescription.get());
  tip_.set_Title(ToolTipTitle.get());
  tip_.VisibleTime = ToolTipVisibleTime.get();
  // The pointer rests on the edit window, hardly ever on the frame around it.
  const HWND box = box_.window().hwnd();
  if (box != nullptr) tip_.Create(box);
}

void USTextBox::destroy_tool_tip() {
  if (!ToolTipDescription.get().empty() && user_mode()) tip_.Destroy();
}

void USTextBox::tip() {
  if (!redraw_enabled_ || !user_mode()) return;
  ToolTipDescription.get().empty() ? tip_.Destroy() : create_tool_tip();
}

void USTextBox::auto_complete_ex(long flags) {
  const HWND box = box_.window().hwnd();
  if (box != nullptr) SHAutoComplete(box, static_cast<DWORD>(flags));
}

}  // namespace kestrelon
