#include "controls/us_text_box/entry_box.h"

#include <algorithm>

#include "services/typing/text_entry.h"

namespace kestrelon {
namespace {

// Where two texts begin and end alike.
struct Difference {
  size_t begin, old_end, new_end;
};

Difference difference(std::wstring_view a, std::wstring_view b) {
  const size_t shorter = std::min(a.size(), b.size());
  size_t front = 0;
  while (front < shorter && a[front] == b[front]) ++front;
  size_t back = 0;
  while (back < shorter - front && a[a.size() - 1 - back] == b[b.size() - 1 - back]) ++back;
  return {front, a.size() - back, b.size() - back};
}

DWORD style_of(const EntryBox::Form& form) {
  DWORD style = form.alignment == 1 ? ES_RIGHT : form.alignment == 2 ? ES_CENTER : ES_LEFT;
  if (!form.multiline) return style | ES_AUTOHSCROLL;
  style |= ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
  if ((form.scroll_bars & 1) != 0) style |= WS_HSCROLL | ES_AUTOHSCROLL;
  if ((form.scroll_bars & 2) != 0) style |= WS_VSCROLL;
  return style;
}

void send_selection(HWND window, size_t anchor, size_t caret) {
  SendMessageW(window, EM_SETSEL, anchor, static_cast<LPARAM>(caret));
}

}  // namespace

void EntryBox::set_rules(EntrySettings settings) {
  settings_ = std::move(settings);
  settings_.multiline = form_.multiline;
  history_.clear();
  apply_style();
}

void EntryBox::set_locked(bool locked) {
  locked_ = locked;
  window().set_read_only(locked);
}

void EntryBox::set_password(wchar_t c) {
  password_ = c;
  apply_style();
}

void EntryBox::apply_style() {
  ChildEdit& box = window();
  if (box.hwnd() == nullptr) return;
  box.set_read_only(locked_);
  // A formatted field keeps its own length; the system's limit would cut what it writes.
  box.set_limit(formatted() ? 0 : static_cast<int>(settings_.max_length));
  if (form_.multiline) return;
  SendMessageW(box.hwnd(), EM_SETPASSWORDCHAR, password_, 0);
  InvalidateRect(box.hwnd(), nullptr, TRUE);
}

void EntryBox::create(const Form& form) {
  if (window().hwnd() != nullptr && form == form_) return;
  const EntryState kept = state();
  RECT place{};
  const bool focused = window().has_focus();
  ChildEdit& former = window();
  if (former.hwnd() != nullptr) {
    GetWindowRect(former.hwnd(), &place);
    MapWindowPoints(nullptr, GetParent(former.hwnd()), reinterpret_cast<POINT*>(&place), 2);
  }
  const auto font = former.hwnd() != nullptr ? SendMessageW(former.hwnd(), WM_GETFONT, 0, 0) : 0;
  form_ = form;
  settings_.multiline = form.multiline;
  ChildEdit& box = window();
  writing_ = true;
  const bool made = box.create(style_of(form), place);
  if (made) {
    box.set_font(reinterpret_cast<HFONT>(font));
    apply_style();
    state_ = {};
    write(kept);
    box.show(true);
    if (focused) SetFocus(box.hwnd());
  }
  if (&former != &box) former.destroy();
  writing_ = false;
  state_ = kept;
}

void EntryBox::prepare(const Form& form) {
  form_ = form;
  settings_.multiline = form.multiline;
}

EntryState EntryBox::state() {
  ChildEdit& box = window();
  if (box.hwnd() == nullptr) return state_;
  const TextRange range = box.selection();
  const auto start = static_cast<size_t>(range.start), end = static_cast<size_t>(range.end);
  if (state_.begin() != start || state_.end() != end) {
    state_.anchor = start;
    state_.caret = end;
  }
  return state_;
}

void EntryBox::write(const EntryState& next) {
  const HWND box = window().hwnd();
  const std::wstring before = std::move(state_.text);
  state_ = next;
  if (box == nullptr) return;
  const bool was_writing = writing_;
  writing_ = true;
  if (before != next.text) {
    const Difference part = difference(before, next.text);
    const std::wstring fresh = next.text.substr(part.begin, part.new_end - part.begin);
    if (fresh.size() > 64 || form_.multiline) {
      SetWindowTextW(box, next.text.c_str());
    } else {
      send_selection(box, part.begin, part.old_end);
      SendMessageW(box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(fresh.c_str()));
      if (static_cast<size_t>(GetWindowTextLengthW(box)) != next.text.size())
        SetWindowTextW(box, next.text.c_str());
    }
  }
  send_selection(box, next.anchor, next.caret);
  SendMessageW(box, EM_SCROLLCARET, 0, 0);
  writing_ = was_writing;
}

void EntryBox::show(const EntryState& state) {
  const bool changed = state.text != state_.text;
  history_.clear();
  write(state);
  if (changed) owner_.entry_changed();
}

void EntryBox::adopt(const EntryState& state) {
  history_.clear();
  write(state);
}

void EntryBox::edit(const EntryState& next, EntryHistory::Kind kind) {
  const EntryState before = state();
  if (next == before) return;
  history_.changed(before, next, kind);
  write(next);
  if (before.text != next.text) owner_.entry_changed();
}

void EntryBox::select(size_t anchor, size_t caret) {
  EntryState next = state();
  next.anchor = std::min(anchor, next.text.size());
  next.caret = std::min(caret, next.text.size());
  history_.end_step();
  write(next);
}

void EntryBox::insert(std::wstring_view text) {
  if (locked_) return;
  if (formatted()) return edit(entry_pasted(state(), text, settings_), EntryHistory::Kind::kOther);
  // A plain box keeps the system's own undo.
  const EntryState now = state();
  const std::wstring taken = text_entry::filtered(text, settings_);
  const size_t room = text_entry::room(now.text.size(), now.end() - now.begin(), settings_);
  const std::wstring_view piece = text_entry::fitting(taken, room);
  if (piece.empty()) return;
  if (window().hwnd() != nullptr) return window().replace_selection(piece);
  show(entry_pasted(now, piece, settings_));
}

void EntryBox::undo(bool again) {
  if (locked_) return;
  const EntryState before = state();
  const EntryState next = again ? history_.redo(before) : history_.undo(before);
  if (next == before) return;
  write(next);
  if (before.text != next.text) owner_.entry_changed();
}

void EntryBox::cut() {
  if (locked_ || password_ != 0 || !state().has_selection()) return;
  SendMessageW(window().hwnd(), WM_COPY, 0, 0);
  edit(entry_erased_forward(state(), settings_), EntryHistory::Kind::kOther);
}

void EntryBox::paste() {
  const std::wstring text = clipboard_text(window().hwnd());
  if (!text.empty()) insert(text);
}

}  // namespace kestrelon
