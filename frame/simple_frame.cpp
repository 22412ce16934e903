#include "frame/simple_frame.h"

namespace kestrelon {

FrameFilter::FrameFilter(const ComPtr<ISimpleFrameSite>& site, HWND window, UINT message,
                         WPARAM wparam, LPARAM lparam)
    : site_(site), window_(window), message_(message), wparam_(wparam), lparam_(lparam) {
  if (site_)
    taken_ =
        site_->PreMessageFilter(window, message, wparam, lparam, &result_, &cookie_) == S_FALSE;
}

LRESULT FrameFilter::after(LRESULT own) {
  result_ = own;
  if (site_) site_->PostMessageFilter(window_, message_, wparam_, lparam_, &result_, cookie_);
  return result_;
}

}  // namespace kestrelon
