#include "frame/pages/theme_page.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>

#include "frame/pages/page_ids.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kTheme = 101, kColors = 102, kPreview = 103, kChange = 104;
constexpr int kWidth = 340, kHeight = 230;
constexpr int kMargin = 8;

// The interface that an object's members are described in.
IID described_interface(IDispatch* object) {
  ComPtr<ITypeInfo> info;
  IID out{};
  TYPEATTR* attributes = nullptr;
  if (SUCCEEDED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put())) &&
      SUCCEEDED(info->GetTypeAttr(&attributes))) {
    out = attributes->guid;
    info->ReleaseTypeAttr(attributes);
  }
  return out;
}

std::wstring member_name(IDispatch* object, DISPID id) {
  ComPtr<ITypeInfo> info;
  Bstr name;
  UINT count = 0;
  if (SUCCEEDED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put())))
    info->GetNames(id, name.put(), 1, &count);
  return std::wstring(name.view());
}

}  // namespace

ThemePage::ThemePage() : PropertyPage(L"Tema e cores", {kWidth, kHeight}) {}

const ClassInfo& ThemePage::static_class_info() {
  static const ClassInfo kInfo{L"ppgTheme", kThemePage, IID_NULL, nullptr};
  return kInfo;
}

void ThemePage::build() {
  constexpr int kHalf = (kWidth - 3 * kMargin) / 2;
  constexpr int kRight = kHalf + 2 * kMargin;
  add(WC_STATICW, L"&Tema:", 0, -1, kMargin, kMargin, kHalf, 16);
  theme_box_ = add(WC_COMBOBOXW, L"", CBS_DROPDOWNLIST | WS_TABSTOP | WS_VSCROLL, kTheme, kMargin,
                   26, kHalf, 120);
  add(WC_STATICW, L"C&ores:", 0, -1, kRight, kMargin, kHalf, 16);
  color_list_ = add(WC_LISTBOXW, L"",
                    LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT |
                        WS_TABSTOP | WS_VSCROLL | WS_BORDER,
                    kColors, kRight, 26, kHalf, 164);
  add(WC_BUTTONW, L"&Alterar cor...", WS_TABSTOP, kChange, kRight, 198, kHalf, 24);
  add(WC_STATICW, L"Amostra:", 0, -1, kMargin, 58, kHalf, 16);
  preview_box_ = add(WC_STATICW, L"", SS_OWNERDRAW, kPreview, kMargin, 76, kHalf, 146);
}

void ThemePage::show_objects() {
  IDispatch* const first = objects().front().get();
  preview_.copy(first);
  const DISPID theme = id_of(first, L"Theme");
  themes_ = property_choices(described_interface(first), theme);
  Variant now;
  if (!get_by_id(first, theme, VT_I4, now)) V_I4(&now) = -1;
  SendMessageW(theme_box_, CB_RESETCONTENT, 0, 0);
  for (size_t i = 0; i < themes_.size(); ++i) {
    SendMessageW(theme_box_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(themes_[i].name.c_str()));
    if (themes_[i].value == V_I4(&now)) SendMessageW(theme_box_, CB_SETCURSEL, i, 0);
  }
  read_colors();
  show_colors();
}

// The colours are those of the copy: they show what a theme just chosen would make of them.
void ThemePage::read_colors() {
  colors_.clear();
  IDispatch* const source = preview_.dispatch();
  if (source == nullptr) return;
  for (const BrowsedProperty& property : browsed_properties(described_interface(source))) {
    Variant value;
    if (property.type == L"OLE_COLOR" && get_by_id(source, property.id, VT_I4, value))
      colors_.push_back(
          {property.id, member_name(source, property.id), static_cast<OLE_COLOR>(V_I4(&value))});
  }
  std::sort(colors_.begin(), colors_.end(),
            [](const Color& a, const Color& b) { return a.name < b.name; });
}

void ThemePage::show_colors() {
  const LRESULT selected = SendMessageW(color_list_, LB_GETCURSEL, 0, 0);
  SendMessageW(color_list_, LB_RESETCONTENT, 0, 0);
  for (const Color& color : colors_)
    SendMessageW(color_list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(color.name.c_str()));
  SendMessageW(color_list_, LB_SETCURSEL, static_cast<WPARAM>(selected < 0 ? 0 : selected), 0);
  redraw_preview();
}

