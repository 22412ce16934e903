// Mouse, keys, focus and changes: from the windows inside to the host's events.
#include "base/text.h"
#include "controls/us_text_box/us_text_box.h"
#include "frame/input_state.h"
#include "services/late_object_win.h"
#include "services/typing/mask_entry.h"

namespace kestrelon {
namespace {

constexpr UINT kHoverLook = 50;                       // ms between looks after the pointer
constexpr UINT kFirstRepeat = 400, kNextRepeat = 60;  // ms of a held spin button

CalendarDate today() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay};
}

}  // namespace

void USTextBox::mouse_down(short button, short shift, float x, float y) {
  select_on_release_ = select_on_release_ && button == kLeftButton;
  const TextBoxPart part = part_at(places_, static_cast<int>(x), static_cast<int>(y));
  const short pressed = button;
  raise_mouse_down(button, shift, x, y);
  if (pressed == kLeftButton && part != TextBoxPart::kNone) part_pressed(part);
}

void USTextBox::mouse_move(short button, short shift, float x, float y) {
  if (user_mode()) enter_hover();
  raise_mouse_move(button, shift, x, y);
}

void USTextBox::mouse_up(short button, short shift, float x, float y) {
  spin_watch_.stop();
  const bool selects = select_on_release_;
  select_on_release_ = false;
  const EntryState now = box_.state();
  if (selects && !now.has_selection()) select_all_soon();
  raise_mouse_up(button, shift, x, y);
}

// The edit window puts its caret where it was pressed; the selection comes after that.
void USTextBox::select_all_soon() {
  soon_.start(1, [this] {
    soon_.stop();
    box_.select(0, box_.text().size());
  });
}

// Edit window and button count as the control, and neither tells when the pointer leaves.
void USTextBox::enter_hover() {
  if (over_ || !Enabled.get()) return;
  over_ = true;
  relayout();
  hover_watch_.start(kHoverLook, [this] { look_after_hover(); });
}

void USTextBox::look_after_hover() {
  POINT point{};
  GetCursorPos(&point);
  if (holds(WindowFromPoint(point))) return;
  hover_watch_.stop();
  over_ = false;
  relayout();
}

void USTextBox::part_pressed(TextBoxPart part) {
  if (Locked.get() || !Enabled.get()) return;
  if (part == TextBoxPart::kClear) {
    if (places_.clear.empty() || entry_is_empty(box_.text(), box_.rules())) return;
    EntryState none;
    if (box_.rules().kind == EntryKind::kMask) none = mask_entry::empty(box_.rules());
    return box_.edit(none, EntryHistory::Kind::kOther);
  }
  const int step = part == TextBoxPart::kUp ? 1 : -1;
  entry_spin(step);
  spin_watch_.start(kFirstRepeat, [this, step] {
    if (GetKeyState(VK_LBUTTON) >= 0) return spin_watch_.stop();
    entry_spin(step);
    if (!spin_repeats_) {
      spin_repeats_ = true;
      repeat_spin(step);
    }
  });
  spin_repeats_ = false;
}

void USTextBox::repeat_spin(int step) {
  spin_watch_.start(kNextRepeat, [this, step] {
    GetAsyncKeyState(VK_LBUTTON) < 0 ? void(entry_spin(step)) : spin_watch_.stop();
  });
}

bool USTextBox::entry_spin(int step) {
  if (!SpinButtons.get() || box_.rules().kind == EntryKind::kText) return false;
  box_.edit(entry_spun(box_.state(), step, today(), box_.rules(), leaving_rules()),
            EntryHistory::Kind::kOther);
  return true;
}

void USTextBox::key_down(short& key, short& shift) {
  raise_key_down(key, shift);
  text_events_.Texto_Verificar(key);
}

bool USTextBox::wants_key(int key, short shift) const {
  if (key == VK_RETURN) return suggestions_.has_choice() || (Multiline.get() && !Locked.get());
  if (key == VK_ESCAPE) return suggestions_.is_open();
  return ControlFrame::wants_key(key, shift);
}

bool USTextBox::entry_key(WPARAM key) {
  return suggestions_.key(static_cast<int>(key));
}

