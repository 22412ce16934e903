// Life, height, theme and the way from the model to the surface.
#include "chrome/us_ribbon/us_ribbon.h"

#include "chrome/us_ribbon/ribbon_block.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {

using namespace ribbon;

namespace {

ControlTraits ribbon_traits() {
  ControlTraits traits;
  traits.initial_pixels = {480, measure::kWhole};
  return traits;
}

constexpr ThemeEntry kThemeColors[] = {
    {L"ForeColorCat", {0xB86A3E, 0x6B5F57, 0xB86A3E}},
    {L"ForeColorButton", {0x8B4215, 0x5C534C, 0x8B4215}},
    {L"ForeColorTabNormal", {0x8B4215, 0x5C534C, 0x8B4215}},
    {L"ForeColorTabSelected", {0x8B4215, 0x5C534C, 0x8B4215}},
};

// Measures in the ribbon's font; a text is measured once as long as the font stays.
class Ruler final : public TextRuler {
 public:
  Ruler(HDC dc, HFONT font, std::map<std::wstring, int>& known)
      : dc_(dc), font_(dc, font), known_(known) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    line_height_ = static_cast<int>(metrics.tmHeight);
  }
  int width(std::wstring_view caption) override {
    if (caption.empty()) return 0;
    const auto [place, fresh] = known_.try_emplace(std::wstring(caption), 0);
    if (fresh) {
      RECT measured{};
      DrawTextUnicode(dc_, caption, static_cast<int>(caption.size()), &measured,
                      DT_SINGLELINE | DT_CALCRECT);
      place->second = static_cast<int>(measured.right);
    }
    return place->second;
  }
  int line_height() override { return line_height_; }

 private:
  HDC dc_;
  SelectedFont font_;
  std::map<std::wstring, int>& known_;
  int line_height_ = 0;
};

}  // namespace

USRibbon::USRibbon() : USRibbonGlue(ribbon_traits()) {}

HDC USRibbon::surface_dc() const {
  return const_cast<USRibbon*>(this)->surface().dc();
}

void USRibbon::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
}

void USRibbon::properties_read() {
  limit_changed();
  images_.set_key(ImageListKey.get());
  images_.set_form_source(ImageListName.get());
  resized();
}

void USRibbon::ambient_changed(DISPID) {
  draw();
}

void USRibbon::terminate() {
  left_alone_ = true;
  tip_.Destroy();
}

int USRibbon::wanted_height() const {
  const int whole = scale()(measure::kWhole);
  return ShowTabs.get() ? whole : whole - scale()(measure::kTabRow);
}

void USRibbon::keep_height() {
  const int wanted = wanted_height();
  if (height() == wanted || width() < 1) {
    asked_height_ = 0;
  } else if (asked_height_ != wanted) {
    asked_height_ = wanted;
    request_size(width(), wanted);
  }
}

void USRibbon::resized() {
  keep_height();
  rebuild();
}

void USRibbon::shape_changed() {
  asked_height_ = 0;
  resized();
}

void USRibbon::font_changed() {
  forget_texts();
  rebuild();
}

void USRibbon::enabled_changed() {
  apply_enabled();
  forget_input();
  draw();
}

void USRibbon::apply_theme() {
  left_alone_ = true;
  assign_theme(kThemeColors, Theme.get());
  left_alone_ = false;
  refresh();
}

// Numbers of elements have changed their meaning: what was pressed or hot is no more.
void USRibbon::forget_input() {
  hot_ = pressed_ = {};
  tip_.Destroy();
}

void USRibbon::rebuild() {
  if (left_alone_) return;
  forget_input();
  if (static_cast<size_t>(focus_ + 1) > model_.buttons().size()) focus_ = Model::kNone;
  if (!surface()) return update_access_keys();
  Spec spec;
  spec.width = width();
  spec.height = height();
  spec.scale = scale();
  spec.tabs_shown = ShowTabs.get();
  spec.center = ButtonCenter.get();
  spec.shrink = ShrinkGroups.get();
  spec.built_tabs = built_tabs_;
  spec.built_tab_buttons = built_tab_buttons_;
  spec.first = first_;
  {
    Ruler ruler(surface().dc(), Font.handle(), widths_);
    scene_ = arrange(model_, spec, ruler);
  }
  first_ = scene_.first;
  update_access_keys();
  draw();
}

Look USRibbon::look() {
  Look out;
  const auto color = [](const Property<OLE_COLOR>& property) {
    return TranslateColor(property.get());
  };
  out.category = color(ForeColorCat);
  out.button = color(ForeColorButton);
  out.tab_normal = color(ForeColorTabNormal);
  out.tab_selected = color(ForeColorTabSelected);
  out.font = Font.handle();
  out.enabled = Enabled.get();
  out.right_to_left = right_to_left();
  out.hot = hot_;
  out.pressed = pressed_;
  const bool mouse = hot_.part == Part::kButton || hot_.part == Part::kDrop;
  if (focus_within() && !mouse) out.focus = focus_;
  out.focus_mark = ShowButtonFocus.get() && focus_within();
  out.tab_focus = focus_within() && focus_ == Model::kNone;
  return out;
}

void USRibbon::paint(const PixelRect& clip) {
  // The form is asked for the image list before anything is drawn: what it does then may change
  // the scene.
  if (images_.has_source()) images_.source(extender().get());
  if (!surface()) return;
  const Palette contrast = high_contrast() ? contrast_palette() : Palette{};
  Look how = look();
  how.palette = high_contrast() ? &contrast : &theme_palette(Theme.get());
  Painter(surface(), model_, scene_, how, *this, scale()).paint(clip);
}

void USRibbon::draw() {
  if (left_alone_ || !surface()) return;
  paint({0, 0, width(), height()});
  surface_changed();
}

void USRibbon::draw_part(const PixelRect& area) {
  if (left_alone_ || !surface() || area.empty()) return;
  paint(area);
  surface_changed(RECT{area.left, area.top, area.right, area.bottom});
}

void USRibbon::draw_button(int index) {
  for (size_t i = 0; i < scene_.buttons.size(); ++i)
    if (model_.buttons()[static_cast<size_t>(scene_.buttons[i].entry)].index == index)
      draw_part(scene_.buttons[i].area);
}

void USRibbon::activate(int entry) {
  model_.select(entry);
  first_ = 0;
  focus_ = Model::kNone;
  rebuild();
  tell_readers(EVENT_OBJECT_SELECTION, number_of_target({Part::kTab, entry}));
}

}  // namespace kestrelon
