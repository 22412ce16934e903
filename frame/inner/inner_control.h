// A control of ours inside another, as the text box has a button. The user and the host see one
// control: the inner one shares the outer one's ambient properties and has no extender.
#pragma once

#include <functional>

#include "base/automation_win.h"
#include "frame/control_frame.h"

namespace kestrelon {

/// What an inner control raises, by dispatch id, arguments in declaration order by reference.
using InnerEvents = std::function<void(DISPID event, DISPPARAMS& arguments)>;

class InnerSite;

/// Owns the inner control's life; the class below gives it its type.
class InnerControlBase {
 public:
  InnerControlBase(const InnerControlBase&) = delete;
  InnerControlBase& operator=(const InnerControlBase&) = delete;

  /// Shows the control in the outer one's window, in its pixels; an empty rectangle hides it.
  void place(HWND parent, const RECT& where);
  /// Closes it; to be called in the outer control's terminate() and when its window goes.
  void close();
  HWND window() const;

 protected:
  InnerControlBase(ControlFrame& inner, Ambient& ambient, InnerEvents events);
  ~InnerControlBase();

 private:
  ControlFrame& inner_;
  ComPtr<IUnknown> life_;
  ComPtr<InnerSite> site_;
  DWORD cookie_ = 0;
  bool shown_ = false;
};

/// `Class` is a control made anew. `events` may do anything, this object's destruction included.
template <class Class>
class InnerControl final : public InnerControlBase {
 public:
  InnerControl(Ambient& ambient, InnerEvents events) : InnerControl(new Class, ambient, events) {}
  Class& operator*() const { return *object_; }
  Class* operator->() const { return object_; }

 private:
  InnerControl(Class* made, Ambient& ambient, const InnerEvents& events)
      : InnerControlBase(*made, ambient, events), object_(made) {}
  Class* object_;
};

}  // namespace kestrelon
