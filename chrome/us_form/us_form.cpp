// The control's life, its theme and what screen readers hear.
#include "chrome/us_form/us_form.h"

#include <array>

#include "chrome/us_form/host_listener.h"
#include "frame/himetric.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

ControlTraits traits() {
  ControlTraits out;
  // The title takes neither keys nor the focus.
  out.misc_status |= OLEMISC_NOUIACTIVATE | OLEMISC_ALIGNABLE;
  out.initial_pixels = {320, skin::kTitleHeight};
  return out;
}

// The host's back colour and the control's own, then the colours of title and background.
constexpr OLE_COLOR kHostBack[3] = {0xFCEDE1, 0xEDE8E5, 0xF9F9F9};
constexpr ThemeEntry kThemeEntries[] = {
    {L"GradientColor2", {0xFCEDE1, 0xEDE8E5, 0xF9F9F9}},
    {L"GradientColor1", {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}},
    {L"ForeColor", {0x3B3B3B, 0x3B3B3B, 0xFFFFFF}},
    {L"ForeColorDelimiter", {0xB75F31, 0xB75F31, 0xE0E0E0}},
};

constexpr long kAlignTop = 1;

}  // namespace

USForm::USForm() : USFormGlue(traits()), listener_(std::make_unique<Listener>(*this)) {
  own_caption.saved_when([this] { return !own_caption.get().empty(); });
  own_icon.saved_when([this] { return static_cast<bool>(own_icon); });
  KeepFrame.saved_when([this] { return KeepFrame.get(); });
}

void USForm::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
}

void USForm::init_properties() {
  Font.reset();
  const ComPtr<IDispatch> own = extender();
  host_.find(own.get());
  if (!host_.takes_skin()) return redraw();
  if (host_.kind() == SkinHost::Kind::kForm) {
    host_.put(L"BorderStyle", Variant(short{0}));
    if (!host_.mdi_child()) host_.put(L"ShowInTaskBar", Variant(true));
  }
  host_.put(L"BackColor", Variant(static_cast<long>(kHostBack[Windows_8])));
  try {
    LateObject control{own};
    control.call(L"ZOrder", {Variant(short{0})});
    control.put_property(L"Align", Variant(kAlignTop));
  } catch (const ComError&) {  // the title keeps itself at the top all the same
  }
  AutoRedraw.assign(host_.has_menu());
  redraw();
}

void USForm::properties_read() {
  active_ = true;
  const ComPtr<IDispatch> own = extender();
  host_.find(own.get());
  if (user_mode() && host_.takes_skin()) take_over();
  redraw();
}

void USForm::resized() {
  if (ControlFrame::height() != strip_height() && !size_asked_ && given_.strip_parent == nullptr) {
    size_asked_ = true;  // a container that refuses is asked once
    request_size(strip_width(), strip_height());
    size_asked_ = false;
  }
  redraw();
}

void USForm::shown() {
  resized();
}

void USForm::rescaled() {
  sheet_.load(Theme.get(), scale());
  place_edges();
}

void USForm::apply_theme() {
  const long number = Theme.get();
  if (number >= 0 && number <= 2)
    host_.put(L"BackColor", Variant(static_cast<long>(kHostBack[number])));
  assign_theme(kThemeEntries, number);
  if (ChangeThemeControls.get()) theme_siblings();
  cut_size_ = {};
  place_edges();
  redraw_chrome();
  refresh_gradient();
}

// A snapshot, so that handlers may add and remove controls while the walk goes on.
void USForm::theme_siblings() {
  const Hold hold(*this);
  const long number = Theme.get();
  for (const auto& control : host_.themed_controls()) {
    if (control.get() == dispatch()) continue;
    try {
      LateObject(control).put_property(L"Theme", Variant(number));
    } catch (const ComError&) {  // the next one may still take it
    }
  }
}

std::wstring USForm::caption() {
  return own_caption.get().empty() ? host_.caption() : own_caption.get();
}

void USForm::set_caption(const std::wstring& caption) {
  own_caption.put(caption);
  host_.set_caption(caption);
}

ComPtr<IPictureDisp> USForm::icon() {
  if (own_icon) return own_icon.get();
  const Variant value = host_.get(L"Icon");
  return V_VT(&value) == VT_DISPATCH ? query<IPictureDisp>(V_DISPATCH(&value)) : nullptr;
}

void USForm::set_icon(IPictureDisp* icon) {
  own_icon.put(icon);
  host_.put_object(L"Icon", icon);
}

long USForm::h_wnd() const {
  return static_cast<long>(reinterpret_cast<LONG_PTR>(host_.window()));
}

namespace {
long to_twips(int pixels) {
  constexpr long kTwipsAtUnit = 15;  // 1440 an inch over 96 dots
  return pixels * kTwipsAtUnit;
}
}  // namespace

long USForm::height() const {
  return to_twips(scale().to_unit(ControlFrame::height()));
}

long USForm::width() const {
  return to_twips(scale().to_unit(strip_width()));
}

void USForm::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_TITLEBAR;
  name_after(item, const_cast<USForm*>(this)->caption());
}

bool USForm::accessible_item(long child, AccessibleItem& item) const {
  if (child < 1 || child > 3) return ControlFrame::accessible_item(child, item);
  const auto button = static_cast<skin::Button>(child);
  const std::wstring* const names[] = {&ToolTipMinimize.get(), &ToolTipMaximize.get(),
                                       &ToolTipClose.get()};
  const auto zone = skin::button_zone(Theme.get(), button);
  const auto rows = skin::button_rows(Theme.get());
  const int left = unit_width() - skin::box_width(Theme.get());
  item.role = ROLE_SYSTEM_PUSHBUTTON;
  item.name = *names[child - 1];
  item.default_action = L"Pressionar";
  item.place = {scale()(left + zone.first), scale()(rows.first), scale()(left + zone.last + 1),
                scale()(rows.last + 1)};
  const skin::Buttons now = buttons();
  if (!now.box || !now.shows(button)) item.state |= STATE_SYSTEM_INVISIBLE;
  if (!now.answers(button)) item.state |= STATE_SYSTEM_UNAVAILABLE;
  return true;
}

long USForm::accessible_at(POINT at) const {
  return static_cast<long>(skin::button_at(Theme.get(), buttons(), unit_width(),
                                           scale().to_unit(static_cast<int>(at.x)),
                                           scale().to_unit(static_cast<int>(at.y))));
}

void USForm::accessible_default_action(long child) {
  if (child < 1 || child > 3 || !live()) return;
  if (buttons().answers(static_cast<skin::Button>(child))) press(static_cast<skin::Button>(child));
}

}  // namespace kestrelon
