#include "host/drawn_item.h"

namespace kestrelon::host {

DrawnItem::DrawnItem(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds,
                     Painter painter)
    : FormItem(form, container, std::move(name), bounds),
      painter_(std::move(painter)),
      dispatch_(make_com<ItemDispatch>(*this, L"Drawing")) {}

}  // namespace kestrelon::host
