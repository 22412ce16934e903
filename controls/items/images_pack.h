// The properties by which a control gets the images of its items.
#pragma once

#include <string>
#include <utility>

#include "controls/items/item_images.h"
#include "frame/property.h"

namespace kestrelon {

/// Base must have relayout() and extender().
template <class Base>
class ImagesPack : public Base {
 public:
  using Base::Base;

  Property<std::wstring> ImageListName{*this, L"ImageListName", L"", &ImagesPack::source_changed};
  Property<std::wstring> ImageListKey{*this, L"ImageListKey", L"", &ImagesPack::key_changed};

  ComPtr<IDispatch> image_list() const { return images_.object(); }
  void set_image_list(IDispatch* object) {
    images_.set_object(ComPtr<IDispatch>(object));
    this->relayout();
  }

 protected:
  void images_read() {
    images_.set_key(ImageListKey.get());
    images_.set_form_source(ImageListName.get());
  }
  const c32bppDIB* image_of(int32_t number) {
    return number == 0 || !images_.has_source() ? nullptr
                                                : images_.find(number, this->extender().get());
  }
  SIZE image_size() { return images_.has_source() ? images_.size(this->extender().get()) : SIZE{}; }
  ItemImages& images() { return images_; }
  const ItemImages& images() const { return images_; }

 private:
  void source_changed() {
    images_.set_form_source(ImageListName.get());
    this->relayout();
  }
  void key_changed() {
    images_.set_key(ImageListKey.get());
    this->relayout();
  }

  ItemImages images_{[this] { this->relayout(); }};
};

}  // namespace kestrelon
