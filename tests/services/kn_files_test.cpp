#include "services/kn_files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "services/kn_paths.h"
#include "services/kn_random.h"
#include "tests/services/kn_fake_platform.h"

namespace kestrelon {
namespace {

TEST(Paths, GiveExtensionAndFolder) {
  const struct {
    const wchar_t *path, *extension, *folder;
  } cases[] = {{L"C:\\a\\b.txt", L"txt", L"C:\\a\\"},
               {L"b.tar.gz", L"gz", L""},
               {L"C:\\a.b\\c", L"", L"C:\\a.b\\"},
               {L"C:\\a\\.b", L"b", L"C:\\a\\"},
               {L"C:\\a\\b.", L"", L"C:\\a\\"},
               {L"", L"", L""},
               {L"C:\\", L"", L"C:\\"},
               {L"\\\\s\\t\\é.ção", L"ção", L"\\\\s\\t\\"}};
  for (const auto& c : cases) {
    EXPECT_EQ(file_extension(c.path), c.extension);
    EXPECT_EQ(folder_part(c.path), c.folder);
  }
}

TEST(Paths, ListTheFoldersThatCanBeMade) {
  using Levels = std::vector<std::wstring>;
  EXPECT_EQ(folder_levels(L"C:\\a\\b\\"), (Levels{L"C:\\a", L"C:\\a\\b"}));
  EXPECT_EQ(folder_levels(L"a/b\\\\c"), (Levels{L"a", L"a/b", L"a/b\\\\c"}));
  EXPECT_EQ(folder_levels(L"\\a"), (Levels{L"\\a"}));
  EXPECT_EQ(folder_levels(L"C:a"), (Levels{L"C:a"}));
  EXPECT_EQ(folder_levels(L"\\\\server\\share\\a\\b"),
            (Levels{L"\\\\server\\share\\a", L"\\\\server\\share\\a\\b"}));
  EXPECT_EQ(folder_levels(L"\\\\?\\UNC\\server\\share\\a"),
            (Levels{L"\\\\?\\UNC\\server\\share\\a"}));
  EXPECT_EQ(folder_levels(L"\\\\?\\C:\\a"), (Levels{L"\\\\?\\C:\\a"}));
  for (const wchar_t* root :
       {L"", L"C:\\", L"C:", L"\\", L"\\\\server\\share", L"\\\\server", L"\\\\"})
    EXPECT_EQ(folder_levels(root), Levels{}) << testing::PrintToString(std::wstring(root));
  EXPECT_EQ(without_trailing_separator(L"C:\\a\\\\"), L"C:\\a");
  EXPECT_EQ(without_trailing_separator(L"C:\\"), L"C:\\");
  EXPECT_EQ(without_trailing_separator(L"\\\\s\\t\\"), L"\\\\s\\t");
}

TEST(FileName, HoldsNoForbiddenCharacter) {
  EXPECT_TRUE(is_valid_file_name(L"Relatório 2026 (1).txt"));
  EXPECT_FALSE(is_valid_file_name(L""));
  EXPECT_FALSE(is_valid_file_name(L"  "));
  for (const wchar_t c : std::wstring_view(L"\\/:*?\"<>|\r\n")) {
    for (const std::wstring& name :
         {std::wstring(1, c) + L"ab", L"a" + std::wstring(1, c) + L"b", L"ab" + std::wstring(1, c)})
      EXPECT_FALSE(is_valid_file_name(name));
  }
}

TEST(BrowsableUrl, IsNoPathOfAProgram) {
  EXPECT_EQ(browsable_url(L" https://exemplo.com.br/?a=1 "), L"https://exemplo.com.br/?a=1");
  EXPECT_EQ(browsable_url(L"MAILTO:a@b.com"), L"MAILTO:a@b.com");
  EXPECT_EQ(browsable_url(L"WWW.exemplo.com"), L"http://WWW.exemplo.com");
  for (const wchar_t* none : {L"", L"calc.exe", L"C:\\a.exe", L"c:a", L"://x", L"http:", L"9a:b",
                              L"\\\\s\\t:x", L"a b:c"})
    EXPECT_EQ(browsable_url(none), L"") << testing::PrintToString(std::wstring(none));
}

TEST(Files, AreToldFromFolders) {
  FakePlatform machine;
  machine.files[L"C:\\a\\f"] = content_of("x");
  machine.folders = {L"C:\\", L"C:\\a"};
  EXPECT_TRUE(file_exists(machine, L" C:\\a\\f "));
  EXPECT_FALSE(file_exists(machine, L"C:\\a"));
  EXPECT_FALSE(file_exists(machine, L"C:\\a\\g"));
  EXPECT_FALSE(file_exists(machine, L"   "));
  EXPECT_TRUE(file_exists(machine, L"C:\\a", true));
  EXPECT_TRUE(file_exists(machine, L"C:\\a\\", true));
  EXPECT_TRUE(file_exists(machine, L"C:\\", true));
  EXPECT_FALSE(file_exists(machine, L"C:\\a\\f", true));
  EXPECT_FALSE(folder_exists(machine, L""));
  for (const wchar_t* there : {L"c", L"C:", L"c:\\x", L" C:\\"})
    EXPECT_TRUE(drive_exists(machine, there));
  for (const wchar_t* none : {L"", L"D", L"CD", L"1:", L"\\\\s\\t", L"ç:"})
    EXPECT_FALSE(drive_exists(machine, none));
  EXPECT_FALSE(delete_file(machine, L"C:\\a\\*"));
  EXPECT_FALSE(delete_file(machine, L""));
  EXPECT_TRUE(delete_file(machine, L"C:\\a\\f"));
  EXPECT_FALSE(delete_file(machine, L"C:\\a\\f"));
}

TEST(Files, FoldersAreMadeLevelByLevel) {
  FakePlatform machine;
  machine.folders = {L"C:", L"C:\\a"};
  machine.files[L"C:\\file"] = content_of("");
  EXPECT_TRUE(create_folders(machine, L"C:\\a\\b\\c\\"));
  EXPECT_TRUE(machine.folders.contains(L"C:\\a\\b\\c"));
  EXPECT_TRUE(create_folders(machine, L"C:\\a\\b\\c"));  // there already
  EXPECT_FALSE(create_folders(machine, L"C:\\file\\x"));
  EXPECT_FALSE(create_folders(machine, L"C:\\file"));
  EXPECT_FALSE(create_folders(machine, L"X:\\a"));
  EXPECT_FALSE(create_folders(machine, L"C:\\a?"));
  EXPECT_FALSE(create_folders(machine, L" "));
}

TEST(Files, AreComparedByteByByteInBlocks) {
  FakePlatform machine;
  const auto pattern = [](uint64_t at, std::span<uint8_t> out) {
    for (uint8_t& byte : out) byte = static_cast<uint8_t>(at++ * 37 >> 3);
  };
  const size_t sizes[] = {0, 1, kFileBlock - 1, kFileBlock, kFileBlock + 1, 3 * kFileBlock};
  for (const size_t size : sizes) {
    machine.files[L"a"] = machine.files[L"b"] = {size, pattern};
    EXPECT_TRUE(files_are_equal(machine, L"a", L" b "));
    for (const size_t at : {size_t{0}, size / 2, size - 1}) {
      if (size == 0) break;
      machine.files[L"b"].fill = [at, pattern](uint64_t from, std::span<uint8_t> out) {
        pattern(from, out);
        if (at >= from && at < from + out.size()) out[static_cast<size_t>(at - from)] ^= 1;
      };
      EXPECT_FALSE(files_are_equal(machine, L"a", L"b")) << size << " at " << at;
    }
  }
  EXPECT_LE(machine.largest_read, kFileBlock);
  machine.files[L"b"] = {machine.files[L"a"].size + 1, pattern};
  EXPECT_FALSE(files_are_equal(machine, L"a", L"b"));
  machine.files[L"b"].told_size = machine.files[L"a"].size;  // grew after it was measured
  EXPECT_FALSE(files_are_equal(machine, L"a", L"b"));
  machine.files[L"a"].fails_at = machine.files[L"b"].fails_at = 10;
  EXPECT_FALSE(files_are_equal(machine, L"a", L"b"));
  EXPECT_FALSE(files_are_equal(machine, L"a", L"missing"));
  EXPECT_FALSE(files_are_equal(machine, L"missing", L"missing"));
  EXPECT_EQ(machine.open_files, 0u);
}

TEST(Ini, GivesValuesOfAnyLength) {
  FakePlatform machine;
  for (const size_t length : {0u, 1u, 254u, 255u, 256u, 1023u, 1024u, 100000u}) {
    const std::wstring value(length, L'ç');
    EXPECT_TRUE(write_ini(machine, L"f.ini", L"s", L"k", value));
    EXPECT_EQ(read_ini(machine, L"f.ini", L"s", L"k"), value) << length;
  }
  EXPECT_TRUE(write_ini(machine, L"f.ini", L"s", L"k", std::wstring(3000000, L'x')));
  EXPECT_EQ(read_ini(machine, L"f.ini", L"s", L"k").find_first_not_of(L'x'), std::wstring::npos);
  EXPECT_EQ(read_ini(machine, L"", L"s", L"k"), L"");
  EXPECT_EQ(read_ini(machine, L"f.ini", L"", L"k"), L"");
  EXPECT_EQ(read_ini(machine, L"f.ini", L"s", L" "), L"");
  EXPECT_FALSE(write_ini(machine, L"f.ini", L"", L"k", L"v"));
}

TEST(Random, DrawsEveryValueUpToTheBoundEquallyOften) {
  FakePlatform machine;
  std::mt19937 generator(7);
  machine.random = [&] { return static_cast<uint32_t>(generator()); };
  constexpr int kDraws = 60000;
  for (const uint32_t bound : {0u, 1u, 5u, 9u, 99u}) {
    std::vector<int> counts(bound + 1);
    for (int i = 0; i < kDraws; ++i) ++counts.at(random_up_to(machine, bound));
    const double expected = static_cast<double>(kDraws) / (bound + 1);
    for (const int count : counts) EXPECT_NEAR(count, expected, 6 * std::sqrt(expected)) << bound;
  }
}

TEST(Random, GroupsAreFilledToTheWidthOfTheBound) {
  FakePlatform machine;
  uint32_t next = 5;
  machine.random = [&] { return next++; };
  EXPECT_EQ(random_groups(machine, L".", 4, 99), L"05.06.07.08");
  next = 0;
  EXPECT_EQ(random_groups(machine, L"", 3, 100), L"000001002");
  EXPECT_EQ(random_groups(machine, L"--", 1, 9), L"3");
  EXPECT_EQ(random_groups(machine, L"-", 3, 0), L"0-0-0");
  EXPECT_EQ(random_groups(machine, L".", 0, 99), L"");
  EXPECT_EQ(random_groups(machine, L".", -1, 99), L"");
  EXPECT_EQ(random_groups(machine, L".", 4, -1), L"");
  EXPECT_EQ(random_groups(machine, L".", 2147483647, 2147483647), L"");
  machine.random = [] { return ~0u; };
  EXPECT_EQ(random_number(machine), 2147483647);
}

TEST(Ini, TextsBeyondThePageNeedAWideFile) {
  using Form = KnPlatform::IniForm;
  FakePlatform machine;
  machine.ini_forms = {{L"old.ini", Form::kAnsi}, {L"wide.ini", Form::kWide}};
  const std::wstring word = L"\u6F22";
  EXPECT_TRUE(write_ini(machine, L"old.ini", L"s", L"k", L"ação"));
  EXPECT_FALSE(write_ini(machine, L"old.ini", L"s", L"k", word));
  EXPECT_FALSE(write_ini(machine, L"old.ini", L"s", word, L"v"));
  EXPECT_FALSE(write_ini(machine, L"old.ini", word, L"k", L"v"));
  EXPECT_EQ(read_ini(machine, L"old.ini", L"s", L"k"), L"ação") << "a refusal changes nothing";
  EXPECT_TRUE(write_ini(machine, L"wide.ini", L"s", L"k", word));
  EXPECT_TRUE(write_ini(machine, L"plain.ini", L"s", L"k", L"v"));
  EXPECT_FALSE(machine.ini_forms.contains(L"plain.ini")) << "no mark without need";
  EXPECT_TRUE(write_ini(machine, L"new.ini", L"s", L"k", word));
  EXPECT_EQ(machine.ini_forms[L"new.ini"], Form::kWide);
  machine.takes_new_files = false;
  EXPECT_FALSE(write_ini(machine, L"no.ini", L"s", L"k", word));
}

TEST(Ini, FileNamesBeyondTheSystemsLimitAreRefused) {
  FakePlatform machine;
  const std::wstring longest(kLongestIniName, L'n');
  EXPECT_TRUE(write_ini(machine, longest, L"s", L"k", L"v"));
  EXPECT_EQ(read_ini(machine, longest, L"s", L"k"), L"v");
  machine.ini[longest + L"x|s|k"] = L"v";
  EXPECT_EQ(read_ini(machine, longest + L"x", L"s", L"k"), L"");
  EXPECT_FALSE(write_ini(machine, longest + L"x", L"s", L"k", L"w"));
}

}  // namespace
}  // namespace kestrelon
