// When which frame of an animation shows: a state machine with the clock outside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kestrelon {

/// `ENUM_ANIMATION_ACTIONS`.
enum class AnimationAction : int32_t { Stop = 0, Play = 1, Pause = 2, Forward = 3, Reset = 4 };

/// Counts frames from 1, as the public interface does. Times are milliseconds of any clock that
/// does not go backwards.
class GifPlayer {
 public:
  /// The system's timers know no shorter interval.
  static constexpr int32_t kShortestDelay = 10;
  static constexpr int32_t kDefaultMinDelay = 50;

  /// What a call brought about; the caller shows and tells it.
  struct Outcome {
    bool frame_changed = false;  ///< a frame was chosen, be it the same one
    bool loops_ended = false;
  };

  /// Stops at the first of as many frames as there are delays.
  void open(std::vector<int32_t> delays);
  void close() { open({}); }

  size_t frame_count() const { return delays_.size(); }
  int32_t current() const { return current_; }  ///< 0 without frames
  /// Stop, Play or Pause: the state as the action that leads to it.
  AnimationAction state() const { return state_; }
  int32_t loops() const { return loops_; }
  int32_t loops_remaining() const { return remaining_; }

  /// 0 plays for ever, as does a negative number. Begins to count anew.
  void set_loops(int32_t loops);
  /// No frame shows for less, whatever the file says.
  void set_min_delay(int32_t milliseconds) { min_delay_ = milliseconds; }
  /// Above 0: every frame shows for so long in place of its own delay.
  void set_stepped_delay(int32_t milliseconds) { stepped_delay_ = milliseconds; }

  /// Nothing happens without frames, or for a number that names no action.
  Outcome act(AnimationAction action, uint64_t now);
  /// One frame forward when it is time; a tick that comes late moves by one frame too, and the next
  /// delay counts from it.
  Outcome tick(uint64_t now);
  /// Milliseconds to the next tick, or none while nothing runs. A single frame that plays for ever
  /// needs no ticks.
  std::optional<uint32_t> wait(uint64_t now) const;

 private:
  void start(uint64_t now);
  uint64_t delay() const;

  std::vector<int32_t> delays_;
  int32_t current_ = 0;
  AnimationAction state_ = AnimationAction::Stop;
  int32_t loops_ = 0, remaining_ = 0;
  int32_t min_delay_ = kDefaultMinDelay;
  int32_t stepped_delay_ = 0;
  uint64_t due_ = 0;
};

}  // namespace kestrelon
