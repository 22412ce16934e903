#include "host/frame_box.h"

#include <utility>

#include "host/form.h"

namespace kestrelon::host {
namespace {

class FrameDispatch final : public ItemDispatch {
 public:
  explicit FrameDispatch(FrameBox& box) : ItemDispatch(box, L"Frame") {
    property(
        L"Caption", [&box] { return Variant(box.caption()); },
        [&box](const VARIANT& value) { box.set_caption(to_text(value)); });
    property(
        L"BackColor", [&box] { return Variant(static_cast<long>(box.back_color())); },
        [&box](const VARIANT& value) {
          box.set_back_color(static_cast<OLE_COLOR>(to_long(value)));
        });
    property(
        L"Enabled", [&box] { return Variant(IsWindowEnabled(box.hwnd()) != FALSE); },
        [&box](const VARIANT& value) { EnableWindow(box.hwnd(), to_bool(value)); });
    property(L"hWnd",
             [&box] { return Variant(static_cast<long>(reinterpret_cast<INT_PTR>(box.hwnd()))); });
  }
};

}  // namespace

FrameBox::FrameBox(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds)
    : FormItem(form, container, std::move(name), bounds) {
  create_window(L"KestrelonFrame", {}, WS_CHILD | WS_VISIBLE, WS_EX_CONTROLPARENT, bounds,
                container.hwnd());
  set_back_color(container.back_color());
  dispatch_.attach(make_com<FrameDispatch>(*this).detach());
}

std::wstring FrameBox::caption() const {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(hwnd())) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(hwnd(), text.data(), static_cast<int>(text.size()))));
  return text;
}

void FrameBox::set_caption(const std::wstring& caption) {
  SetWindowTextW(hwnd(), caption.c_str());
  InvalidateRect(hwnd(), nullptr, FALSE);
}

void FrameBox::set_border(bool border) {
  border_ = border;
  InvalidateRect(hwnd(), nullptr, FALSE);
}

void FrameBox::place() {
  MoveWindow(hwnd(), bounds_.left, bounds_.top, width_of(bounds_), height_of(bounds_), TRUE);
}
void FrameBox::show(bool visible) {
  ShowWindow(hwnd(), visible ? SW_SHOWNA : SW_HIDE);
}
void FrameBox::enter_container() {
  SetParent(hwnd(), container().hwnd());
  place();
}

void FrameBox::on_close() {
  form().remove_items_of(*this);
  dispatch_->detach();
  destroy_window();
}

void FrameBox::paint_over(HDC hdc) {
  if (!border_) return;
  RECT client;
  GetClientRect(hwnd(), &client);
  const std::wstring text = caption();
  HGDIOBJ before = SelectObject(hdc, form().font_handle());
  SIZE size = {};
  GetTextExtentPoint32W(hdc, L"Ag", 2, &size);
  RECT edge = client;
  edge.top = text.empty() ? 0 : size.cy / 2;
  DrawEdge(hdc, &edge, EDGE_ETCHED, BF_RECT);
  if (!text.empty()) {
    RECT place = {8, 0, client.right - 8, size.cy};
    COLORREF back = 0;
    OleTranslateColor(back_color(), nullptr, &back);
    SetBkMode(hdc, OPAQUE);
    SetBkColor(hdc, back);
    SetTextColor(hdc, GetSysColor(IsWindowEnabled(hwnd()) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(hdc, (L" " + text + L" ").c_str(), -1, &place, DT_SINGLELINE | DT_END_ELLIPSIS);
  }
  SelectObject(hdc, before);
}

}  // namespace kestrelon::host
