// Registration-free use: the external manifest beside the library and the one inside it.
#include <gtest/gtest.h>
#include <windows.h>
//
#include <ole2.h>

#include "base/com_win.h"
#include "contract/us_check_box.h"
#include "tests/library_path.h"

namespace kestrelon {
namespace {

struct ManifestSource {
  const char* name;
  std::wstring file;
  bool embedded;
};

class ManifestTest : public testing::TestWithParam<ManifestSource> {};

TEST_P(ManifestTest, CreatesAControlByItsName) {
  OleInitialize(nullptr);
  ACTCTXW source{};
  source.cbSize = sizeof source;
  const std::wstring folder = library_path().substr(0, library_path().rfind(L'\\') + 1);
  const std::wstring file = folder + GetParam().file;
  source.lpSource = file.c_str();
  if (GetParam().embedded) {
    source.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    source.lpResourceName = MAKEINTRESOURCEW(1);
  }
  const HANDLE context = CreateActCtxW(&source);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
  ULONG_PTR cookie = 0;
  ASSERT_TRUE(ActivateActCtx(context, &cookie));
  CLSID clsid{};
  EXPECT_EQ(CLSIDFromProgID(L"Kestrelon2012.USCheckBox", &clsid), S_OK);
  // The context answers with an id of its own making; the registry would answer with the real one.
  EXPECT_NE(clsid, CLSID_USCheckBox);
  {
    ComPtr<IDispatch> control;
    EXPECT_EQ(
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.put_void()),
        S_OK);
    ComPtr<::_USCheckBox> check_box = control.as<::_USCheckBox>();
    ASSERT_TRUE(check_box);
    ENUM_THEME theme = Office_Blue;
    EXPECT_EQ(check_box->get_Theme(&theme), S_OK);
    EXPECT_EQ(theme, Windows_8);
  }
  DeactivateActCtx(0, cookie);
  ReleaseActCtx(context);
  OleUninitialize();
}

INSTANTIATE_TEST_SUITE_P(Sources, ManifestTest,
                         testing::Values(ManifestSource{"External", L"Kestrelon2012.manifest",
                                                        false},
                                         ManifestSource{"Embedded", L"kestrelon2012.ocx", true}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace kestrelon
