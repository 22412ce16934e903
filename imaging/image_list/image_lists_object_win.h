// The automation class cImageLists.
#pragma once

#include "base/object_ref_win.h"
#include "c_image_lists_glue.h"
#include "imaging/image_list/image_list_entry_win.h"
#include "imaging/image_list/image_lists.h"

namespace kestrelon {

/// Who wants to know that lists or images have changed: a USImageList.
class ImageListsOwner {
 public:
  /// The change is complete; anything may happen before this returns.
  virtual void lists_changed() = 0;

 protected:
  ~ImageListsOwner() = default;
};

/// Lists and images are views made on demand. They keep this object alive, and it does not know
/// them.
class ImageListsObject final : public cImageListsGlue<ImageListsObject, AutomationObject>,
                               public NativeImageLists {
 public:
  ImageListsObject();

  ImageLists& lists() { return lists_; }
  /// Null when the owner goes.
  void set_owner(ImageListsOwner* owner) { owner_ = owner; }
  /// To be called by the views after each change.
  void changed() {
    if (owner_ != nullptr) owner_->lists_changed();
  }

  // NativeImageLists
  bool copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) override;
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }

  // Members
  ComPtr<_cImageList> item(const VARIANT& index);
  ComPtr<IUnknown> xcom_i_enum();
  long count() { return lists_.Count(); }
  bool compression() { return lists_.Compression(); }
  void set_compression(bool on) {
    if (on == lists_.Compression()) return;
    lists_.set_Compression(on);
    changed();  // it is saved with the lists
  }
  bool compression_needed() { return ImageLists::CompressionNeeded(); }
  long version() { return ImageLists::Version; }
  long max_images(long width, long height) { return kestrelon::max_images(width, height); }
  ComPtr<_cImageList> add(long width, long height, const std::wstring& key, long images);
  long is_key_assigned(const std::wstring& key) { return lists_.IsKeyAssigned(key); }
  ComPtr<_cImageList> import_image_list(const VARIANT& data, const std::wstring& key);
  bool export_image_list(const VARIANT& index, VARIANT* out);
  long image_sizes_from_stream(const VARIANT& stream, VARIANT* sizes);
  void remove(const VARIANT& index);
  void clear();

 protected:
  void* find_interface(REFIID iid) override;

 private:
  ImageLists lists_;
  ImageListsOwner* owner_ = nullptr;
};

}  // namespace kestrelon
