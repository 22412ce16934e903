#include "services/msgbox/kn_msgbox_win.h"

#include <algorithm>

#include "services/kn_shell_win.h"

namespace kestrelon {
namespace {

constexpr long kMostSeconds = 24 * 60 * 60;

HWND window_of(long handle) {
  return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle));
}

// Whether a box can be shown and answered at all.
bool can_show(const MsgBoxRequest& request) {
  return !request.rules.buttons.empty() && is_attended();
}

}  // namespace

std::wstring KN_MSGBOX::button_caption(short index) const {
  const auto at = static_cast<size_t>(index);
  return index >= 0 && at < values_.captions.size() ? values_.captions[at] : std::wstring();
}

void KN_MSGBOX::set_button_caption(short index, std::wstring caption) {
  if (index < 0 || index >= kMostButtons) return;
  values_.captions.resize(kMostButtons);
  values_.captions[static_cast<size_t>(index)] = std::move(caption);
}

void KN_MSGBOX::set_time_out(long seconds) {
  values_.time_out = std::clamp(seconds, 0L, kMostSeconds);
}

long KN_MSGBOX::show(std::wstring text, long buttons, std::wstring title, long owner) {
  timed_out_ = false;
  // A copy: a handler may change every property while the box is open.
  MsgBoxRequest request = values_;
  request.text = std::move(text);
  request.title = title.empty() ? program_name() : std::move(title);
  request.rules = msg_box::read_rules(buttons);
  request.theme = theme_;
  request.tick = [this](long left) {
    const Hold hold(*this);
    raise_tick(left);
  };
  if (!can_show(request)) return msg_box::kNone;
  MsgBoxWindow box(request);
  open_.push_back(&box);
  const msg_box::Answer answer = box.run(owner != 0 ? window_of(owner) : GetActiveWindow());
  std::erase(open_, &box);
  timed_out_ = box.timed_out();
  values_.checked = box.checked();
  return answer;
}

void KN_MSGBOX::close_box(long result) {
  if (!open_.empty()) open_.back()->close(static_cast<msg_box::Answer>(result));
}

long show_message(HWND owner, const std::wstring& text, long buttons, const std::wstring& title) {
  MsgBoxRequest request;
  request.text = text;
  request.title = title.empty() ? program_name() : title;
  request.rules = msg_box::read_rules(static_cast<int32_t>(buttons));
  if (!can_show(request)) return msg_box::kNone;
  request.theme = theme_of_owner(owner);
  MsgBoxWindow box(request);
  return box.run(owner);
}

}  // namespace kestrelon