bool ThemePage::write_objects() {
  const LRESULT chosen = SendMessageW(theme_box_, CB_GETCURSEL, 0, 0);
  for (const auto& object : objects()) {
    const DISPID theme = id_of(object.get(), L"Theme");
    Variant now;
    const bool other_theme = chosen >= 0 && get_by_id(object.get(), theme, VT_I4, now) &&
                             V_I4(&now) != themes_[static_cast<size_t>(chosen)].value;
    if (other_theme)
      put_by_id(object.get(), theme, Variant(themes_[static_cast<size_t>(chosen)].value));
    for (const Color& color : colors_) {
      // Other kinds of controls may be selected too; a colour goes by its name.
      const DISPID id = id_of(object.get(), color.name.c_str());
      Variant old;
      if (id != DISPID_UNKNOWN && get_by_id(object.get(), id, VT_I4, old) &&
          static_cast<OLE_COLOR>(V_I4(&old)) != color.value)
        put_by_id(object.get(), id, Variant(static_cast<long>(color.value)));
    }
  }
  return true;
}

void ThemePage::command(int id, UINT code) {
  if (id == kTheme && code == CBN_SELCHANGE) theme_chosen();
  if ((id == kColors && code == LBN_DBLCLK) || (id == kChange && code == BN_CLICKED))
    choose_color();
}

void ThemePage::theme_chosen() {
  const LRESULT chosen = SendMessageW(theme_box_, CB_GETCURSEL, 0, 0);
  IDispatch* const copy = preview_.dispatch();
  if (chosen < 0 || copy == nullptr) return;
  put_by_id(copy, id_of(copy, L"Theme"), Variant(themes_[static_cast<size_t>(chosen)].value));
  read_colors();
  show_colors();
  mark_changed();
}

void ThemePage::choose_color() {
  const LRESULT at = SendMessageW(color_list_, LB_GETCURSEL, 0, 0);
  if (at < 0 || static_cast<size_t>(at) >= colors_.size()) return;
  static COLORREF custom[16];  // the user's own colours, for the life of the process
  CHOOSECOLORW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = window();
  dialog.rgbResult = TranslateColor(colors_[static_cast<size_t>(at)].value);
  dialog.lpCustColors = custom;
  dialog.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorW(&dialog) || static_cast<size_t>(at) >= colors_.size()) return;
  Color& color = colors_[static_cast<size_t>(at)];
  color.value = dialog.rgbResult;
  put_by_id(preview_.dispatch(), color.id, Variant(static_cast<long>(color.value)));
  show_colors();
  mark_changed();
}

void ThemePage::redraw_preview() {
  if (preview_box_ != nullptr) InvalidateRect(preview_box_, nullptr, TRUE);
}

bool ThemePage::draw_item(const DRAWITEMSTRUCT& item) {
  if (item.CtlID == kColors) {
    draw_color(item);
    return true;
  }
  if (item.CtlID != kPreview) return false;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_WINDOW));
  FrameRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNSHADOW));
  RECT inside = item.rcItem;
  InflateRect(&inside, -kMargin, -kMargin);
  preview_.draw(item.hDC, inside);
  return true;
}

void ThemePage::draw_color(const DRAWITEMSTRUCT& item) const {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (item.itemID >= colors_.size()) return;
  const Color& color = colors_[item.itemID];
  const int gap = scale()(2);
  RECT swatch = item.rcItem;
  InflateRect(&swatch, -gap, -gap);
  swatch.right = swatch.left + scale()(20);
  const HBRUSH brush = CreateSolidBrush(TranslateColor(color.value));
  FillRect(item.hDC, &swatch, brush);
  DeleteObject(brush);
  FrameRect(item.hDC, &swatch, GetSysColorBrush(COLOR_WINDOWFRAME));
  RECT text = item.rcItem;
  text.left = swatch.right + scale()(5);
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  DrawTextW(item.hDC, color.name.c_str(), -1, &text,
            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

void ThemePage::edit_property(DISPID id) {
  for (size_t i = 0; i < colors_.size(); ++i)
    if (colors_[i].id == id) SendMessageW(color_list_, LB_SETCURSEL, i, 0);
  SetFocus(objects().empty() || id == id_of(objects().front().get(), L"Theme") ? theme_box_
                                                                               : color_list_);
}

}  // namespace kestrelon
