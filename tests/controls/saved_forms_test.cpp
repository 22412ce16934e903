// Property bags as forms of released versions hold them, tests/data/bags/CLASS.txt: every control
// must go on reading them whole and write the same keys in the same order.
#include <cstdlib>
#include <filesystem>

#include "host/property_text.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

const std::filesystem::path kBags(KESTRELON_SOURCE_DIR "/tests/data/bags");

// The classes that a designer lists as controls.
std::vector<std::string> control_classes() {
  ComPtr<ITypeLib> types;
  if (FAILED(LoadTypeLibEx(library_path().c_str(), REGKIND_NONE, types.put()))) return {};
  std::vector<std::string> out;
  for (UINT i = 0; i < types->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(types->GetTypeInfo(i, info.put())) || FAILED(info->GetTypeAttr(&attributes)))
      continue;
    const bool control = (attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0;
    info->ReleaseTypeAttr(attributes);
    Bstr name;
    if (control && SUCCEEDED(types->GetDocumentation(static_cast<INT>(i), name.put(), nullptr,
                                                     nullptr, nullptr)))
      out.push_back(std::filesystem::path(to_wstring(name.get())).string());
  }
  return out;
}

class SavedFormsTest : public ControlTest, public testing::WithParamInterface<std::string> {};

TEST_P(SavedFormsTest, LoadsTheBagOfAnEarlierBuildAndWritesTheSameOne) {
  const std::filesystem::path path = kBags / (GetParam() + ".txt");
  const std::wstring class_name = std::filesystem::path(GetParam()).wstring();
  if (!std::filesystem::exists(path) && std::getenv("KESTRELON_RECORD") != nullptr) {
    // A new class: what it writes today is what it must go on reading. Look at it before it counts.
    const auto fresh = make_com<PropertyBag>();
    const auto made = place(class_name, RECT{10, 10, 130, 60});
    query<IPersistPropertyBag>(made->control())->Save(fresh.get(), TRUE, TRUE);
    save_property_file(path.wstring(), fresh->entries());
  }
  ASSERT_TRUE(std::filesystem::exists(path)) << "no saved form of " << GetParam();
  const auto saved = load_property_file(path.wstring());
  const auto bag = make_com<PropertyBag>(saved);
  const auto site = place(class_name, RECT{10, 10, 130, 60}, bag.get());
  const auto written = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(written.get(), TRUE, TRUE), S_OK);
  EXPECT_EQ(to_property_text(written->entries()), to_property_text(saved));
}

INSTANTIATE_TEST_SUITE_P(Controls, SavedFormsTest, testing::ValuesIn(control_classes()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace kestrelon::host
