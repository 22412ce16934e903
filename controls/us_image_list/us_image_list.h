// USImageList: image lists for the controls of a form. Seen in the designer only.
#pragma once

#include "frame/control_frame.h"
#include "imaging/image_list/image_lists_object_win.h"
#include "us_image_list_glue.h"

namespace kestrelon {

class USImageList final : public USImageListGlue<USImageList, ControlFrame>,
                          public NativeImageLists,
                          private ImageListsOwner {
 public:
  USImageList();
  ~USImageList() override;

  // NativeImageLists
  bool copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) override;
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }

  ComPtr<_cImageLists> image_lists() { return lists_.as<_cImageLists>(); }
  long update_lists() const { return changes_; }
  // Of the first list, for hosts that know one list only.
  long image_width();
  long image_height();
  ComPtr<_cListImages> list_images();

 protected:
  void* find_interface(REFIID iid) override;

 private:
  /// The collection as exported blocks, one after another.
  class ListsProperty final : public PropertyBase {
   public:
    explicit ListsProperty(USImageList& owner)
        : PropertyBase(owner, L"ImageLists"), lists_(owner.lists_) {}
    Variant empty_value() const override;
    void load(const VARIANT& value) override;
    void reset() override { lists_->lists().Clear(); }
    Variant save() const override;
    bool is_default() const override { return lists_->lists().Count() == 0; }

   private:
    ObjectRef<ImageListsObject> lists_;
  };

  void lists_changed() override;
  void properties_read() override { draw(); }
  void init_properties() override { draw(); }
  void resized() override;
  void draw();

  ObjectRef<ImageListsObject> lists_ = ObjectRef<ImageListsObject>::make();
  ListsProperty property_{*this};
  long changes_ = 0;
};

}  // namespace kestrelon
