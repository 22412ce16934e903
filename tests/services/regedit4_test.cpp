#include "services/registry/regedit4.h"

#include <gtest/gtest.h>

#include "services/registry/binary_text.h"
#include "tests/services/registry_fake.h"

namespace kestrelon::testing {
namespace {

class Regedit4Test : public ::testing::Test {
 protected:
  std::string exported(const RegExportOptions& options = {}) {
    std::string out;
    EXPECT_TRUE(export_registry(registry_, "HKCU\\Loja", options,
                                [&out](std::string_view piece) { return out += piece, true; }));
    return out;
  }
  bool import(const std::string& body) {
    return import_registry(registry_, "REGEDIT4\r\n\r\n" + body);
  }
  std::optional<std::string> text(const std::string& name, const std::string& key = "HKCU\\Loja") {
    return registry_.read_string(key, name);
  }

  FakeRegistry store_;
  RegistryService registry_{store_};
};

void fill_awkward(RegistryService& registry) {
  registry.write_string("HKCU\\Loja", "@", "pad\"r\\ao");
  registry.write_string("HKCU\\Loja", "no\\me=\"x\"=", "C:\\pasta\\");
  registry.write_string("HKCU\\Loja", "linhas", "a\r\n[HKEY_CURRENT_USER\\x]\r\nb");
  registry.write_string("HKCU\\Loja", "vazio", "");
  registry.write_string("HKCU\\Loja", "espaços", "  fim  ");
  registry.write_double_word("HKCU\\Loja", "negativo", -2);
  registry.write_binary("HKCU\\Loja", "bytes", "00 FF 0a");
  registry.write("HKCU\\Loja", "lista", 7, std::string("um\0dois\0\0", 9));
  registry.write("HKCU\\Loja", "expande", 2, "%TEMP%\\x");
  registry.write("HKCU\\Loja", "nada", 0, "");
  registry.write("HKCU\\Loja", "curto", 4, "x");
  registry.write("HKCU\\Loja\\Filha", "@", 3, "binário padrão");
  registry.create_key("HKCU\\Loja\\a\"b[c]");
}

TEST_F(Regedit4Test, APlainExportIsGroupedByKindAndEscapesNothing) {
  registry_.write_double_word("HKCU\\Loja", "a", 255);
  registry_.write_string("HKCU\\Loja", "z", "C:\\x \"y\"");
  registry_.write_binary("HKCU\\Loja", "b", "0A FF");
  registry_.write("HKCU\\Loja", "fora", 7, "x");
  registry_.write_string("HKCU\\Loja", "@", "");
  registry_.create_key("HKCU\\Loja\\Filha");
  std::vector<std::string> shown;
  RegExportOptions options;
  options.on_key = [&](const std::string& path) { shown.push_back(path); };
  EXPECT_EQ(exported(options),
            "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Loja]\r\n@=\"\"\r\n\"z\"=\"C:\\x \"y\"\"\r\n"
            "\"b\"=hex:0A,FF\r\n\"a\"=dword:000000FF\r\n\r\n"
            "[HKEY_CURRENT_USER\\Loja\\Filha]\r\n\r\n");
  EXPECT_EQ(shown, (std::vector<std::string>{"HKEY_CURRENT_USER\\Loja",
                                             "HKEY_CURRENT_USER\\Loja\\Filha"}));
  options.subkeys = false;
  EXPECT_EQ(exported(options).find("Filha"), std::string::npos);
}

TEST_F(Regedit4Test, TheEscapedFormCarriesEverything) {
  fill_awkward(registry_);
  const auto before = store_.keys;
  RegExportOptions options;
  options.escaped = true;
  const std::string file = exported(options);
  store_.keys.clear();
  registry_.creates_missing_keys = false;
  ASSERT_TRUE(import_registry(registry_, file));
  EXPECT_FALSE(registry_.creates_missing_keys) << "the flag is given back";
  auto after = store_.keys;
  after.erase(std::to_string(0x80000001u) + "\\");  // made on the way
  auto expected = before;
  expected.erase(std::to_string(0x80000001u) + "\\");
  EXPECT_EQ(after, expected);
}

TEST_F(Regedit4Test, TheFileHasTextsInItsOwnCode) {
  fill_awkward(registry_);
  registry_.write_string("HKCU\\Loja\\\xE6\xBC\xA2", "\xD0\xB6", "\xF0\x9F\x98\x80\r\n=");
  registry_.write("HKCU\\Loja", "muitos", 7, std::string("\xE6\xBC\xA2\0b\0\0", 7));
  const auto before = store_.keys;
  const Utf16FileCode code;
  RegExportOptions options;
  options.escaped = true;
  options.code = &code;
  const std::string file = exported(options);
  EXPECT_EQ(file.substr(0, 6), std::string("R\0E\0G\0", 6));
  EXPECT_NE(code.decode(file).find("hex(7):22,6F,00,00,62,00,00,00,00,00"), std::string::npos);
  store_.keys.clear();
  ASSERT_TRUE(import_registry(registry_, code.decode(file), code));
  for (const auto& [key, values] : before) EXPECT_EQ(store_.keys[key], values) << key;
}

// A code without letters beyond ASCII, as a machine's page lacks those of other scripts.
class AsciiCode final : public RegFileCode {
 public:
  std::optional<std::string> encode(std::string_view text) const override {
    for (const char c : text)
      if (static_cast<unsigned char>(c) > 0x7F) return std::nullopt;
    return std::string(text);
  }
};

TEST_F(Regedit4Test, AnExportThatWouldLoseALetterFails) {
  const AsciiCode code;
  RegExportOptions options;
  options.code = &code;
  const auto succeeds = [&] {
    return export_registry(registry_, "HKCU\\Loja", options, [](std::string_view) { return true; });
  };
  registry_.write_string("HKCU\\Loja", "a", "b");
  EXPECT_TRUE(succeeds());
  registry_.write("HKCU\\Loja", "m", 7, "\xC3\xA7");
  EXPECT_TRUE(succeeds()) << "of a kind that the plain form leaves out";
  options.escaped = true;
  EXPECT_FALSE(succeeds());
  registry_.delete_value("HKCU\\Loja", "m");
  registry_.write("HKCU\\Loja", "bytes", 3, "\xC3\xA7");
  EXPECT_TRUE(succeeds()) << "bytes are no text";
  registry_.create_key("HKCU\\Loja\\\xC3\xA7");
  EXPECT_FALSE(succeeds());
}

TEST_F(Regedit4Test, CommonValuesComeBackFromThePlainForm) {
  registry_.write_string("HKCU\\Loja", "@", "padrão");
  registry_.write_string("HKCU\\Loja", "caminho", "C:\\pasta\\");
  registry_.write_double_word("HKCU\\Loja", "n", -2147483647);
  registry_.write_binary("HKCU\\Loja", "b", "");
  registry_.write_string("HKCU\\Loja\\Filha", "x=y", "1=2");
  const auto before = store_.keys;
  const std::string file = exported();
  store_.keys.clear();
  ASSERT_TRUE(import_registry(registry_, file));
  EXPECT_EQ(store_.keys, before);
}

TEST_F(Regedit4Test, LinesOfOtherWritersAreRead) {
  ASSERT_TRUE(
      import("[hkey_current_user\\Loja]\r\n; um comentário = nada\r\n\"h\"=HEX:01,02,\\\r\n"
             "  03,04\r\n\"e\"=hex(2):25,41,00\r\n\"m\"=hex(7):61,00,00\r\n"
             "\"d\"=DWORD:FFFFFFFE\r\n  \"t\" = \"x\"  \r\n\"t2\"=\"C:\\\\x\"\r\n"
             "solto\r\nsem=aspas\r\n\"s\"=abc\r\n[HKCU\\So]"));
  EXPECT_EQ(registry_.read_binary("HKCU\\Loja", "h"), "01 02 03 04");
  EXPECT_EQ(registry_.value("HKCU\\Loja", "e")->type, 2u);
  EXPECT_EQ(registry_.value("HKCU\\Loja", "m")->data, std::string("a\0\0", 3));
  EXPECT_EQ(registry_.read_double_word("HKCU\\Loja", "d"), -2);
  EXPECT_EQ(text("t2"), "C:\\\\x") << "escapes are text in a file without our mark";
  EXPECT_EQ(text("s"), std::nullopt);
  EXPECT_EQ(text("t"), "x");
  EXPECT_EQ(registry_.values("HKCU\\Loja").size(), 6u);
  EXPECT_TRUE(registry_.key_exists("HKCU\\So"));
}

TEST_F(Regedit4Test, BlanksAndCommentsAroundValuesAreNoPartOfThem) {
  ASSERT_TRUE(
      import("[HKCU\\Loja]\r\n\"a\" = \"b\" ; fim\r\n\"n\" = dword:1 ; um\r\n\"h\"=hex:01,02 ;x\r\n"
             "\"p\"=\"x;y\"\r\n\"q\"=\"\" ;\"z\r\n@=\"d\";e\r\n"));
  EXPECT_EQ(text("a"), "b");
  EXPECT_EQ(registry_.read_double_word("HKCU\\Loja", "n"), 1);
  EXPECT_EQ(registry_.read_binary("HKCU\\Loja", "h"), "01 02");
  EXPECT_EQ(text("p"), "x;y");
  EXPECT_EQ(text("@"), "d");
}

TEST_F(Regedit4Test, DeletionsTakeTheNamedValueOrKey) {
  registry_.write_string("HKCU\\Loja", "@", "x");
  registry_.write_string("HKCU\\Loja", "a", "x");
  registry_.write_string("HKCU\\Loja\\Filha", "b", "x");
  ASSERT_TRUE(import("[HKCU\\Loja]\r\n\"@\"=-\r\n\"a\"=-\r\n\"n\"=\r\n"));
  EXPECT_EQ(text("@"), "x");
  EXPECT_EQ(text("a"), std::nullopt);
  ASSERT_TRUE(import("[-HKCU\\Loja\\Filha]\r\n\"b\"=\"não escrito\"\r\n[HKCU\\Loja]\r\n@=\r\n"));
  EXPECT_FALSE(registry_.key_exists("HKCU\\Loja\\Filha"));
  EXPECT_EQ(text("@"), std::nullopt);
  registry_.write_string("HKCU\\Loja", "@", "x");
  ASSERT_TRUE(import("[HKCU\\Loja]\r\n@=-"));
  EXPECT_EQ(text("@"), std::nullopt);
}

TEST_F(Regedit4Test, AnotherHeadOrABrokenNumberIsRefused) {
  registry_.creates_missing_keys = false;
  EXPECT_FALSE(import_registry(registry_, "Windows Registry Editor Version 5.00\r\n"));
  EXPECT_FALSE(import_registry(registry_, "REGEDIT4\n[HKCU\\x]\n"));
  EXPECT_FALSE(import_registry(registry_, ""));
  EXPECT_FALSE(registry_.creates_missing_keys);
  EXPECT_TRUE(import_registry(registry_, "regedit4"));
  EXPECT_FALSE(import("[HKCU\\Loja]\r\n\"a\"=\"1\"\r\n\"n\"=dword:123456789\r\n\"b\"=\"2\""));
  EXPECT_EQ(text("a"), "1");
  EXPECT_EQ(text("b"), std::nullopt);
  EXPECT_TRUE(registry_.creates_missing_keys) << "stays set after a failure inside";
}

TEST_F(Regedit4Test, AFileCutAtAnyByteWritesOnlyWholeValues) {
  fill_awkward(registry_);
  registry_.write_binary("HKCU\\Loja", "longo", std::string(300, 'A'));
  const auto whole = store_.keys;
  for (const bool escaped : {false, true}) {
    RegExportOptions options;
    options.escaped = escaped;
    store_.keys = whole;
    const std::string file = exported(options);
    for (size_t length = 0; length < file.size(); ++length) {
      store_.keys.clear();
      import_registry(registry_, std::string_view(file).substr(0, length));
      // Text and numbers that were written are whole; lists of bytes may end early.
      for (const auto& [key, values] : store_.keys)
        for (const auto& [name, value] : values)
          if (escaped && whole.count(key) != 0 && (value.first == 1 || value.first == 4) &&
              name != "linhas" && name != "curto") {
            ASSERT_TRUE(whole.at(key).count(name)) << length << name;
            ASSERT_EQ(whole.at(key).at(name), value) << length;
          }
    }
  }
}

TEST(RegistryPath, RootsAreReadLongOrShortAtTheStartOnly) {
  const auto root = [](std::string_view path) { return split_registry_path(path).root; };
  EXPECT_EQ(root("hkey_users\\a"), RegistryRoot::kUsers);
  EXPECT_EQ(root("HKUS"), RegistryRoot::kUsers);
  EXPECT_EQ(root("HKPD\\"), RegistryRoot::kPerformanceData);
  EXPECT_EQ(root("HKDDxyz\\a"), RegistryRoot::kDynData) << "four characters tell";
  EXPECT_EQ(root("HKDDxyz"), RegistryRoot::kNone);
  EXPECT_EQ(root("HKEY_CURRENT_USERS\\a"), RegistryRoot::kNone);
  EXPECT_EQ(root(""), RegistryRoot::kNone);
  EXPECT_EQ(split_registry_path("HKCU\\a\\HKEY_CURRENT_USER").sub_path, "a\\HKEY_CURRENT_USER");
  EXPECT_EQ(long_registry_path("hkcc\\HKCU\\x"), "HKEY_CURRENT_CONFIG\\HKCU\\x");
  EXPECT_EQ(long_registry_path("HKCUx\\y"), "HKCUx\\y");
}

TEST(RegistryService, WritersMakeKeysOnlyWhenAllowed) {
  FakeRegistry store;
  RegistryService registry(store);
  registry.creates_missing_keys = false;
  EXPECT_EQ(registry.write_string("HKCU\\a", "x", "1"), 0);
  EXPECT_FALSE(registry.key_exists("HKCU\\a"));
  registry.creates_missing_keys = true;
  EXPECT_NE(registry.write_string("HKCU\\a", "x", "1"), 0);
  EXPECT_EQ(registry.write_string("XXXX\\a", "x", "1"), 0);
  EXPECT_EQ(registry.write_binary("HKCU\\a", "b", "0"), 0);
  EXPECT_EQ(registry.read_double_word("HKCU\\a", "x"), std::nullopt) << "of another kind";
}

TEST(RegistryService, AShellAssociationWritesItsFiveKeys) {
  FakeRegistry store;
  RegistryService registry(store);
  EXPECT_NE(registry.add_shell("KXT", "Texto", "abrir", "&Abrir", "a.exe %1", "a.exe,0"), 0);
  EXPECT_EQ(registry.read_string("HKCR\\.kxt", "@"), "kxtfile");
  EXPECT_EQ(registry.read_string("HKCR\\kxtfile", "@"), "Texto");
  EXPECT_EQ(registry.read_string("HKCR\\kxtfile\\shell\\abrir", "@"), "&Abrir");
  EXPECT_EQ(registry.read_string("HKCR\\kxtfile\\shell\\abrir\\command", "@"), "a.exe %1");
  EXPECT_EQ(registry.read_string("HKCR\\kxtfile\\DefaultIcon", "@"), "a.exe,0");
}

TEST(BinaryText, PairsMayBePartedByBlanksOrCommas) {
  EXPECT_EQ(hex_text_to_bytes("0a,FF 00"), std::string("\x0A\xFF\x00", 3));
  EXPECT_EQ(bytes_to_hex_text(std::string("\x0A\xFF\x00", 3)), "0A FF 00");
  for (const char* bad : {"0", "0a0", "0 a", "zz", "0a;0b", "0a,0"})
    EXPECT_EQ(hex_text_to_bytes(bad), std::nullopt) << bad;
}

}  // namespace
}  // namespace kestrelon::testing
