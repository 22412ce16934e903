// The controls of the pages: all stand on one surface, and a switch slides them by the stride.
#include <algorithm>

#include "base/decimal.h"
#include "chrome/us_tab/us_tab.h"
#include "frame/himetric.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

// The system holds positions to 16 bits; no window is put further out.
constexpr double kFarthest = 30000;  // pixels
constexpr double kTwipsPerInch = 1440;

double farthest_twips() {
  return kFarthest * kTwipsPerInch / screen_resolution().x;
}

bool own_process(HWND window) {
  DWORD process = 0;
  return GetWindowThreadProcessId(window, &process) != 0 && process == GetCurrentProcessId();
}

// The window of a control, null for one that the container draws.
HWND window_of(LateObject& control) {
  try {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(number_of(control.get_property(L"hWnd"))));
  } catch (const ComError&) {
    return nullptr;
  }
}

void put_length(LateObject& control, const wchar_t* name, long value) {
  if (value == -1) return;
  try {
    control.put_property(name, Variant(value));
  } catch (const ComError&) {  // it has none
  }
}

}  // namespace

bool USTab::switch_to(long index) {
  if (!known(index) || switching_) return false;
  if (index == active_.get()) return true;
  switching_ = true;
  auto wanted = static_cast<short>(index);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_tab_switch(wanted, cancel);
  // The handler may have removed tabs or the control.
  const long last = active_.get();
  if (cancel != VARIANT_FALSE || !known(index) || index == last) {
    switching_ = false;
    return cancel == VARIANT_FALSE && index == last;
  }
  set_active(index);
  switching_ = false;
  auto told = static_cast<short>(last);
  raise_tab_switch(told);
  return true;
}

void USTab::set_active(long index) {
  const long last = active_.get();
  slide(static_cast<double>(index - last) * static_cast<double>(TabOffset.get()));
  active_.assign(index);
  last_active_ = last;
  wanted_ = static_cast<int>(index);
  layout_stale_ = true;
  redraw();
  property_changed(L"ActiveTab");
  key_wishes_changed();
  tell_readers(EVENT_OBJECT_SELECTION, index + 1);
  if (focus_within()) tell_readers(EVENT_OBJECT_FOCUS, index + 1);
}

void USTab::slide(double twips) {
  for (const MovableControl& control : contained().list(added_)) {
    double present = 0;
    if (!control.left(present)) continue;
    places_.set_limit(farthest_twips() / control.unit());
    const double home = places_.home_of(control.name(), present) + twips / control.unit();
    if (!control.set_left(places_.position_for(home)) || !control.left(present)) continue;
    places_.sent(control.name(), home, present);
  }
  remember_far();
}

void USTab::rearrange(long active_after, const std::function<long(long)>& page_after) {
  const auto stride = static_cast<double>(TabOffset.get());
  const long active = active_.get();
  if (stride > 0)
    for (const MovableControl& control : contained().list(added_)) {
      double present = 0;
      if (!control.left(present)) continue;
      places_.set_limit(farthest_twips() / control.unit());
      double home = places_.home_of(control.name(), present);
      const long page = page_of(home * control.unit(), stride, active);
      const long steps = (active_after - page_after(page)) - (active - page);
      if (steps == 0) continue;
      home += static_cast<double>(steps) * stride / control.unit();
      if (!control.set_left(places_.position_for(home)) || !control.left(present)) continue;
      places_.sent(control.name(), home, present);
    }
  remember_far();
  if (active_after == active) return;
  active_.assign(active_after);
  last_active_ = active;
  wanted_ = static_cast<int>(active_after);
  property_changed(L"ActiveTab");
}

void USTab::move_tab(int from, int to) {
  const auto place_after = [=](long page) {
    if (page == from) return static_cast<long>(to);
    if (from < page && page <= to) return page - 1;
    if (to <= page && page < from) return page + 1;
    return page;
  };
  rearrange(place_after(active_.get()), place_after);
  tabs.change(L"TabCaption", [&](std::vector<TabRecord>& list) {
    const auto begin = list.begin();
    if (from < to)
      std::rotate(begin + from, begin + from + 1, begin + to + 1);
    else
      std::rotate(begin + to, begin + from, begin + from + 1);
  });
}

// What stands elsewhere than where it belongs is saved with the form.
void USTab::remember_far() {
  std::vector<FarControl>& list = far_controls.quietly();
  list.clear();
  for (const PagePlace& place : places_.all())
    if (place.home != place.shown) list.push_back({place.name, place.home, place.shown});
}

