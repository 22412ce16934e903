// Messages of the edit window: keys and characters of a formatted field go through the typing
// rules, those of a plain one through its filters and then to the system.
#include "controls/us_text_box/entry_box.h"
//
#include <imm.h>

#include "services/typing/text_entry.h"

namespace kestrelon {
namespace {

// Control characters as Ctrl and a letter make them.
constexpr wchar_t kSelectAll = 0x01, kCopy = 0x03, kBackspace = 0x08, kPaste = 0x16, kCut = 0x18,
                  kRedo = 0x19, kUndo = 0x1A, kWordBack = 0x7F;

bool held(int key) {
  return GetKeyState(key) < 0;
}

std::optional<EntryMove> move_of(WPARAM key, bool control) {
  switch (key) {
    case VK_LEFT:
      return control ? EntryMove::kWordLeft : EntryMove::kLeft;
    case VK_RIGHT:
      return control ? EntryMove::kWordRight : EntryMove::kRight;
    case VK_HOME:
      return EntryMove::kHome;
    case VK_END:
      return EntryMove::kEnd;
    default:
      return {};
  }
}

}  // namespace

void EntryBox::edit_changed(ChildEdit& box) {
  if (writing_ || &box != &window()) return;
  std::wstring text = box.text();
  if (text == state_.text) return;
  state_.text = std::move(text);
  state();
  owner_.entry_changed();
}

bool EntryBox::edit_message(ChildEdit& box, UINT message, WPARAM wparam, LPARAM lparam,
                            LRESULT& result) {
  if (writing_ || &box != &window()) return false;
  result = 0;
  switch (message) {
    case WM_KEYDOWN:
      return owner_.entry_key(wparam) || key_down(wparam);
    case WM_CHAR:
      return character(static_cast<wchar_t>(wparam));
    case WM_PASTE:
      paste();
      return true;
    case WM_CUT:
      if (formatted()) cut();
      return formatted();
    case WM_CLEAR:
      if (!formatted()) return false;
      if (!locked_ && state().has_selection())
        edit(entry_erased_forward(state(), settings_), EntryHistory::Kind::kOther);
      return true;
    case WM_UNDO:
    case EM_UNDO:
      if (!formatted()) return false;
      undo(false);
      result = TRUE;
      return true;
    case EM_CANUNDO:
      if (!formatted()) return false;
      result = history_.can_undo() && !locked_;
      return true;
    case EM_REPLACESEL:
      if (!formatted() || lparam == 0) return false;
      insert(reinterpret_cast<const wchar_t*>(lparam));
      return true;
    case WM_IME_COMPOSITION:
      return composition(lparam);
    case WM_LBUTTONUP:
      if (formatted()) {
        history_.end_step();
        const EntryState now = state(), settled = entry_settled(now, settings_);
        if (settled != now) write(settled);
      }
      return false;
    case WM_PAINT:
      return paint(box);
    default:
      return false;
  }
}

bool EntryBox::key_down(WPARAM key) {
  const bool shift = held(VK_SHIFT), control = held(VK_CONTROL);
  if ((key == VK_UP || key == VK_DOWN) && !form_.multiline && !shift && !control && !locked_ &&
      owner_.entry_spin(key == VK_UP ? 1 : -1))
    return true;
  if (key == VK_INSERT && shift && !control) {
    paste();
    return true;
  }
  return formatted() && !held(VK_MENU) && formatted_key(key, shift, control);
}

bool EntryBox::formatted_key(WPARAM key, bool shift, bool control) {
  if (const std::optional<EntryMove> move = move_of(key, control)) {
    const EntryState next = entry_moved(state(), *move, shift, settings_);
    history_.end_step();
    if (next != state()) write(next);
    return true;
  }
  if (key != VK_DELETE) return false;
  if (locked_) return true;
  if (shift) {
    cut();
    return true;
  }
  EntryState now = state();
  const bool selected = now.has_selection();
  if (control && !selected) now = entry_moved(now, EntryMove::kEnd, true, settings_);
  edit(entry_erased_forward(now, settings_),
       selected || control ? EntryHistory::Kind::kOther : EntryHistory::Kind::kErasing);
  return true;
}

bool EntryBox::character(wchar_t c) {
  if (c == kSelectAll) {
    select(0, state().text.size());
    return true;
  }
  if (c == kPaste) {
    paste();
    return true;
  }
  if (formatted()) return formatted_character(c);
  if (c < L' ' || c == kWordBack)
    return c == kWordBack;  // the system's, but for the square it types
  const std::wstring taken = text_entry::filtered({&c, 1}, settings_);
  if (taken.size() == 1 && taken[0] == c) return false;
  if (!locked_ && !taken.empty()) insert(taken);
  return true;
}

bool EntryBox::formatted_character(wchar_t c) {
  if (c == kCopy) return false;
  if (locked_) return true;
  EntryState now = state();
  const bool selected = now.has_selection();
  switch (c) {
    case kCut:
      cut();
      break;
    case kUndo:
    case kRedo:
      undo(c == kRedo);
      break;
    case kWordBack:
      if (!selected) now = entry_moved(now, EntryMove::kHome, true, settings_);
      edit(entry_erased_backward(now, settings_), EntryHistory::Kind::kOther);
      break;
    case kBackspace:
      edit(entry_erased_backward(now, settings_),
           selected ? EntryHistory::Kind::kOther : EntryHistory::Kind::kErasing);
      break;
    default:
      if (c < L' ') return false;
      edit(entry_typed(now, c, settings_),
           selected ? EntryHistory::Kind::kOther : EntryHistory::Kind::kTyping);
  }
  return true;
}

// A finished composition comes as a whole and is filtered like pasted text.
bool EntryBox::composition(LPARAM flags) {
  const bool plain = !formatted() && !settings_.number_only && !settings_.pix_key &&
                     settings_.text_case == TextCase::kNormal;
  if (plain || (flags & GCS_RESULTSTR) == 0) return false;
  const HWND box = window().hwnd();
  const HIMC context = ImmGetContext(box);
  if (context == nullptr) return false;
  const LONG bytes = ImmGetCompositionStringW(context, GCS_RESULTSTR, nullptr, 0);
  std::wstring text(bytes > 0 ? static_cast<size_t>(bytes) / sizeof(wchar_t) : 0, L'\0');
  if (bytes > 0)
    ImmGetCompositionStringW(context, GCS_RESULTSTR, text.data(), static_cast<DWORD>(bytes));
  ImmReleaseContext(box, context);
  for (const wchar_t c : text) {
    if (!IsWindow(box)) return true;
    formatted() ? void(formatted_character(c)) : insert({&c, 1});
  }
  return true;
}

// An empty box shows its hint; the system's own would need a newer library in the host.
bool EntryBox::paint(ChildEdit& box) {
  if (!state_.text.empty()) return false;
  RECT area{};
  GetClientRect(box.hwnd(), &area);
  PAINTSTRUCT paint;
  const bool hint = owner_.entry_hint(nullptr, area);
  if (!hint) return false;
  const HDC dc = BeginPaint(box.hwnd(), &paint);
  if (const HBRUSH brush = box.colors(dc)) FillRect(dc, &area, brush);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(box.hwnd(), WM_GETFONT, 0, 0));
  const HGDIOBJ displaced = font != nullptr ? SelectObject(dc, font) : nullptr;
  owner_.entry_hint(dc, area);
  if (displaced != nullptr) SelectObject(dc, displaced);
  EndPaint(box.hwnd(), &paint);
  return true;
}

}  // namespace kestrelon
