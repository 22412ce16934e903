#include "controls/us_progress_bar/us_progress_bar.h"

#include <cmath>

#include "frame/kit/theme.h"
#include "frame/task_bar.h"

namespace kestrelon {
namespace {

constexpr UINT kRunnerStep = 33;  // milliseconds

constexpr ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_NOUIACTIVATE;
  out.initial_pixels = {160, 20};
  return out;
}

long as_number(HWND window) {
  return static_cast<long>(reinterpret_cast<LONG_PTR>(window));
}

}  // namespace

USProgressBar::USProgressBar()
    : USProgressBarGlue(traits()), TipProperties(*this, &USProgressBar::update_tip) {}

void USProgressBar::properties_read() {
  caption_changed();
  told_percent_ = static_cast<long>(range().percent(Value.get(), 0));
  ThemedDisplay::properties_read();
}

void USProgressBar::shown() {
  seen_ = true;
  create_tool_tip();
  watch_runner();
  mirror();
}

void USProgressBar::hidden() {
  seen_ = false;
  destroy_tool_tip();
  runner_.stop();
}

void USProgressBar::terminate() {
  runner_.stop();
  destroy_tool_tip();
  clear_task_bar();
  ThemedDisplay::terminate();
}

// The colours change without a word to the container: only "Theme" marks the form.
void USProgressBar::theme_changed() {
  Property<OLE_COLOR>* const colors[] = {&Color, &ForeColor1, &ForeColor2};
  apply_theme(theme::kProgressBar, Theme.get(), [&](const wchar_t* name, uint32_t value) {
    for (Property<OLE_COLOR>* each : colors)
      if (wcscmp(each->name(), name) == 0) each->assign(value);
  });
  draw_progress_bar();
}

void USProgressBar::caption_changed() {
  caption_marks_.clear();
  for (const wchar_t mark : {L'p', L'v', L'm', L't'})
    if (mentions(Caption.get(), mark)) caption_marks_.push_back(mark);
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  redraw();
}

void USProgressBar::state_changed() {
  watch_runner();
  mirror();
  redraw();
  if (user_mode()) update_now();
}

void USProgressBar::watch_runner() {
  if (!endless() || !user_mode() || !seen_) return runner_.stop();
  if (runner_.running()) return;
  runner_began_ = GetTickCount64();
  runner_.start(kRunnerStep, [this] { redraw(); });
}

void USProgressBar::set_max(double max) {
  if (std::isnan(max)) return;
  Max.put(max);
  range_changed();
}

void USProgressBar::set_min(double min) {
  if (std::isnan(min)) return;
  Min.put(min);
  range_changed();
}

// What took so long until now says nothing about a new amount of work.
void USProgressBar::range_changed() {
  clock_.reset();
  clock_.at(range().fraction(Value.get()), GetTickCount64());
  progressed();
}

void USProgressBar::set_value(double value) {
  if (std::isnan(value) || value == Value.get()) return;
  const Hold hold(*this);
  const bool was_complete = range().complete(Value.get());
  // Loops assign by the million, and nothing is saved at run time: no word to the container there.
  user_mode() ? Value.assign(value) : Value.put(value);
  clock_.at(range().fraction(value), GetTickCount64());
  progressed();
  const bool now_complete = !was_complete && range().complete(value);
  raise_change(value);
  if (now_complete) raise_complete();
}

double USProgressBar::percent() const {
  const int places = used_decimals(Decimals.get());
  return static_cast<double>(range().percent(Value.get(), places)) / std::pow(10.0, places);
}

void USProgressBar::increment(const VARIANT& step) {
  Variant number(1.0);
  const bool given = V_VT(&step) != VT_ERROR;
  if (given && FAILED(VariantChangeType(&number, const_cast<VARIANT*>(&step), 0, VT_R8))) return;
  set_value(Value.get() + V_R8(&number));
}

void USProgressBar::reset() {
  clock_.reset();
  set_value(Min.get());
}

void USProgressBar::draw_progress_bar() {
  redraw();
  update_now();
}

// Shows a value at once where it changes a pixel or the text.
void USProgressBar::progressed() {
  const auto whole = static_cast<long>(range().percent(Value.get(), 0));
  if (whole != told_percent_) {
    told_percent_ = whole;
    tell_readers(EVENT_OBJECT_VALUECHANGE);
    mirror();
  }
  const Look now = look();
  if (now == drawn_) return;
  if (now.filled == drawn_.filled && text() == drawn_text_) {
    drawn_ = now;
    return;
  }
  redraw();
  if (user_mode()) update_now();
}

void USProgressBar::task_bar_changed() {
  TaskBar.get() ? mirror() : clear_task_bar();
}

void USProgressBar::mirror() {
  if (!TaskBar.get() || !user_mode() || window() == nullptr) return;
  const HWND top = GetAncestor(window(), GA_ROOT);
  if (top != mirrored_in_) clear_task_bar();
  mirrored_in_ = top;
  const long state = State.get();
  // A value would turn an endless or empty button into one that counts.
  if (state != TASKBAR_NOPROGRESS && state != TASKBAR_INDETERMINATE)
    task_bar::set_value(as_number(top), told_percent_);
  task_bar::set_state(as_number(top), state);
}

void USProgressBar::clear_task_bar() {
  const HWND top = std::exchange(mirrored_in_, nullptr);
  if (top != nullptr && IsWindow(top)) task_bar::set_state(as_number(top), TASKBAR_NOPROGRESS);
}

HWND USProgressBar::tip_place(RECT& area) const {
  if (!user_mode() || window() == nullptr) return nullptr;
  area = {0, 0, width(), height()};
  return window();
}

void USProgressBar::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_PROGRESSBAR;
  item.state = STATE_SYSTEM_READONLY | (endless() ? STATE_SYSTEM_BUSY : 0);
  item.description = ToolTipDescription.get();
  if (!endless()) item.value = percent_text(told_percent_, 0) + L"%";
  if (TextMode.get() == Progress_Caption && item.name.empty()) item.name = text();
}

}  // namespace kestrelon
