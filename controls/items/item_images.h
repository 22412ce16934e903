// The images of items: from an object a program has set, or from a USImageList that lies on the
// form.
#pragma once

#include <ocidl.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/counted_win.h"
#include "imaging/dib_win.h"

namespace kestrelon {

class ItemImages {
 public:
  /// `changed` is called when the images of the source have changed.
  explicit ItemImages(std::function<void()> changed) : changed_(std::move(changed)) {}
  ~ItemImages();
  ItemImages(const ItemImages&) = delete;
  ItemImages& operator=(const ItemImages&) = delete;

  // An image as a number: above 0 a position, below 0 a key that was met before, 0 none.
  int32_t number(const VARIANT& image);
  Variant value(int32_t number) const;

  /// The list within the source: empty for the first.
  void set_key(const std::wstring& key);
  /// What a program sets; null: the control on the form takes its place.
  void set_object(ComPtr<IDispatch> object);
  const ComPtr<IDispatch>& object() const { return object_; }
  /// Where the control of a name is looked for, at the first drawing: the control's own extender.
  void set_form_source(std::wstring name);
  bool has_source() const { return object_ || !name_.empty(); }
  /// What images come from, looked for on the form if need be; null without one.
  ComPtr<IDispatch> source(IDispatch* extender) {
    look_for_source(extender);
    return source_;
  }

  /// The image, null if there is none. `extender` is asked for its form at most once.
  const c32bppDIB* find(int32_t number, IDispatch* extender);
  /// The size of the source's first image; 0 without one.
  SIZE size(IDispatch* extender);
  void forget();

 private:
  /// Lives as long as the source holds it, and forgets images that are gone.
  class Listener final : public Counted<IPropertyNotifySink> {
   public:
    explicit Listener(ItemImages* images) : images_(images) {}
    void detach() { images_ = nullptr; }
    STDMETHODIMP OnChanged(DISPID) override;
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

   private:
    ItemImages* images_;
  };

  void use_source(IDispatch* source);
  void stop_listening();
  void look_for_source(IDispatch* extender);

  std::function<void()> changed_;
  std::vector<std::wstring> keys_;
  std::wstring name_, list_key_;
  ComPtr<IDispatch> object_;  // set by the program
  ComPtr<IDispatch> source_;  // in use
  bool looked_ = false;
  std::map<int32_t, std::unique_ptr<WindowsImage>> kept_;  // null: known to be missing
  ComPtr<Listener> listener_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace kestrelon
