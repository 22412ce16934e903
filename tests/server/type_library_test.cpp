#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "host/class_library.h"
#include "tests/library_path.h"
#include "tests/server/type_library_text.h"

namespace kestrelon {
namespace {

const char kDump[] = KESTRELON_SOURCE_DIR "/tests/data/typelib/kestrelon2012.txt";

// A line that changes or goes breaks programs in the field. New classes and members add lines; to
// record them, run this program with KESTRELON_RECORD=1 in the environment and read the difference
// before committing it.
TEST(TypeLibrary, IsTheReleasedContract) {
  const host::ClassLibrary library(library_path());
  const std::string present = describe_type_library(*library.type_library());
  if (std::getenv("KESTRELON_RECORD") != nullptr) {
    std::ofstream(kDump, std::ios::binary) << present;
  }
  std::ifstream file(kDump, std::ios::binary);
  const std::string released(std::istreambuf_iterator<char>(file), {});
  EXPECT_EQ(present, released);
}

TEST(TypeLibrary, BindsEnumerationMembersByTheNameTheDesignerShows) {
  const host::ClassLibrary library(library_path());
  ComPtr<ITypeComp> names;
  ASSERT_EQ(library.type_library()->GetTypeComp(names.put()), S_OK);
  const std::pair<const wchar_t*, long> members[] = {
      {L"Office Blue", 0}, {L"Office Silver", 1}, {L"Windows 8", 2}, {L"Right Justify", 1}};
  for (const auto& [name, value] : members) {
    std::wstring text = name;
    ComPtr<ITypeInfo> info;
    DESCKIND kind = DESCKIND_NONE;
    BINDPTR bound{};
    ASSERT_EQ(names->Bind(text.data(), 0, INVOKE_PROPERTYGET, info.put(), &kind, &bound), S_OK);
    ASSERT_EQ(kind, DESCKIND_VARDESC) << std::string(text.begin(), text.end());
    EXPECT_EQ(V_I4(bound.lpvardesc->lpvarValue), value);
    info->ReleaseVarDesc(bound.lpvardesc);
  }
  BOOL found = FALSE;
  std::wstring spelt = L"Office_Blue";
  EXPECT_EQ(library.type_library()->IsName(spelt.data(), 0, &found), S_OK);
  EXPECT_FALSE(found);
}

TEST(TypeLibrary, DescribesMembersInPortugueseLetters) {
  const host::ClassLibrary library(library_path());
  for (UINT i = 0; i < library.type_library()->GetTypeInfoCount(); ++i) {
    Bstr name, help;
    library.type_library()->GetDocumentation(static_cast<INT>(i), name.put(), help.put(), nullptr,
                                             nullptr);
    if (name.view() == L"ENUM_CHECKBOX_VALUES") {
      EXPECT_EQ(help.view(), L"Estado da caixa de sele\u00e7\u00e3o");
      return;
    }
  }
  FAIL() << "type not found";
}

}  // namespace
}  // namespace kestrelon
