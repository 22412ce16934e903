// Life, layout and the list of tabs.
#include "chrome/us_tab/us_tab.h"

#include <algorithm>

#include "frame/kit/access_key.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "imaging/dib_win.h"
#include "imaging/image_list/image_list_entry_win.h"
#include "imaging/picture_convert_win.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

ControlTraits tab_traits() {
  ControlTraits traits;
  traits.misc_status |= OLEMISC_SIMPLEFRAME;
  traits.initial_pixels = {320, 200};
  return traits;
}

constexpr long kTabsAtFirst = 3;
constexpr long kHighest = 32767;  // pixels
constexpr long kLargestPicture = 256;

constexpr ThemeEntry kThemeEntries[] = {
    {L"ActiveTabBackStartColor", {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}},
    {L"ActiveTabBackEndColor", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"ActiveTabForeColor", {0xB75F31, 0x917069, 0xB75F31}},
    {L"InActiveTabBackStartColor", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"InActiveTabBackEndColor", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
    {L"InActiveTabForeColor", {0x5A5A5A, 0x5A5A5A, 0x5A5A5A}},
    {L"BorderColor", {0xE2A981, 0xBEBEBE, 0xDBC9BA}},
    {L"FocusedColor", {0x70D8FE, 0x70D8FE, 0xFAE1B4}},
    {L"HoverColor", {0xBBF2FF, 0xBBF2FF, 0xFCF1DC}},
};

std::wstring usual_caption(size_t index) {
  return L"Aba " + decimal_text(static_cast<int64_t>(index) + 1);
}

ComPtr<IPictureDisp> icon_of(IDispatch* list, long position) {
  ComPtr<IPictureDisp> out;
  WindowsImage image;
  if (!copy_image_list_entry(list, missing_argument(), Variant(position), image)) return out;
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = make_icon(image);
  if (description.icon.hicon != nullptr)
    OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, out.put_void());
  return out;
}

// The lists of other libraries hold pictures.
ComPtr<IPictureDisp> foreign_picture(IDispatch* list, long position) {
  try {
    LateObject image = object_of(LateObject(ComPtr<IDispatch>(list))
                                     .get_object(L"ListImages")
                                     .call(DISPID{DISPID_VALUE}, {Variant(position)}));
    return query<IPictureDisp>(image.get_object(L"Picture").get());
  } catch (const ComError&) {
    return {};
  }
}

}  // namespace

USTab::USTab() : USTabGlue(tab_traits()) {}

void USTab::take_ambient_defaults() {
  const auto font = ambient().font();
  for (FontProperty* each : {&Font, &ActiveTabFont, &InActiveTabFont})
    each->set_default(font.get());
}

void USTab::init_properties() {
  for (FontProperty* each : {&Font, &ActiveTabFont, &InActiveTabFont}) each->reset();
  for (size_t i = 0; i < kTabsAtFirst; ++i) tabs.quietly().push_back({usual_caption(i), true, {}});
  draws_ = true;
  relayout();
}

// Reading stores only: the controls of the pages come with their own positions.
void USTab::properties_read() {
  active_.assign(std::clamp(active_.get(), 0L, std::max(tab_count() - 1, 0L)));
  last_active_ = active_.get();
  recall_far();
  draws_ = true;
  wanted_ = static_cast<int>(active_.get());
  watch();
  relayout();
}

void USTab::shown() {
  watch();
  relayout();
}

void USTab::closing() {
  watch_.stop();
  give_back();
}

void USTab::terminate() {
  draws_ = false;
  watch_.stop();
  give_back();
}

void USTab::enabled_changed() {
  apply_enabled();
  forget_input();
  redraw();
}

void USTab::apply_theme() {
  assign_theme(kThemeEntries, Theme.get());
}

void USTab::refresh() {
  draws_ = true;
  cleared_ = false;
  relayout();
}

void USTab::cls() {
  cleared_ = true;
  stale_ = true;
  invalidate();
}

void USTab::relayout() {
  layout_stale_ = true;
  std::wstring keys;
  for (const TabRecord& tab : tabs.get())
    if (tab.enabled) keys += access_key_from_start(tab.caption);
  set_access_keys(keys);
  redraw();
}

void USTab::redraw() {
  cleared_ = false;
  stale_ = true;
  if (draws_) invalidate();
}

void USTab::about_to_show() {
  if (!draws_ || !surface()) return;
  ensure_layout();
  if (!stale_) return;
  stale_ = false;
  draw();
  surface_drawn();
}

void USTab::ensure_layout() {
  if (layout_stale_ && surface()) lay_out();
}

tab_strip::Side USTab::side() const {
  return static_cast<tab_strip::Side>(std::clamp(static_cast<long>(TabPlacement.get()), 0L, 3L));
}

tab_strip::Shape USTab::shape() const {
  tab_strip::Shape out;
  out.width = width();
  out.height = height();
  out.active_height = scale()(static_cast<int>(std::clamp(ActiveTabHeight.get(), 1L, kHighest)));
  out.inactive_height =
      scale()(static_cast<int>(std::clamp(InActiveTabHeight.get(), 1L, kHighest)));
  out.side = side();
  out.equal_widths = TabStyle.get() != Tabbed_PropertyPages;
  out.control_box = UseControlBox.get();
  out.close_marks = ShowCloseMarks.get();
  out.scale = scale();
  return out;
}

