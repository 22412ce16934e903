#include "tests/frame/frame_probe.h"

namespace kestrelon {
namespace {

constexpr GUID kProbeClass = {
    0x5e6a3d10, 0x11aa, 0x4c55, {0x9a, 0x10, 0x6c, 0x2f, 0x90, 0x31, 0x44, 0x01}};
constexpr GUID kProbeInterface = {
    0x5e6a3d10, 0x11aa, 0x4c55, {0x9a, 0x10, 0x6c, 0x2f, 0x90, 0x31, 0x44, 0x02}};
constexpr long kItemHeight = 10;

}  // namespace

FrameProbe::FrameProbe() : ProbeControl(ControlTraits{}) {}

const ClassInfo& FrameProbe::class_info() const {
  static const ClassInfo kInfo{L"FrameProbe", kProbeClass, kProbeInterface, nullptr};
  return kInfo;
}

void FrameProbe::window_created() {
  edit.create(WS_VISIBLE | ES_AUTOHSCROLL, {});
  edit.set_colors(RGB(10, 20, 30), RGB(200, 210, 220));
  button = std::make_unique<InnerControl<USButton>>(ambient(), [this](DISPID event, DISPPARAMS&) {
    if (event == DISPID_CLICK) log.push_back(L"button");
  });
  resized();
}

void FrameProbe::resized() {
  edit.move({2, 2, width() - 32, height() - 2});
  if (button) button->place(window(), {width() - 30, 0, width(), height()});
  draw_all();
}

void FrameProbe::terminate() {
  button.reset();
}

void FrameProbe::draw_all() {
  if (!surface()) return;
  surface().clear(0xFFFFFF);
  surface_changed();
}

void FrameProbe::key_down(short& key, short&) {
  log.push_back(L"down " + std::to_wstring(key));
  if (key_becomes != -1) key = key_becomes;
  const auto handler = on_key;
  if (handler) handler();
}

void FrameProbe::key_press(short& character) {
  log.push_back(L"press " + std::to_wstring(static_cast<unsigned short>(character)));
  if (character == L'x') character = 0;
  if (character == L'y') character = L'z';
}

void FrameProbe::mouse_down(short button_number, short, float x, float y) {
  log.push_back(L"mouse " + std::to_wstring(button_number) + L" " +
                std::to_wstring(static_cast<int>(x)) + L" " + std::to_wstring(static_cast<int>(y)));
}

bool FrameProbe::wants_key(int key, short shift) const {
  return key == VK_ESCAPE ? keeps_escape : ControlFrame::wants_key(key, shift);
}

bool FrameProbe::open_popup(SIZE size) {
  RECT place{};
  GetWindowRect(window(), &place);
  return popup_.open(window(), *this, *this, {place, size});
}

void FrameProbe::popup_closed(PopupEnd why) {
  log.push_back(L"popup " + std::to_wstring(static_cast<int>(why)));
  const auto handler = on_popup_end;
  if (handler) handler();
}

void FrameProbe::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_LIST;
  name_after(item, L"&Lista de prova");
}

bool FrameProbe::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  if (child < 1 || child > accessible_count()) return false;
  item.role = ROLE_SYSTEM_LISTITEM;
  item.name = items[static_cast<size_t>(child) - 1];
  item.state = child == selected ? STATE_SYSTEM_SELECTED : 0;
  item.place = {0, (child - 1) * kItemHeight, width(), child * kItemHeight};
  return true;
}

long FrameProbe::accessible_at(POINT point) const {
  const long child = point.y / kItemHeight + 1;
  return child <= accessible_count() ? child : CHILDID_SELF;
}

std::vector<long> FrameProbe::accessible_selection() const {
  return selected != 0 ? std::vector<long>{selected} : std::vector<long>{};
}

bool FrameProbe::accessible_select(long child, long) {
  selected = child;
  return true;
}

void FrameProbe::accessible_default_action(long child) {
  log.push_back(L"action " + std::to_wstring(child));
}

}  // namespace kestrelon
