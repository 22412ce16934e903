// The form that a skin has taken over: by its own object where it has one, else as a bare window.
#pragma once

#include <windows.h>

#include <vector>

#include "base/com_win.h"

namespace kestrelon {

/// Nothing here fails towards the caller: a property that the host lacks or refuses reads empty and
/// keeps its value. Error 398 marks the host as gone.
class SkinHost {
 public:
  enum class Kind {
    kNone,     ///< no host that a skin can take
    kForm,     ///< an object with hWnd and BorderStyle
    kMdiForm,  ///< told by the name of its type
    kWindow    ///< a window that was named
  };

  /// Looks at the parent of a control's extender.
  void find(IDispatch* extender);
  /// Takes a top-level window of this process and thread; false for any other.
  bool attach(HWND window);
  void forget();

  Kind kind() const { return kind_; }
  bool takes_skin() const { return kind_ != Kind::kNone; }
  HWND window() const { return window_; }
  IDispatch* object() const { return object_.get(); }
  bool gone() const { return gone_ || (window_ != nullptr && !IsWindow(window_)); }
  bool minimized() const { return IsIconic(window_) != FALSE; }
  bool maximized() const { return IsZoomed(window_) != FALSE; }
  bool normal() const { return !minimized() && !maximized(); }
  RECT place() const;
  bool has_menu() const { return GetMenu(window_) != nullptr; }

  Variant get(const wchar_t* name);
  void put(const wchar_t* name, const Variant& value);
  void put_object(const wchar_t* name, IDispatch* object);
  long number(const wchar_t* name, long missing);
  bool flag(const wchar_t* name, bool missing) { return number(name, missing ? 1 : 0) != 0; }
  std::wstring caption();
  void set_caption(const std::wstring& caption);
  bool mdi_child() { return flag(L"MDIChild", false); }
  /// The controls on it that follow a theme, by the names of their types: from its Controls, else
  /// from its OLE container.
  std::vector<ComPtr<IDispatch>> themed_controls();
  /// By its own method, else by its window's close message.
  void unload();

 private:
  void failed(HRESULT hr);

  Kind kind_ = Kind::kNone;
  ComPtr<IDispatch> object_;
  HWND window_ = nullptr;
  bool gone_ = false;
};

}  // namespace kestrelon
