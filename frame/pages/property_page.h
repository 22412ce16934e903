// Property pages: what a page does for its frame, written once. A page is a class of its own that
// works through the public members of the selected objects only, hence in any designer.
#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "base/automation_win.h"
#include "frame/kit/scale.h"

namespace kestrelon {

class PropertyPage : public AutomationObject, public IPropertyPage2 {
 public:
  // AutomationObject
  IDispatch* dispatch() override { return nullptr; }
  // IUnknown
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }
  // IPropertyPage2
  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) override;
  STDMETHODIMP Deactivate() override;
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
  STDMETHODIMP Show(UINT command) override;
  STDMETHODIMP Move(LPCRECT place) override;
  STDMETHODIMP IsPageDirty() override { return changed_ ? S_OK : S_FALSE; }
  STDMETHODIMP Apply() override;
  STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG* message) override;
  STDMETHODIMP EditProperty(DISPID id) override;

 protected:
  /// The title on the tab and the size in pixels at 96 dpi.
  PropertyPage(const wchar_t* title, SIZE size) : title_(title), size_(size) {}
  ~PropertyPage() override { Deactivate(); }

  /// Makes the controls of the page; the window stands.
  virtual void build() = 0;
  /// Shows what the objects hold. Comes after build() and when other objects are selected.
  virtual void show_objects() = 0;
  /// Writes what was changed to the objects; false keeps the page changed.
  virtual bool write_objects() = 0;
  virtual void command(int /*id*/, UINT /*code*/) {}
  virtual bool draw_item(const DRAWITEMSTRUCT&) { return false; }
  virtual void edit_property(DISPID) {}

  const std::vector<ComPtr<IDispatch>>& objects() const { return objects_; }
  HWND window() const { return window_; }
  Scale scale() const { return scale_; }
  /// Marks the page as changed and lets the frame enable Apply.
  void mark_changed();
  /// A control of the system at a place in pixels at 96 dpi.
  HWND add(const wchar_t* window_class, const std::wstring& text, DWORD style, int id, int left,
           int top, int width, int height);

  void* find_interface(REFIID iid) override;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  bool handle(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);

  const wchar_t* title_;
  SIZE size_;
  ComPtr<IPropertyPageSite> site_;
  std::vector<ComPtr<IDispatch>> objects_;
  HWND window_ = nullptr;
  HFONT font_ = nullptr;
  Scale scale_;
  bool changed_ = false;
  bool showing_ = false;  // what the page itself writes into its controls is no change
};

}  // namespace kestrelon