void USTab::recall_far() {
  places_.clear();
  for (const FarControl& each : far_controls.get()) places_.sent(each.name, each.home, each.shown);
}

void USTab::add_control(const VARIANT& control, long window, long left, long top, long width,
                        long height, long tab) {
  if (tab >= 0 && !known(tab)) return;
  long pages = 0;  // how far from the view the control lies, where its page may not be shown
  if (tab >= 0 && tab != active_.get() && !switch_to(tab)) pages = active_.get() - tab;
  const HWND own = this->window();
  if (own == nullptr) return;
  const auto bring = [&](AddedControl added) {
    const auto known_before =
        std::find_if(added_.begin(), added_.end(), [&](const AddedControl& each) {
          return added.window != nullptr && each.window == added.window;
        });
    const bool movable = added.window != nullptr && own_process(added.window) &&
                         added.window != own && !IsChild(added.window, own);
    if (added.window != nullptr && !movable) return false;
    if (movable && GetParent(added.window) != own) {
      added.former_parent = GetParent(added.window);
      SetParent(added.window, own);
    }
    if (known_before == added_.end() && added.former_parent != nullptr) {
      static long counter = 0;
      added.name = L"+" + decimal_text(++counter);
      added_.push_back(std::move(added));
    }
    return true;
  };
  const double away = static_cast<double>(pages) * static_cast<double>(TabOffset.get());
  LateObject object = object_of(control);
  if (object) {
    AddedControl added;
    added.object = ComPtr<IDispatch>(object.get());
    added.window = window_of(object);
    if (bring(added)) {
      put_length(object, L"Left", left);
      put_length(object, L"Top", top);
      put_length(object, L"Width", width);
      put_length(object, L"Height", height);
      if (pages != 0) {
        const double unit = twips_per_unit_of(object.get());
        const MovableControl moved(L"", added.object, nullptr, unit);
        double present = 0;
        if (moved.left(present)) moved.set_left(present + away / unit);
      }
      try {
        object.put_property(L"Visible", Variant(true));
      } catch (const ComError&) {  // it has none
      }
    }
  }
  const auto bare = reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
  if (window == -1 || !IsWindow(bare)) return;
  RECT place{};
  GetWindowRect(bare, &place);
  MapWindowPoints(nullptr, GetParent(bare), reinterpret_cast<POINT*>(&place), 2);
  AddedControl added;
  added.window = bare;
  if (!bring(added)) return;
  const int across = left == -1 ? static_cast<int>(place.left) : static_cast<int>(left);
  const double shift = away * screen_resolution().x / kTwipsPerInch;
  SetWindowPos(bare, nullptr, static_cast<int>(std::clamp(across + shift, -kFarthest, kFarthest)),
               top == -1 ? place.top : top, width == -1 ? place.right - place.left : width,
               height == -1 ? place.bottom - place.top : height, SWP_SHOWWINDOW);
}

// A window that was brought goes back to where it came from, hidden.
void USTab::give_back() {
  const std::vector<AddedControl> list = std::move(added_);
  added_.clear();
  for (const AddedControl& each : list) {
    if (each.window == nullptr || GetParent(each.window) != window()) continue;
    ShowWindow(each.window, SW_HIDE);
    if (IsWindow(each.former_parent)) SetParent(each.window, each.former_parent);
  }
}

void USTab::watch() {
  if (user_mode() && window() != nullptr)
    watch_.start(window());
  else
    watch_.stop();
}

// The focus has come to a contained control: one that is out of view brings its page.
void USTab::focus_came(HWND focus) {
  if (switching_ || GetFocus() != focus || !IsChild(window(), focus)) return;
  HWND child = focus;
  while (GetParent(child) != window()) child = GetParent(child);
  RECT place{};
  GetWindowRect(child, &place);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
  if (place.right > 0 && place.left < width()) return;
  long page = -1;
  for (const MovableControl& control : contained().list(added_)) {
    double present = 0;
    if (control.window() != child || !control.left(present)) continue;
    page = page_of(places_.home_of(control.name(), present) * control.unit(),
                   static_cast<double>(TabOffset.get()), active_.get());
    break;
  }
  if (known(page) && usable(static_cast<int>(page)) && switch_to(page)) return;
  if (window() != nullptr && IsChild(window(), GetFocus())) SetFocus(window());
}

}  // namespace kestrelon
