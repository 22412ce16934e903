#include <map>

#include "base/text.h"
#include "tests/controls/control_fixture.h"
#include "tests/services/typing/typing_script.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

constexpr long kToNumber = 1, kToCurrency = 2;

class TextBoxTest : public ControlTest {
 protected:
  TextBoxTest() : site_(place(L"USTextBox", RECT{20, 20, 220, 45})) {
    other_ = place(L"USTextBox", RECT{20, 80, 220, 105});
    bring_up(form_);
    focus(*site_);
    take_log(*site_);
  }

  static void focus(ControlSite& site) {
    SetFocus(site.window());
    pump_for(20);
  }
  static HWND edit(ControlSite& site) {
    return FindWindowExW(site.window(), nullptr, L"Edit", nullptr);
  }
  std::wstring text() { return to_text(get(*site_, L"Text")); }
  /// The text with its caret or selection, as typed sequences write it.
  std::wstring shown() {
    const long start = number(*site_, L"SelStart"), length = number(*site_, L"SelLength");
    return typing_script::picture(
        {text(), static_cast<size_t>(start), static_cast<size_t>(start + length)});
  }
  static void copy_to_clipboard(std::wstring_view text) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    auto* const units = static_cast<wchar_t*>(GlobalLock(block));
    units[text.copy(units, text.size())] = L'\0';
    GlobalUnlock(block);
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();
  }

  ComPtr<ControlSite> site_;
  ComPtr<ControlSite> other_;
};

void press_key(std::wstring_view key) {
  static const std::map<std::wstring_view, WORD> kKeys = {
      {L"Left", VK_LEFT}, {L"Right", VK_RIGHT}, {L"Home", VK_HOME},  {L"End", VK_END},
      {L"Back", VK_BACK}, {L"Del", VK_DELETE},  {L"Space", VK_SPACE}};
  if (key == L"Undo") return key_chord(VK_CONTROL, 'Z');
  if (key == L"Redo") return key_chord(VK_CONTROL, 'Y');
  if (key == L"All") return key_chord(VK_CONTROL, 'A');
  const bool shift = key.starts_with(L"S+");
  const auto found = kKeys.find(shift ? key.substr(2) : key);
  if (found == kKeys.end()) return type_text(key);
  shift ? key_chord(VK_SHIFT, found->second) : key_press(found->second);
}

// A caret at the left end of a selection is told as one at the right: SelStart knows no difference.
std::wstring without_direction(EntryState state) {
  if (state.anchor > state.caret) std::swap(state.anchor, state.caret);
  return typing_script::picture(state);
}

struct TypedField {
  std::wstring_view description;
  std::vector<std::pair<const wchar_t*, Variant>> properties;
  std::vector<std::wstring_view> sequences;
};

TEST_F(TextBoxTest, TypesThroughRealKeysAsTheRulesTell) {
  const Variant number(kToNumber), currency(kToCurrency);
  const TypedField fields[] = {
      {L"number",
       {{L"FormatType", number}},
       {L"1 2 3 Left 4 Back , 5", L"1 2 3 4 Home 5 6 7", L"1 2 3 4 All - 7", L"- 5 Home Back",
        L"1 2 3 4 5 6 7 Left Left Left Left Back Back", L"1 a 2 Undo Redo", L"1 2 3 4 S+Left Del",
        L"1 , 5 6 7 Home Del Del Del"}},
      {L"currency",
       {{L"FormatType", currency}},
       {L"1 2 3 , 4 5 6", L"1 2 3 4 Home Del Del", L"5 - - All 7", L"End Back Back Back Back 8",
        L"1 2 3 4 , 5 6 S+Left S+Left 7 Undo", L"1 2 Home 3 Undo Undo"}},
      {L"currency fromright",
       {{L"MoneyFromRight", Variant(true)}, {L"FormatType", currency}},
       {L"1 2 3 4 5 Back Left 9", L"1 2 3 4 5 All 7"}},
      {L"masknumber=###.###.###-##",
       {{L"MaskType", Variant(1L)}, {L"Mask", Variant(L"###.###.###-##")}},
       {L"1 a 2 3 4 Left Left 9 Del", L"1 2 3 Back Back 4 Undo", L"1 2 . 4 Home Del 5 End 6"}},
      {L"preset=phone",
       {{L"MaskPreset", Variant(4L)}},
       {L"1 1 3 4 5 6 7 8 9 0 1 Back", L"1 1 9 8 7 6 5 4 3 2 1 Home Del 2"}},
      {L"preset=date", {{L"MaskPreset", Variant(6L)}}, {L"5 / 3 / 2 0 2 6 Back Left 1"}},
      {L"text upper", {{L"TextCase", Variant(1L)}}, {L"a b Left c Back Back", L"a b c All d"}},
      {L"text digits max=3",
       {{L"NumberOnly", Variant(true)}, {L"MaxLength", Variant(3L)}},
       {L"1 a 2 3 4 Back 5"}}};
  for (const TypedField& field : fields) {
    for (const std::wstring_view sequence : field.sequences) {
      const auto site = place(L"USTextBox", RECT{20, 140, 300, 165});
      for (const auto& [name, value] : field.properties) put(*site, name, value);
      site_ = site;
      focus(*site);
      typing_script::Field expected = typing_script::field_of(field.description);
      for (const std::wstring_view key : split(sequence, L" ")) {
        press_key(key);
        ASSERT_TRUE(typing_script::press(expected, key));
        ASSERT_EQ(shown(), without_direction(expected.state))
            << "[" << std::string(field.description.begin(), field.description.end()) << "] "
            << std::string(sequence.begin(), sequence.end()) << " at "
            << std::string(key.begin(), key.end());
      }
      form_.remove(*site);
    }
  }
}

