// Where the controls of pages belong, however far that is from where they can be put.
#pragma once

#include <string>
#include <vector>

namespace kestrelon {

/// The place of one contained control.
struct PagePlace {
  std::wstring name;  ///< as the container names it
  double home = 0;    ///< where it belongs now, in the container's units
  double shown = 0;   ///< what it was last seen to answer there
};

/// The system holds window positions to 16 bits, and scale modes round them. So each control's
/// place is kept exactly; one that lies too far away stands at a limit meanwhile.
class PagePlaces {
 public:
  /// No window stands further out, in units of the container; 0 or more.
  void set_limit(double limit) { limit_ = limit; }

  /// Where a control that answers `present` belongs: where it was sent, unless the program has
  /// moved it since.
  double home_of(const std::wstring& name, double present) const {
    const PagePlace* const known = find(name);
    return known != nullptr && known->shown == present ? known->home : present;
  }
  /// The position to give it for a home.
  double position_for(double home) const {
    return home > limit_ ? limit_ : home < -limit_ ? -limit_ : home;
  }
  /// It was sent to a home and now answers `present`.
  void sent(const std::wstring& name, double home, double present) {
    PagePlace* known = find(name);
    if (known == nullptr) known = &places_.emplace_back(PagePlace{name, 0, 0});
    known->home = home;
    known->shown = present;
  }
  void forget(const std::wstring& name) {
    std::erase_if(places_, [&](const PagePlace& place) { return place.name == name; });
  }
  void clear() { places_.clear(); }
  const std::vector<PagePlace>& all() const { return places_; }

 private:
  const PagePlace* find(const std::wstring& name) const {
    for (const PagePlace& place : places_)
      if (place.name == name) return &place;
    return nullptr;
  }
  PagePlace* find(const std::wstring& name) {
    for (PagePlace& place : places_)
      if (place.name == name) return &place;
    return nullptr;
  }

  double limit_ = 0;
  std::vector<PagePlace> places_;
};

/// The page a home lies on while `active` shows: its distance in strides, to the nearest below.
/// `extent` is the width of the view. -1 for a stride of 0 or less.
inline long page_of(double home, double stride, long active) {
  if (!(stride > 0)) return -1;
  const double steps = home / stride;
  const auto whole = static_cast<long>(steps < 0 ? steps - 1 : steps);
  const double rest = home - static_cast<double>(whole) * stride;
  // A control a little to the left of its page still belongs to it.
  const long page = rest > stride / 2 ? whole + 1 : whole;
  return active - page;
}

}  // namespace kestrelon
