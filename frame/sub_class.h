// `modSubClass`: the older way to see another window's messages, by clients per message.
#pragma once

#include <windows.h>

namespace kestrelon {

/// What to do about a message.
enum class eMsgResponse {
  kConsume = 0,  ///< the client's WindowProc instead of the former procedure
  kAfter = 1,    ///< the former procedure first
  kBefore = 2,   ///< the client's WindowProc first; the former procedure's answer counts, unless
                 ///< the client sets kConsume meanwhile: then its own answer does, for this message
};

class ISubclass {
 public:
  virtual eMsgResponse MsgResponse() const = 0;
  virtual void set_MsgResponse(eMsgResponse response) = 0;
  virtual LRESULT WindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) = 0;

 protected:
  ~ISubclass() = default;
};

/// Numbers of the errors that attaching raises as ComError, with ".WindowProc" as their source.
inline constexpr int kCannotSubclass = 13081, kAlreadyAttached = 13082, kInvalidWindow = 13083,
                     kForeignWindow = 13084;

/// Has `client` called for a message of a window, in the order of attachment among its clients. The
/// client must live until it is detached. A kConsume that a kBefore client sets while it is called
/// keeps this message from the former procedure; the response is kBefore again afterwards. Throws
/// ComError.
void AttachMessage(ISubclass* client, HWND hWnd, UINT uMsg);

/// Ends that. A client that is not attached, or a window that is gone, is no error.
void DetachMessage(ISubclass* client, HWND hWnd, UINT uMsg);

}  // namespace kestrelon