TEST_F(TextBoxTest, TellsKeysInOrderAndLetsTheHostReplaceACharacter) {
  type_text(L"a");
  EXPECT_EQ(take_names(*site_), (Names{L"KeyDown", L"KeyPress", L"Change", L"KeyUp"}));
  site_->on_event([](const std::wstring& name, DISPPARAMS& arguments) {
    if (name != L"KeyPress") return;
    const long key = to_long(event_value(arguments, 0));
    if (key == L'b') set_event_argument(arguments, 0, Variant(static_cast<short>(0)));
    if (key == L'c') set_event_argument(arguments, 0, Variant(static_cast<short>(L'Z')));
  });
  type_text(L"bc");
  EXPECT_EQ(text(), L"aZ");
}

TEST_F(TextBoxTest, TellsAChangeOnceAndNoneForTheSameText) {
  put(*site_, L"Text", Variant(L"um"));
  put(*site_, L"Value", Variant(L"um"));
  EXPECT_EQ(take_names(*site_), Names{L"Change"});
  put(*site_, L"FormatType", Variant(kToCurrency));
  EXPECT_EQ(take_names(*site_), Names{L"Change"});
  type_text(L"5");
  EXPECT_EQ(take_names(*site_), (Names{L"KeyDown", L"KeyPress", L"Change", L"KeyUp"}));
}

TEST_F(TextBoxTest, KeepsItsFormatWhileItHasSeveralLines) {
  put(*site_, L"Multiline", Variant(true));
  put(*site_, L"FormatType", Variant(kToCurrency));
  put(*site_, L"Mask", Variant(L"##-##"));
  EXPECT_EQ(number(*site_, L"FormatType"), 0);
  EXPECT_EQ(to_text(get(*site_, L"Mask")), L"");
  put(*site_, L"Text", Variant(L"um\r\ndois"));
  EXPECT_EQ(number(*site_, L"LinesOf"), 2);
}

TEST_F(TextBoxTest, PastesWhatIsMeant) {
  put(*site_, L"FormatType", Variant(kToCurrency));
  copy_to_clipboard(L"R$ 1.234,56");
  key_chord(VK_CONTROL, 'V');
  EXPECT_EQ(text(), L"R$ 1.234,56");
  copy_to_clipboard(L"98.7");
  SendMessageW(edit(*site_), WM_PASTE, 0, 0);
  EXPECT_EQ(text(), L"R$ 98,70");
  SendMessageW(edit(*site_), WM_UNDO, 0, 0);
  EXPECT_EQ(text(), L"R$ 1.234,56");
}

TEST_F(TextBoxTest, ChangesItsLookAndKeepsItsValue) {
  put(*site_, L"FormatType", Variant(kToCurrency));
  put(*site_, L"Text", Variant(L"1234,56"));
  put(*site_, L"DecimalSimbol", Variant(L"."));
  EXPECT_EQ(text(), L"R$ 1.234.56");
  put(*site_, L"Decimals", Variant(static_cast<short>(0)));
  EXPECT_EQ(text(), L"R$ 1.235");
  EXPECT_EQ(to_double(get(*site_, L"TextCdbl")), 1234.56);
  put(*site_, L"Decimals", Variant(static_cast<short>(3)));
  put(*site_, L"CurrencyChar", Variant(L""));
  EXPECT_EQ(text(), L"1.234.560");
  EXPECT_EQ(to_text(get(*site_, L"TextExtenso")),
            L"um mil duzentos e trinta e quatro reais e cinquenta e seis centavos");
}

TEST_F(TextBoxTest, ShowsTheRequiredColorUntilFilledAndAgainWhenCleared) {
  const auto inside = [this] { return draw_control(*site_, 200, 25).at(3, 3); };
  const uint32_t normal = inside();
  put(*site_, L"Required", Variant(true));
  put(*site_, L"RequiredColor", Variant(0x0000FFL));
  EXPECT_EQ(inside(), 0xFF0000u);
  type_text(L"x");
  EXPECT_EQ(inside(), normal);
  call_method(site_->control_dispatch().get(), L"ClearControl");
  EXPECT_EQ(inside(), 0xFF0000u);
  put(*site_, L"Enabled", Variant(false));
  EXPECT_NE(inside(), 0xFF0000u);
}