HFONT USTab::font_of(int index) {
  return index == active_.get() ? ActiveTabFont.handle() : InActiveTabFont.handle();
}

SIZE USTab::text_size(int index) {
  const std::wstring& caption = at(index).caption;
  if (caption.empty()) return {};
  const SelectedFont font(surface().dc(), font_of(index));
  RECT measured{};
  DrawTextUnicode(surface().dc(), caption, -1, &measured, DT_CALCRECT | DT_SINGLELINE);
  return {measured.right, measured.bottom};
}

int USTab::picture_edge(int index) const {
  return at(index).picture
             ? scale()(static_cast<int>(std::clamp(PictureSize.get(), 0L, kLargestPicture)))
             : 0;
}

void USTab::lay_out() {
  layout_stale_ = false;
  std::vector<tab_strip::Item> items;
  for (int i = 0; i < tab_count(); ++i) {
    const SIZE text = text_size(i);
    items.push_back(tab_strip::measure(picture_edge(i), static_cast<int>(text.cx),
                                       static_cast<int>(text.cy),
                                       static_cast<int>(PictureAlignment.get()), scale()));
  }
  strip_ = tab_strip::arrange(shape(), items, static_cast<int>(active_.get()), first_, wanted_);
  first_ = strip_.first;
  wanted_ = -1;
}

void USTab::set_tab_count(long count) {
  if (count < 0) return;
  const auto wanted = static_cast<size_t>(std::min(count, kMostTabs));
  const long last = active_.get();
  const long kept = std::clamp(last, 0L, std::max(static_cast<long>(wanted) - 1, 0L));
  forget_input();
  if (kept != last) set_active(kept);
  tabs.change(L"TabCount", [&](std::vector<TabRecord>& list) {
    const size_t before = list.size();
    list.resize(wanted);
    for (size_t i = before; i < list.size(); ++i) list[i].caption = usual_caption(i);
  });
  if (kept == last) return;
  auto told = static_cast<short>(last);
  raise_tab_switch(told);
}

std::wstring USTab::tab_caption(long index) const {
  return known(index) ? at(index).caption : std::wstring();
}

void USTab::set_tab_caption(long index, std::wstring caption) {
  if (!known(index)) return;
  tabs.change(L"TabCaption", [&](std::vector<TabRecord>& list) {
    list[static_cast<size_t>(index)].caption = std::move(caption);
  });
  tell_readers(EVENT_OBJECT_NAMECHANGE, index + 1);
}

void USTab::set_tab_enabled(long index, bool enabled) {
  if (!known(index)) return;
  tabs.change(L"TabEnabled", [&](std::vector<TabRecord>& list) {
    list[static_cast<size_t>(index)].enabled = enabled;
  });
}

ComPtr<IPictureDisp> USTab::tab_picture(long index) const {
  return known(index) ? at(index).picture : nullptr;
}

void USTab::set_tab_picture(long index, IPictureDisp* picture) {
  if (!known(index)) return;
  tabs.change(L"TabPicture", [&](std::vector<TabRecord>& list) {
    list[static_cast<size_t>(index)].picture = ComPtr<IPictureDisp>(picture);
  });
}

void USTab::insert_tab(long after, std::wstring caption) {
  if (after < -1 || after >= tab_count() || tab_count() >= kMostTabs) return;
  const long place = after + 1;
  const bool moves_active = tab_count() > 0 && active_.get() >= place;
  forget_input();
  rearrange(active_.get() + (moves_active ? 1 : 0),
            [=](long page) { return page >= place ? page + 1 : page; });
  tabs.change(L"TabCount", [&](std::vector<TabRecord>& list) {
    list.insert(list.begin() + place, TabRecord{std::move(caption), true, {}});
  });
  tell_readers(EVENT_OBJECT_CREATE, place + 1);
}

void USTab::remove_tab(long index) {
  if (!known(index)) return;
  const long left = tab_count() - 1, last = active_.get();
  const long after = index < last ? last - 1 : std::min(last, std::max(left - 1, 0L));
  forget_input();
  rearrange(after, [=](long page) {
    return page == index ? std::max(left, 1L) : page > index ? page - 1 : page;
  });
  tabs.change(L"TabCount", [&](std::vector<TabRecord>& list) {
    if (static_cast<size_t>(index) < list.size()) list.erase(list.begin() + index);
  });
  tell_readers(EVENT_OBJECT_DESTROY, index + 1);
  if (index != last || left == 0) return;
  auto told = static_cast<short>(last);
  raise_tab_switch(told);
}

void USTab::copy_tab_images_from_image_list(IDispatch* list) {
  if (list == nullptr) return;
  const ComPtr<IDispatch> source(list);
  for (long i = 0; i < tab_count(); ++i) {
    ComPtr<IPictureDisp> picture = icon_of(source.get(), i + 1);
    if (!picture) picture = foreign_picture(source.get(), i + 1);
    if (picture) set_tab_picture(i, picture.get());
  }
}

void USTab::remove_tab_images(long index, bool all) {
  if (!all) return set_tab_picture(index, nullptr);
  tabs.change(L"TabPicture", [](std::vector<TabRecord>& list) {
    for (TabRecord& tab : list) tab.picture.reset();
  });
}

}  // namespace kestrelon
