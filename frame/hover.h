// Where the pointer is with respect to a control, from the two sources that tell: movements, which
// stop at the edge, and the leave notice, which capture delays.
#pragma once

namespace kestrelon {

/// Both flags of the hover logic and the way movements change them.
class Hover {
 public:
  enum class Move {
    kEnter,   ///< arm the leave notice, draw, raise MouseEnter (and no MouseMove)
    kInside,  ///< raise MouseMove
    kExit,    ///< raise MouseExit; the leave notice is still armed
    kNothing,
  };

  bool over() const { return over_; }
  bool tracking() const { return tracking_; }

  /// A mouse movement; `over` tells whether the window under the pointer is the control's own.
  Move moved(bool over) {
    if (!over) {
      if (!over_) return Move::kNothing;
      over_ = false;
      return Move::kExit;
    }
    over_ = true;
    if (tracking_) return Move::kInside;
    tracking_ = true;
    return Move::kEnter;
  }
  /// The leave notice. A departure under capture is reported by both sources; that is how it works.
  void left() { over_ = tracking_ = false; }
  void clear_over() { over_ = false; }

 private:
  bool over_ = false;
  bool tracking_ = false;
};

}  // namespace kestrelon
