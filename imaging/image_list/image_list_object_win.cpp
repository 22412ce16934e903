#include "imaging/image_list/image_list_object_win.h"

#include "imaging/image_list/list_arguments_win.h"

namespace kestrelon {

ComPtr<_cImageList> list_view(ImageListsObject& parent, std::shared_ptr<ImageList> list) {
  return ObjectRef<ImageListObject>::make(parent, std::move(list)).as<_cImageList>();
}

ComPtr<IUnknown> enumerate(std::vector<ComPtr<IDispatch>> items) {
  std::vector<VARIANT> values(items.size());
  for (size_t i = 0; i < items.size(); ++i) {
    V_VT(&values[i]) = VT_DISPATCH;
    V_DISPATCH(&values[i]) = items[i].detach();
  }
  ComPtr<IUnknown> out;
  out.attach(make_enumerator<IEnumVARIANT>(
      std::move(values),
      [](const VARIANT& from, VARIANT& to) {
        VariantInit(&to);
        VariantCopy(&to, const_cast<VARIANT*>(&from));
      },
      [](VARIANT& value) { VariantClear(&value); }));
  return out;
}

// --- cImageList

void* ImageListObject::find_interface(REFIID iid) {
  if (iid == IID_NativeImageLists) return static_cast<NativeImageLists*>(this);
  return AutomationObject::find_interface(iid);
}

bool ImageListObject::copy_entry(const VARIANT&, const VARIANT& image, c32bppDIB& out) {
  const Hold hold(*this);
  return raising(
      [&] { return list_->extract(list_->resolve(item_index(image), L"Images.Item"), out); });
}

ComPtr<_cListImages> ImageListObject::images() {
  return ObjectRef<ListImagesObject>::make(*parent_, list_).as<_cListImages>();
}

std::wstring ImageListObject::key() {
  return raising([&] { return parent_->lists().ClassDataString(*list_, ItemDatum::Key); });
}

void ImageListObject::set_key(const std::wstring& key) {
  raising([&] { parent_->lists().set_ClassDataString(*list_, ItemDatum::Key, key); });
  parent_->changed();
}

long ImageListObject::index() {
  return raising([&] { return parent_->lists().ClassDataLong(*list_, ItemDatum::Index); });
}

// --- cListImages

void* ListImagesObject::find_interface(REFIID iid) {
  if (iid == IID_NativeImageLists) return static_cast<NativeImageLists*>(this);
  return AutomationObject::find_interface(iid);
}

bool ListImagesObject::copy_entry(const VARIANT&, const VARIANT& image, c32bppDIB& out) {
  const Hold hold(*this);
  return raising(
      [&] { return list_->extract(list_->resolve(item_index(image), L"Images.Item"), out); });
}

ComPtr<_cListImage> ListImagesObject::item(const VARIANT& index) {
  return raising([&] {
    const int32_t position = list_->resolve(item_index(index), L"Images.Item");
    return ObjectRef<ListImageObject>::make(*parent_, list_, position).as<_cListImage>();
  });
}

ComPtr<IUnknown> ListImagesObject::xcom_i_enum() {
  std::vector<ComPtr<IDispatch>> items;
  for (int32_t position = 1; position <= list_->Count(); ++position)
    items.push_back(ObjectRef<ListImageObject>::make(*parent_, list_, position).as<IDispatch>());
  return enumerate(std::move(items));
}

void ListImagesObject::set_delay_loaded(bool on) {
  raising([&] { list_->set_DelayLoaded(on); });
  parent_->changed();
}

void ListImagesObject::remove(const VARIANT& index) {
  raising([&] { list_->Remove(list_->resolve(item_index(index), L"Images.Remove")); });
  parent_->changed();
}

void ListImagesObject::clear() {
  list_->Clear();
  parent_->changed();
}

template <class Load>
bool ListImagesObject::add_image(const VARIANT& index, Text key, Text tag, bool scaled, Load load) {
  std::optional<ItemIndex> before;
  if (!is_omitted(index)) before = item_index(index);
  const auto place = [&] { return list_->place_for(before ? &*before : nullptr, key); };
  raising(place);
  const auto image = ObjectRef<ImageObject>::make();
  if (!load(*image)) return false;
  GdiFlush();
  // A program's own resources come by a call into it, which may have changed this list.
  raising([&] { list_->add(image->native_image(), place(), key, tag, scaled); });
  parent_->changed();
  return true;
}

bool ListImagesObject::add_image_from_stream(const VARIANT& stream, const VARIANT& index, Text key,
                                             Text tag, long start, long length, long depth,
                                             bool scaled) {
  return add_image(index, key, tag, scaled, [&](ImageObject& image) {
    SAFEARRAY* bytes = array_in(stream);
    return image.load_picture_stream(&bytes, list_->Width(), list_->Height(), start, length, false,
                                     depth);
  });
}

bool ListImagesObject::add_image_from_clip_board(const VARIANT& index, Text key, Text tag,
                                                 bool scaled) {
  return add_image(index, key, tag, scaled,
                   [](ImageObject& image) { return image.load_picture_clip_board(); });
}

bool ListImagesObject::add_image_from_file(Text file, const VARIANT& index, Text key, Text tag,
                                           long depth, bool scaled) {
  return add_image(index, key, tag, scaled, [&](ImageObject& image) {
    return image.load_picture_file(file, list_->Width(), list_->Height(), false, depth);
  });
}

bool ListImagesObject::add_image_from_resource(const VARIANT& resource, const VARIANT& section,
                                               const VARIANT& global, const VARIANT& index,
                                               Text key, Text tag, long start, long length,
                                               long depth, bool scaled) {
  return add_image(index, key, tag, scaled, [&](ImageObject& image) {
    return image.load_picture_resource(resource, section, global, list_->Width(), list_->Height(),
                                       start, length, depth);
  });
}

bool ListImagesObject::add_image_from_std_picture(IDispatch* picture, const VARIANT& index,
                                                  Text key, Text tag, bool scaled) {
  return add_image(index, key, tag, scaled,
                   [&](ImageObject& image) { return image.load_picture_std_picture(picture); });
}

bool ListImagesObject::add_image_from_handle(long handle, const VARIANT& index, Text key, Text tag,
                                             bool scaled) {
  return add_image(index, key, tag, scaled,
                   [&](ImageObject& image) { return image.load_picture_by_handle(handle); });
}

// --- cListImage

std::wstring ListImageObject::text(ItemDatum which) {
  return raising([&] { return data().ClassDataString(*item_, which); });
}

void ListImageObject::set_text(ItemDatum which, const std::wstring& text) {
  raising([&] { data().set_ClassDataString(*item_, which, text); });
  parent_->changed();
}

long ListImageObject::number(ItemDatum which) {
  return raising([&] { return data().ClassDataLong(*item_, which); });
}

}  // namespace kestrelon
