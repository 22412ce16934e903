#include "grid/paint/fonts_win.h"

#include <algorithm>

#include "grid/paint/shorten.h"

namespace kestrelon::grid_paint {
namespace {

int width_of(HDC dc, const wchar_t* text, int length) {
  SIZE size = {};
  GetTextExtentPoint32W(dc, text, length, &size);
  return size.cx;
}

CellFont make_font(const LOGFONTW& logical) {
  CellFont font;
  font.handle = CreateFontIndirectW(&logical);
  const HDC dc = CreateCompatibleDC(nullptr);
  const HGDIOBJ before = SelectObject(dc, font.handle);
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc, &metrics);
  font.height = metrics.tmHeight;
  font.lined = logical.lfUnderline != 0 || logical.lfStrikeOut != 0;
  font.ellipsis_width = width_of(dc, L"...", static_cast<int>(kEllipsis.size()));
  for (wchar_t digit = L'0'; digit <= L'9'; ++digit)
    font.digit_width = std::max(font.digit_width, width_of(dc, &digit, 1));
  SelectObject(dc, before);
  DeleteDC(dc);
  return font;
}

LOGFONTW styled(LOGFONTW logical, std::wstring_view name, const FontStyle& style) {
  if (!name.empty()) {
    const size_t length = std::min<size_t>(name.size(), LF_FACESIZE - 1);
    std::copy_n(name.begin(), length, logical.lfFaceName);
    logical.lfFaceName[length] = 0;
  }
  if (style.bold) logical.lfWeight = FW_BOLD;
  if (style.italic) logical.lfItalic = TRUE;
  if (style.underline) logical.lfUnderline = TRUE;
  if (style.strikethrough) logical.lfStrikeOut = TRUE;
  return logical;
}

}  // namespace

void GridFonts::set(const LOGFONTW& cells, const LOGFONTW& header) {
  reset();
  cells_ = cells;
  header_logical_ = header;
}

const CellFont& GridFonts::header() {
  if (header_.handle == nullptr) header_ = make_font(header_logical_);
  return header_;
}

const CellFont& GridFonts::cell(std::wstring_view name, const FontStyle& style) {
  const auto fits = [&](const Entry& entry) { return entry.style == style && entry.name == name; };
  if (last_ < entries_.size() && fits(entries_[last_])) return entries_[last_].font;
  auto found = std::find_if(entries_.begin(), entries_.end(), fits);
  if (found == entries_.end()) {
    entries_.push_back({std::wstring(name), style, make_font(styled(cells_, name, style))});
    found = entries_.end() - 1;
  }
  last_ = static_cast<size_t>(found - entries_.begin());
  return found->font;
}

void GridFonts::reset() {
  for (const Entry& entry : entries_) DeleteObject(entry.font.handle);
  entries_.clear();
  if (header_.handle != nullptr) DeleteObject(header_.handle);
  header_ = {};
  last_ = 0;
}

}  // namespace kestrelon::grid_paint
