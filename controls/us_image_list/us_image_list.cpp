#include "controls/us_image_list/us_image_list.h"

#include "base/resource_ids.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/dib_win.h"
#include "imaging/image_list/image_list_object_win.h"

namespace kestrelon {
namespace {

constexpr int kSide = 38;  // pixels, in the designer
constexpr int kIconSide = 32;

ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_INVISIBLEATRUNTIME;
  out.initial_pixels = {kSide, kSide};
  return out;
}

}  // namespace

USImageList::USImageList() : USImageListGlue(traits()) {
  lists_->set_owner(this);
}

USImageList::~USImageList() {
  lists_->set_owner(nullptr);  // a script may hold the collection longer
}

void* USImageList::find_interface(REFIID iid) {
  if (iid == IID_NativeImageLists) return static_cast<NativeImageLists*>(this);
  return ControlFrame::find_interface(iid);
}

bool USImageList::copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) {
  return lists_->copy_entry(list, image, out);
}

long USImageList::image_width() {
  return lists_->lists().Count() > 0 ? lists_->lists().Item(1)->Width() : 0;
}

long USImageList::image_height() {
  return lists_->lists().Count() > 0 ? lists_->lists().Item(1)->Height() : 0;
}

ComPtr<_cListImages> USImageList::list_images() {
  if (lists_->lists().Count() == 0) return {};
  return ObjectRef<ListImagesObject>::make(*lists_, lists_->lists().Item(1)).as<_cListImages>();
}

void USImageList::lists_changed() {
  const Hold hold(*this);
  ++changes_;
  property_changed(L"UpdateLists");
  raise_update_lists();
}

Variant USImageList::ListsProperty::empty_value() const {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  return out;
}

void USImageList::ListsProperty::load(const VARIANT& value) {
  const ArrayBytes bytes(array_in(value), 1);
  lists_->lists().load(bytes.bytes());
}

Variant USImageList::ListsProperty::save() const {
  Variant out;
  std::vector<uint8_t> bytes;
  try {
    bytes = lists_->lists().save();
  } catch (const ImageListError&) {
    throw ComError(E_OUTOFMEMORY);
  }
  give_bytes(out.put(), bytes);
  return out;
}

void USImageList::resized() {
  if (!user_mode() && (width() != kSide || height() != kSide)) request_size(kSide, kSide);
  draw();
}

void USImageList::draw() {
  if (!surface()) return;
  surface().clear(static_cast<ColorRef>(GetSysColor(COLOR_BTNFACE)));
  RECT edge{0, 0, width(), height()};
  DrawEdge(surface().dc(), &edge, BDR_RAISEDOUTER | BDR_RAISEDINNER, BF_RECT);
  WindowsImage picture;
  if (load_resource_image(picture, IDP_IMAGE_LIST, RT_RCDATA))
    render_to_dc(picture, surface().dc(), (width() - kIconSide) / 2, (height() - kIconSide) / 2);
  surface_changed();
}

}  // namespace kestrelon