void USTextBox::got_focus() {
  if (AutoSelect.get()) {
    box_.select(0, box_.text().size());
    select_on_release_ = GetKeyState(VK_LBUTTON) < 0;
  } else if (!Multiline.get()) {
    const EntryState now = box_.state(), settled = entry_settled(now, box_.rules());
    if (!(settled == now)) box_.select(settled.anchor, settled.caret);
  }
}

void USTextBox::lost_focus() {
  select_on_release_ = false;
  spin_watch_.stop();
  suggestions_.close();
  if (!leaving_) leave();
}

// What is left behind takes its form; a text that may not stay is told.
void USTextBox::leave() {
  leaving_ = true;
  const LeavingRules rules = leaving_rules();
  if (!Locked.get() && !Multiline.get()) {
    const std::wstring left = entry_left(box_.text(), box_.rules(), rules);
    if (left != box_.text()) {
      by_code_ = true;
      box_.show(state_at(left, left.size()));
      by_code_ = false;
    }
  }
  keep_selection();
  const std::wstring_view fault =
      ValidateOnExit.get() ? entry_fault(box_.text(), box_.rules(), rules) : std::wstring_view();
  const bool failed = !fault.empty();
  if (failed != failed_) {
    failed_ = failed;
    repaint();
  }
  if (failed) {
    Bstr text(box_.text()), reason{std::wstring(fault)};
    BSTR text_argument = text.detach(), reason_argument = reason.detach();
    VARIANT_BOOL cancel = VARIANT_FALSE;
    raise_validation_failed(text_argument, reason_argument, cancel);
    SysFreeString(text_argument);
    SysFreeString(reason_argument);
    if (cancel != VARIANT_FALSE) return_soon();
  }
  leaving_ = false;
}

// Within the message that takes the focus away it cannot be taken back.
void USTextBox::return_soon() {
  soon_.start(1, [this] {
    soon_.stop();
    const HWND box = box_.window().hwnd();
    if (box != nullptr && IsWindowVisible(box)) SetFocus(box);
  });
}

void USTextBox::entry_changed() {
  const bool by_code = by_code_;
  Value.assign(box_.text());
  failed_ = failed_ && by_code;
  property_changed(L"Text");
  look_again_after_change();
  raise_change();
  if (by_code || window() == nullptr) return;
  complete();
}

void USTextBox::look_again_after_change() {
  const bool empty = box_.text().empty();
  if (empty != was_empty_) {
    const HWND box = box_.window().hwnd();
    if (box != nullptr) InvalidateRect(box, nullptr, TRUE);
  }
  const bool lacks = lacks_required();
  const bool again = lacks != lacked_required_ || failed_ != showed_failure_ ||
                     (ClearButton.get() && empty != was_empty_);
  was_empty_ = empty;
  if (again) repaint();
}

void USTextBox::drag(Drag& drag) {
  const bool takes = !Locked.get() && Enabled.get();
  if (!takes) drag.effect = DROPEFFECT_NONE;
  if (takes && drag.stage != Drag::Stage::kDrop) drag.effect &= DROPEFFECT_COPY | DROPEFFECT_MOVE;
  if (!takes || drag.stage != Drag::Stage::kDrop || !drag.data) return;
  LateObject data{drag.data};
  const Variant text = data.call(L"GetData", {Variant(static_cast<short>(CF_UNICODETEXT))});
  if (V_VT(&text) != VT_BSTR) {
    drag.effect = DROPEFFECT_NONE;
    return;
  }
  drag.effect = settle_effect(static_cast<DWORD>(drag.effect), DROPEFFECT_COPY | DROPEFFECT_MOVE);
  drop_text(to_wstring(V_BSTR(&text)), POINT{static_cast<LONG>(drag.x), static_cast<LONG>(drag.y)});
}

void USTextBox::drop_text(const std::wstring& text, POINT point) {
  const HWND box = box_.window().hwnd();
  if (box == nullptr) return;
  MapWindowPoints(window(), box, &point, 1);
  const LRESULT at = SendMessageW(box, EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y));
  const size_t position = std::min<size_t>(LOWORD(at), box_.text().size());
  const EntryState now = box_.state();
  if (position < now.begin() || position > now.end()) {
    const EntryState target = entry_settled(state_at(now.text, position), box_.rules());
    box_.select(target.anchor, target.caret);
  }
  box_.insert(text);
}

}  // namespace kestrelon
