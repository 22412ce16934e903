// Four texts that a program may attach to a control.
#pragma once

#include "controls/items/item_control.h"

namespace kestrelon {

class TaggedControl : public ItemControl {
 public:
  using ItemControl::ItemControl;

  Property<std::wstring> AditionalTag1{*this, L"AditionalTag1", L""};
  Property<std::wstring> AditionalTag2{*this, L"AditionalTag2", L""};
  Property<std::wstring> AditionalTag3{*this, L"AditionalTag3", L""};
  Property<std::wstring> AditionalTag4{*this, L"AditionalTag4", L""};
};

}  // namespace kestrelon