TEST_F(TextBoxTest, FormatsWhenItIsLeft) {
  put(*site_, L"AutoFormatCurrency", Variant(true));
  type_text(L"1234,5");
  focus(*other_);
  EXPECT_EQ(text(), L"R$ 1.234,50");
  put(*site_, L"AutoFormatDate", Variant(true));
  put(*site_, L"Text", Variant(L"5-3-26"));
  focus(*site_);
  focus(*other_);
  EXPECT_EQ(text(), L"05/03/2026");
}

TEST_F(TextBoxTest, RefusesToBeLeftWithAFaultWhenTheHostSaysSo) {
  put(*site_, L"MaskPreset", Variant(1L));
  put(*site_, L"ValidateOnExit", Variant(true));
  bool cancel = true;
  site_->on_event([&cancel](const std::wstring& name, DISPPARAMS& arguments) {
    if (name == L"ValidationFailed") set_event_argument(arguments, 2, Variant(cancel));
  });
  type_text(L"52998224726");
  take_log(*site_);
  focus(*other_);
  pump_for(100);
  EXPECT_EQ(GetFocus(), edit(*site_));
  const auto log = take_log(*site_);
  ASSERT_FALSE(log.empty());
  EXPECT_EQ(log.front(), L"ValidationFailed(\"529.982.247-26\", \"CPF inv\u00E1lido.\", False)");
  cancel = false;
  focus(*other_);
  pump_for(100);
  EXPECT_EQ(GetFocus(), edit(*other_));
}

TEST_F(TextBoxTest, LoadsWithoutRunningSetters) {
  const auto bag = make_com<PropertyBag>();
  const auto set = [&bag](const wchar_t* key, const Variant& value) {
    bag->Write(key, const_cast<Variant*>(&value));
  };
  set(L"FormatType", Variant(kToCurrency));
  set(L"Mask", Variant(L"##"));
  set(L"Value", Variant(L"R$ 7,00"));
  set(L"SelStart", Variant(3L));
  set(L"SelLength", Variant(99L));
  const auto site = place(L"USTextBox", RECT{20, 140, 300, 165}, bag.get());
  EXPECT_EQ(to_text(get(*site, L"Text")), L"R$ 7,00");
  EXPECT_EQ(to_text(get(*site, L"Mask")), L"##");
  EXPECT_EQ(to_text(get(*site, L"SelText")), L"7,00");
  EXPECT_TRUE(take_names(*site).empty());
}

TEST_F(TextBoxTest, LivesThroughAHandlerThatRemovesIt) {
  const auto site = place(L"USTextBox", RECT{20, 140, 300, 165});
  put(*site, L"FormatType", Variant(kToNumber));
  site->on_event([this, &site](const std::wstring& name, DISPPARAMS&) {
    if (name == L"Change") form_.remove(*site);
  });
  focus(*site);
  type_text(L"1");
  pump_for(50);
  EXPECT_EQ(site->window(), nullptr);
}

TEST_F(TextBoxTest, RaisesButtonClickFromTheButtonInside) {
  put(*site_, L"ButtonVisible", Variant(true));
  mouse_click(site_->window(), 190, 12);
  const Names names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"ButtonClick"), 1);
}

TEST_F(TextBoxTest, StepsWithItsArrowsWithinBounds) {
  put(*site_, L"FormatType", Variant(kToNumber));
  put(*site_, L"SpinButtons", Variant(true));
  put(*site_, L"MaxValue", Variant(2L));
  for (int i = 0; i < 4; ++i) key_press(VK_UP);
  EXPECT_EQ(text(), L"2");
  key_press(VK_DOWN);
  EXPECT_EQ(text(), L"1");
}

TEST_F(TextBoxTest, CompletesFromAListThatDropsOut) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, 3);
  LONG index = 0;
  for (const wchar_t* name : {L"Ana", L"\u00C1gua", L"Aurora"}) {
    Variant item{std::wstring_view(name)};
    SafeArrayPutElement(array, &index, &item);
    ++index;
  }
  Variant items;
  V_VT(&items) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&items) = array;
  call_method(site_->control_dispatch().get(), L"AutoCompleteList", {items});
  type_text(L"au");
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(text(), L"Aurora");
}

TEST_F(TextBoxTest, ReadsAndWritesTextFiles) {
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  const std::wstring name = std::wstring(folder) + L"kestrelon_text_box.txt";
  const auto call = [this](const wchar_t* method, const std::wstring& file) {
    call_method(site_->control_dispatch().get(), method, {Variant(std::wstring_view(file))});
  };
  put(*site_, L"Text", Variant(L"a\u00E7\u00E3o \u65E5"));
  call(L"SaveTextFile", name);
  call(L"AppendTextFile", name);
  put(*site_, L"Text", Variant(L"fica"));
  call(L"LoadTextFile", L"Z:\\nowhere\\nothing.txt");
  EXPECT_EQ(text(), L"fica");
  call(L"LoadTextFile", name);
  EXPECT_EQ(text(), L"a\u00E7\u00E3o \u65E5a\u00E7\u00E3o \u65E5");
  DeleteFileW(name.c_str());
}

}  // namespace
}  // namespace kestrelon::host
