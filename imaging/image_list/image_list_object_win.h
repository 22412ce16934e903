// The automation classes cImageList, cListImages and cListImage: views of a list and its images.
#pragma once

#include <optional>

#include "c_image_list_glue.h"
#include "c_list_image_glue.h"
#include "c_list_images_glue.h"
#include "imaging/c32bpp_dib/image_object_win.h"
#include "imaging/image_list/image_lists_object_win.h"

namespace kestrelon {

/// A new view of a list.
ComPtr<_cImageList> list_view(ImageListsObject& parent, std::shared_ptr<ImageList> list);
/// An enumerator over objects, for For Each; it keeps what it began with.
ComPtr<IUnknown> enumerate(std::vector<ComPtr<IDispatch>> items);

class ImageListObject final : public cImageListGlue<ImageListObject, AutomationObject>,
                              public NativeImageLists {
 public:
  ImageListObject(ImageListsObject& parent, std::shared_ptr<ImageList> list)
      : parent_(&parent), list_(std::move(list)) {}

  bool copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) override;
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }

  ComPtr<_cListImages> images();
  ComPtr<_cListImages> list_images() { return images(); }
  std::wstring key();
  void set_key(const std::wstring& key);
  long index();
  long width() { return list_->Width(); }
  long height() { return list_->Height(); }
  long image_width() { return list_->Width(); }
  long image_height() { return list_->Height(); }
  long max_images() { return list_->MaxImages(); }

 protected:
  void* find_interface(REFIID iid) override;

 private:
  ObjectRef<ImageListsObject> parent_;
  std::shared_ptr<ImageList> list_;
};

class ListImagesObject final : public cListImagesGlue<ListImagesObject, AutomationObject>,
                               public NativeImageLists {
 public:
  using Text = const std::wstring&;

  ListImagesObject(ImageListsObject& parent, std::shared_ptr<ImageList> list)
      : parent_(&parent), list_(std::move(list)) {}

  bool copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) override;
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }

  ComPtr<_cListImage> item(const VARIANT& index);
  ComPtr<IUnknown> xcom_i_enum();
  long count() { return list_->Count(); }
  long max_images() { return list_->MaxImages(); }
  bool delay_loaded() { return list_->DelayLoaded(); }
  void set_delay_loaded(bool on);
  long is_key_assigned(Text key) { return list_->IsKeyAssigned(key); }
  void remove(const VARIANT& index);
  void clear();

  bool add_image_from_stream(const VARIANT& stream, const VARIANT& index, Text key, Text tag,
                             long start, long length, long depth, bool scaled);
  bool add_image_from_clip_board(const VARIANT& index, Text key, Text tag, bool scaled);
  bool add_image_from_file(Text file, const VARIANT& index, Text key, Text tag, long depth,
                           bool scaled);
  bool add_image_from_resource(const VARIANT& resource, const VARIANT& section,
                               const VARIANT& global, const VARIANT& index, Text key, Text tag,
                               long start, long length, long depth, bool scaled);
  bool add_image_from_std_picture(IDispatch* picture, const VARIANT& index, Text key, Text tag,
                                  bool scaled);
  bool add_image_from_handle(long handle, const VARIANT& index, Text key, Text tag, bool scaled);

  // Drawing (list_images_draw_win.cpp)
  bool render(const VARIANT& index, long dc, long x, long y, long width, long height, long from_x,
              long from_y, long from_width, long from_height, long opacity, long gray, float light,
              float angle, bool centre, IDispatch* host);
  bool render_range(const VARIANT& first, const VARIANT& last, long dc, long x, long y, long width,
                    long height, long from_x, long from_y, long from_width, long from_height,
                    long opacity, long gray, float light, float angle, bool centre, IDispatch* host,
                    long spacing, bool vertical);
  long extract_icon(const VARIANT& index, VARIANT* depth);
  long extract_icon_ex(const VARIANT& index, bool mirror_x, bool mirror_y, long opacity, long gray,
                       float light, float angle, VARIANT* width, VARIANT* height, VARIANT* depth);

 protected:
  void* find_interface(REFIID iid) override;

 private:
  template <class Load>
  bool add_image(const VARIANT& index, Text key, Text tag, bool scaled, Load load);

  ObjectRef<ImageListsObject> parent_;
  std::shared_ptr<ImageList> list_;
};

class ListImageObject final : public cListImageGlue<ListImageObject, AutomationObject> {
 public:
  ListImageObject(ImageListsObject& parent, std::shared_ptr<ImageList> list, int32_t position)
      : parent_(&parent), list_(std::move(list)), item_(data().ClassDataObject(position)) {}

  std::wstring key() { return text(ItemDatum::Key); }
  void set_key(const std::wstring& key) { set_text(ItemDatum::Key, key); }
  std::wstring tag() { return text(ItemDatum::Tag); }
  void set_tag(const std::wstring& tag) { set_text(ItemDatum::Tag, tag); }
  long index() { return number(ItemDatum::Index); }
  long width() { return number(ItemDatum::Width); }
  long height() { return number(ItemDatum::Height); }
  void draw(long dc, long x, long y, long style);

 private:
  IItemData& data() { return *list_; }
  std::wstring text(ItemDatum which);
  void set_text(ItemDatum which, const std::wstring& text);
  long number(ItemDatum which);

  ObjectRef<ImageListsObject> parent_;
  std::shared_ptr<ImageList> list_;
  std::shared_ptr<ListItem> item_;
};

}  // namespace kestrelon
