#include "frame/tooltip.h"

#include "frame/translate_color.h"

namespace kestrelon {
namespace {

std::string to_ansi(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  const int bytes =
      WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(bytes > 0 ? bytes : 0), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), length, out.data(), bytes, nullptr, nullptr);
  return out;
}

// Tip windows take titles below this length and refuse longer ones.
constexpr size_t kLongestTitle = 99;

}  // namespace

CTooltip::CTooltip() {
  InitCommonControls();
}

bool CTooltip::Create(HWND parent) {
  return Create(parent, nullptr);
}

bool CTooltip::Create(HWND parent, const RECT* area) {
  Destroy();
  parent_ = parent;
  area_ = area != nullptr ? *area : RECT{};
  DWORD style = TTS_ALWAYSTIP | TTS_NOPREFIX;
  if (Style == ToolTip_Balloon) style |= TTS_BALLOON;
  window_ = CreateWindowExA(0, TOOLTIPS_CLASSA, nullptr, style, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr, nullptr, nullptr);
  if (window_ == nullptr) return false;
  tool_flags_ = area != nullptr ? TTF_SUBCLASS : TTF_SUBCLASS | TTF_IDISHWND;
  if (Centered) tool_flags_ |= TTF_CENTERTIP;
  TOOLINFOA info = tool();
  SendMessageA(window_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&info));
  if (!title_.empty() || icon_ != No_Icon) send_title();
  // 0 stands for the system's colour, so black cannot be asked for.
  if (ForeColor != 0) SendMessageA(window_, TTM_SETTIPTEXTCOLOR, TranslateColor(ForeColor), 0);
  if (BackColor != 0) SendMessageA(window_, TTM_SETTIPBKCOLOR, TranslateColor(BackColor), 0);
  SendMessageA(window_, TTM_SETDELAYTIME, TTDT_AUTOPOP, VisibleTime);
  SendMessageA(window_, TTM_SETDELAYTIME, TTDT_INITIAL, DelayTime);
  return true;
}

void CTooltip::Destroy() {
  const HWND window = std::exchange(window_, nullptr);
  if (window != nullptr && IsWindow(window)) DestroyWindow(window);
}

TOOLINFOA CTooltip::tool() const {
  narrow_text_ = to_ansi(text_);
  TOOLINFOA info{};
  info.cbSize = kToolInfoBytes;
  info.uFlags = tool_flags_;
  info.hwnd = parent_;
  info.uId = reinterpret_cast<UINT_PTR>(parent_);
  info.rect = area_;
  info.lpszText = narrow_text_.data();
  return info;
}

void CTooltip::send_title() {
  const std::string title = to_ansi(title_.substr(0, kLongestTitle));
  SendMessageA(window_, TTM_SETTITLEA, static_cast<WPARAM>(icon_),
               reinterpret_cast<LPARAM>(title.c_str()));
}

void CTooltip::update_title() {
  if (window_ != nullptr && icon_ != No_Icon && !title_.empty()) send_title();
}

void CTooltip::set_Icon(ENUM_TOOLTIP_ICON icon) {
  icon_ = icon;
  update_title();
}

void CTooltip::set_Title(std::wstring title) {
  title_ = std::move(title);
  update_title();
}

void CTooltip::set_TipText(std::wstring text) {
  text_ = std::move(text);
  if (window_ == nullptr) return;
  TOOLINFOA info = tool();
  SendMessageA(window_, TTM_UPDATETIPTEXTA, 0, reinterpret_cast<LPARAM>(&info));
}

void CTooltip::show_at(POINT point) {
  if (window_ == nullptr) return;
  TOOLINFOA info = tool();
  SendMessageA(window_, TTM_TRACKPOSITION, 0,
               MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
  SendMessageA(window_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&info));
}

}  // namespace kestrelon
