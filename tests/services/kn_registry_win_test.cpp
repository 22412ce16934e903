#include "services/registry/kn_registry_win.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/services/service_fixture_win.h"

namespace kestrelon::testing {
namespace {

constexpr wchar_t kScratch[] = L"HKCU\\Software\\KestrelonTest";

class RegistryTest : public ServiceTest {
 protected:
  RegistryTest() { clear(); }
  ~RegistryTest() override {
    clear();
    std::error_code error;
    std::filesystem::remove(file_, error);
  }

  static void clear() { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KestrelonTest"); }
  static std::wstring path(const wchar_t* below = L"") { return std::wstring(kScratch) + below; }

  long write(const std::wstring& key, const std::wstring& name, const std::wstring& value) {
    return number_from([&](long* out) {
      return registry_->WriteString(Bstr(key).get(), Bstr(name).get(), Bstr(value).get(), out);
    });
  }
  std::wstring read(const std::wstring& key, const std::wstring& name) {
    VARIANT missing;
    V_VT(&missing) = VT_ERROR;
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    return text_of([&](BSTR* out) {
      return registry_->ReadString(Bstr(key).get(), Bstr(name).get(), missing, out);
    });
  }
  bool export_to_file(bool escaped) {
    VARIANT none;
    VariantInit(&none);
    return truth_of([&](VARIANT_BOOL* out) {
      return registry_->ExportToReg(Bstr(path()).get(), Bstr(file_.wstring()).get(), VARIANT_TRUE,
                                    none, escaped ? VARIANT_TRUE : VARIANT_FALSE, out);
    });
  }
  bool import_file() {
    return truth_of([&](VARIANT_BOOL* out) {
      return registry_->ImportFromReg(Bstr(file_.wstring()).get(), out);
    });
  }
  std::string file_text() const {
    std::ifstream in(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  // All keys and values below the scratch key, in one text.
  std::string picture() {
    std::filesystem::remove(file_);
    EXPECT_TRUE(export_to_file(true));
    const std::string text = file_text();
    std::filesystem::remove(file_);
    return text;
  }

  ComPtr<_KN_REGISTRY> registry_ = make_service<_KN_REGISTRY, KN_REGISTRY>();
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / L"kestrelon-test.reg";
};

TEST_F(RegistryTest, ValuesOfAnyLengthComeBack) {
  const std::wstring long_text(20000, L'x');
  const std::wstring long_name(3000, L'n');
  EXPECT_NE(write(path(), L"@", L"padrão"), 0);
  EXPECT_NE(write(path(), long_name, long_text), 0);
  EXPECT_EQ(read(path(), L"@"), L"padrão");
  EXPECT_EQ(read(path(), long_name), long_text);
  EXPECT_EQ(read(path(), L"falta"), std::wstring(1, L'\0'));
  long number = 0;
  registry_->WriteDWORD(Bstr(path()).get(), Bstr(L"n").get(), -7, &number);
  EXPECT_NE(number, 0);
  registry_->ReadDWORD(Bstr(path()).get(), Bstr(L"n").get(), -1, &number);
  EXPECT_EQ(number, -7);
  registry_->ReadDWORD(Bstr(path()).get(), Bstr(L"@").get(), -1, &number);
  EXPECT_EQ(number, -1) << "a text is no number";
  EXPECT_EQ(write(L"HKXX\\Software", L"a", L"b"), 0);
  EXPECT_EQ(write(L"", L"a", L"b"), 0);
}

TEST_F(RegistryTest, EnumerationFillsTheCallersArrays) {
  const std::wstring long_key = L"\\" + std::wstring(255, L'k');
  write(path(), L"a", std::wstring(5000, L'v'));
  write(path(), std::wstring(2000, L'b'), L"2");
  write(path() + long_key, L"x", L"y");
  long number = 0;
  registry_->WriteDWORD(Bstr(path()).get(), Bstr(L"n").get(), 5, &number);
  SAFEARRAY* names = nullptr;
  SAFEARRAY* values = SafeArrayCreateVector(VT_VARIANT, 1, 7);  // what was there goes
  registry_->EnumValues(Bstr(path()).get(), &names, &values, -1, &number);
  EXPECT_EQ(number, 3);
  EXPECT_EQ(values->rgsabound[0].cElements, 3u);
  registry_->EnumValues(Bstr(path()).get(), &names, &values, 4, &number);
  ASSERT_EQ(number, 1);
  Variant value;
  LONG index = 0;
  SafeArrayGetElement(values, &index, &value);
  EXPECT_EQ(V_VT(&value), VT_I4);
  EXPECT_EQ(V_I4(&value), 5);
  registry_->EnumKeys(Bstr(path()).get(), &names, &number);
  ASSERT_EQ(number, 1);
  Bstr name;
  SafeArrayGetElement(names, &index, name.put());
  EXPECT_EQ(name.view().size(), 255u);
  registry_->EnumKeys(Bstr(path(L"\\falta")).get(), &names, &number);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(names->rgsabound[0].cElements, 0u);
  EXPECT_TRUE(
      truth_of([&](VARIANT_BOOL* out) { return registry_->HaveSubkey(Bstr(path()).get(), out); }));
  SafeArrayDestroy(names);
  SafeArrayDestroy(values);
}

TEST_F(RegistryTest, ABranchComesBackFromItsExport) {
  write(path(), L"@", L"aspas \" e \\");
  write(path(), L"texto", L"C:\\x\r\nação");
  write(path(L"\\Filha\\Neta"), L"n=\"x", L"");
  long number = 0;
  registry_->WriteDWORD(Bstr(path(L"\\Filha")).get(), Bstr(L"d").get(), 0x7FFFFFFF, &number);
  registry_->WriteBinary(Bstr(path(L"\\Filha")).get(), Bstr(L"b").get(), Bstr(L"00 0d 0A ff").get(),
                         &number);
  const wchar_t list[] = L"um\0dois\0";
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\KestrelonTest\\Filha", L"lista", REG_MULTI_SZ,
                  list, sizeof list);
  const std::string before = picture();
  ASSERT_TRUE(export_to_file(true));
  clear();
  EXPECT_TRUE(import_file());
  EXPECT_EQ(picture(), before);
}

TEST_F(RegistryTest, ABranchBeyondTheCodePageGoesIntoAWideFile) {
  const std::wstring word = L"漢字 ж \xD83D\xDE00";
  write(path(L"\\ж"), word, word);
  EXPECT_EQ(read(path(L"\\ж"), word), word);
  const wchar_t list[] = L"漢\0b\0";
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\KestrelonTest", L"lista", REG_MULTI_SZ, list,
                  sizeof list);
  const std::string before = picture();
  EXPECT_TRUE(before.starts_with(std::string("\xFF\xFER\0E\0", 6)));
  for (const bool escaped : {false, true}) {
    ASSERT_TRUE(export_to_file(escaped));
    clear();
    EXPECT_TRUE(import_file());
    EXPECT_EQ(read(path(L"\\ж"), word), word) << escaped;
    std::filesystem::remove(file_);
  }
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\KestrelonTest", L"lista", REG_MULTI_SZ, list,
                  sizeof list);
  EXPECT_EQ(picture(), before);
}

TEST_F(RegistryTest, EachViewHasItsOwnKeys) {
  const std::wstring key = L"HKLM\\Software\\KestrelonTest";
  const auto exists = [&](ENUM_REGISTRY_VIEW view) {
    EXPECT_EQ(registry_->put_RegistryView(view), S_OK);
    return truth_of([&](VARIANT_BOOL* out) { return registry_->KeyExists(Bstr(key).get(), out); });
  };
  const auto kill = [&](ENUM_REGISTRY_VIEW view) {
    registry_->put_RegistryView(view);
    return number_from([&](long* out) { return registry_->KillKey(Bstr(key).get(), out); });
  };
  kill(View_32_Bits);
  kill(View_64_Bits);
  registry_->put_RegistryView(View_64_Bits);
  ASSERT_NE(write(key, L"a", L"64"), 0);
  SYSTEM_INFO info;
  GetNativeSystemInfo(&info);
  const bool has_two = info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64;
  EXPECT_EQ(exists(View_32_Bits), !has_two);
  EXPECT_EQ(exists(View_Default), !has_two || sizeof(void*) == 8);
  registry_->put_RegistryView(static_cast<ENUM_REGISTRY_VIEW>(16));
  ENUM_REGISTRY_VIEW view = View_64_Bits;
  EXPECT_EQ(registry_->get_RegistryView(&view), S_OK);
  EXPECT_EQ(view, View_Default) << "a view that there is not changes nothing";
  EXPECT_NE(kill(View_64_Bits), 0);
  EXPECT_FALSE(exists(View_64_Bits));
}

TEST_F(RegistryTest, AnExportNeverOverwritesAndShowsItsProgress) {
  write(path(), L"a", L"b");
  { std::ofstream(file_) << "x"; }
  EXPECT_FALSE(export_to_file(false));
  EXPECT_EQ(file_text(), "x");
  std::filesystem::remove(file_);
  EXPECT_TRUE(export_to_file(false));
  EXPECT_EQ(file_text(),
            "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\KestrelonTest]\r\n\"a\"=\"b\"\r\n\r\n");
  std::filesystem::remove(file_);
  EXPECT_FALSE(import_file());
}

TEST_F(RegistryTest, KeysAndValuesAreDeleted) {
  write(path(L"\\a"), L"v", L"1");
  const auto kill = [&](const std::wstring& key) {
    return number_from([&](long* out) { return registry_->KillKey(Bstr(key).get(), out); });
  };
  EXPECT_EQ(kill(path()), 0) << "it has a subkey";
  long handle = 0;
  registry_->KillValue(Bstr(path(L"\\a")).get(), Bstr(L"v").get(), &handle);
  EXPECT_NE(handle, 0);
  EXPECT_FALSE(truth_of([&](VARIANT_BOOL* out) {
    return registry_->ValueExists(Bstr(path(L"\\a")).get(), Bstr(L"v").get(), out);
  }));
  EXPECT_NE(kill(path(L"\\a")), 0);
  EXPECT_NE(kill(path()), 0);
  EXPECT_FALSE(
      truth_of([&](VARIANT_BOOL* out) { return registry_->KeyExists(Bstr(path()).get(), out); }));
  EXPECT_EQ(kill(L"HKCU"), 0) << "a root is never emptied";
  registry_->put_CreateKeyIfDoesntExists(VARIANT_FALSE);
  EXPECT_EQ(write(path(), L"a", L"b"), 0);
}

TEST_F(RegistryTest, BinaryTextHoldsEveryByte) {
  std::wstring all;
  for (wchar_t c = 0; c < 256; ++c) all.push_back(c);
  const std::wstring hex =
      text_of([&](BSTR* out) { return registry_->BinToStr(Bstr(all).get(), out); });
  EXPECT_TRUE(hex.starts_with(L"00 01 02"));
  EXPECT_EQ(text_of([&](BSTR* out) { return registry_->StrToBin(Bstr(hex).get(), out); }), all);
  EXPECT_TRUE(
      truth_of([&](VARIANT_BOOL* out) { return registry_->isBinValid(Bstr(hex).get(), out); }));
  EXPECT_FALSE(
      truth_of([&](VARIANT_BOOL* out) { return registry_->isBinValid(Bstr(L"0G").get(), out); }));
}

}  // namespace
}  // namespace kestrelon::testing
