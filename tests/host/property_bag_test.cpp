#include "host/property_bag.h"

#include <climits>
#include <cmath>

#include "host/ambients.h"
#include "host/late_bound.h"
#include "host/persistence.h"
#include "host/property_text.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PropertyBagTest : public HostTest {};

Variant of_type(VARTYPE type, const Variant& value) {
  Variant out;
  EXPECT_TRUE(convert_value(value, type, out));
  return out;
}

// A bag that went through its text.
ComPtr<PropertyBag> through_text(const ComPtr<PropertyBag>& bag) {
  return make_com<PropertyBag>(parse_property_text(to_property_text(bag->entries())));
}

Variant read(const ComPtr<PropertyBag>& bag, const wchar_t* name) {
  Variant value;
  EXPECT_EQ(bag->Read(name, &value, nullptr), S_OK) << name;
  return value;
}

std::wstring parse_error(std::wstring_view text) {
  try {
    parse_property_text(text);
  } catch (const ComError& error) {
    return error.description;
  }
  return L"";
}

TEST_F(PropertyBagTest, EachTypeAndTheOrderOfKeysSurviveTheText) {
  const auto bag = make_com<PropertyBag>();
  std::vector<Variant> values;
  for (short v : {-32768, 0, 32767}) values.emplace_back(v);
  for (long v : {-2147483647L - 1, 0L, 2147483647L}) values.emplace_back(v);
  for (float v : {0.1f, -3.4028235e38f, 1.17549435e-38f}) values.emplace_back(v);
  for (double v : {0.1, 1.7976931348623157e308, 5e-324, -0.0}) values.emplace_back(v);
  for (bool v : {true, false}) values.emplace_back(v);
  values.push_back(of_type(VT_UI1, Variant(255L)));
  values.push_back(of_type(VT_DATE, Variant(44197.53125)));
  for (LONGLONG v : {LLONG_MIN, -1LL, 0LL, 10001LL, LLONG_MAX}) {
    Variant money;
    money.vt = VT_CY;
    money.cyVal.int64 = v;
    values.push_back(money);
  }
  const std::wstring odd =
      std::wstring(L"\"\\\r\n\t\0\x1F} = {' ", 14) + L"\xD800 \xFEFF \x00E7\x4E2D";
  for (const auto& text : {std::wstring(), std::wstring(L"  "), odd}) values.emplace_back(text);
  values.emplace_back();
  values.emplace_back(static_cast<IDispatch*>(nullptr));
  // Keys out of alphabetical order, one of them not a plain name.
  std::vector<std::wstring> keys;
  for (size_t i = 0; i < values.size(); ++i) {
    keys.push_back(i == 5 ? L"odd = \"key\"" : L"K" + std::to_wstring(values.size() - i));
    bag->set(keys.back(), values[i]);
  }
  const auto again = through_text(bag);
  EXPECT_EQ(again->keys(), keys);
  for (size_t i = 0; i < values.size(); ++i) {
    const Variant value = read(again, keys[i].c_str());
    EXPECT_EQ(value.vt, values[i].vt) << i;
    if (value.vt == VT_BSTR) {
      // Compared as text: automation's comparison stops at the locale's idea of equality.
      EXPECT_EQ(to_wstring(value.bstrVal), to_wstring(values[i].bstrVal)) << i;
    } else if (value.vt == VT_DISPATCH) {
      EXPECT_EQ(value.pdispVal, nullptr);
    } else if (value.vt != VT_EMPTY) {
      EXPECT_EQ(VarCmp(const_cast<Variant*>(&value), &values[i], 0, 0),
                static_cast<HRESULT>(VARCMP_EQ))
          << i;
    }
    EXPECT_EQ(std::signbit(value.vt == VT_R8 ? value.dblVal : 0),
              std::signbit(values[i].vt == VT_R8 ? values[i].dblVal : 0))
        << i;
  }
}

TEST_F(PropertyBagTest, FontsPicturesAndBytesAreTakenApartWhenWritten) {
  const auto bag = make_com<PropertyBag>();
  const auto font = make_font(L"Tahoma", 9.75, true);
  Variant value(static_cast<IDispatch*>(font.get()));
  ASSERT_EQ(bag->Write(L"Font", &value), S_OK);
  font.as<IFont>()->put_Italic(TRUE);  // after the writing: not in the bag

  PICTDESC desc = {};
  desc.cbSizeofstruct = sizeof desc;
  desc.picType = PICTYPE_BITMAP;
  // 24 bits: Wine's own picture object cannot read back what it saves of a 32-bit bitmap.
  BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), 5, 3, 1, 24, BI_RGB, 0, 0, 0, 0, 0}, {}};
  void* bits = nullptr;
  desc.bmp.hbitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  ComPtr<IDispatch> picture;
  ASSERT_EQ(OleCreatePictureIndirect(&desc, IID_IDispatch, TRUE, picture.put_void()), S_OK);
  value = Variant(picture.get());
  ASSERT_EQ(bag->Write(L"Picture", &value), S_OK);

  value = Variant();
  value.parray = SafeArrayCreateVector(VT_UI1, 0, 200);
  value.vt = VT_ARRAY | VT_UI1;
  for (LONG i = 0; i < 200; ++i) {
    BYTE byte = static_cast<BYTE>(i * 7);
    SafeArrayPutElement(value.parray, &i, &byte);
  }
  ASSERT_EQ(bag->Write(L"Image", &value), S_OK);

  const auto again = through_text(bag);
  const auto font_again = to_object(read(again, L"font")).as<IFont>();
  ASSERT_TRUE(font_again);
  CY size = {};
  BOOL italic = TRUE;
  BOOL bold = FALSE;
  font_again->get_Size(&size);
  font_again->get_Italic(&italic);
  font_again->get_Bold(&bold);
  // A font keeps the nearest size that its face has in whole pixels.
  EXPECT_NEAR(static_cast<double>(size.int64), 97500.0, 4000.0);
  EXPECT_FALSE(italic);
  EXPECT_TRUE(bold);

  const auto picture_again = to_object(read(again, L"Picture")).as<IPicture>();
  ASSERT_TRUE(picture_again);
  OLE_XSIZE_HIMETRIC width = 0;
  picture_again->get_Width(&width);
  EXPECT_EQ(himetric_to_pixels(width, Axis::kX), 5);

  const Variant bytes = read(again, L"Image");
  ASSERT_EQ(bytes.vt, VT_ARRAY | VT_UI1);
  for (LONG i = 0; i < 200; ++i) {
    BYTE byte = 0;
    ASSERT_EQ(SafeArrayGetElement(bytes.parray, &i, &byte), S_OK);
    ASSERT_EQ(byte, static_cast<BYTE>(i * 7));
  }
}

TEST_F(PropertyBagTest, ReadConvertsToTheTypeAskedForAndTellsWhatItCannot) {
  const auto bag = make_com<PropertyBag>(parse_property_text(L"A = 1%\nB = \"x\"\n"));
  const auto errors = make_com<ErrorLog>();
  Variant value(0L);
  EXPECT_EQ(bag->Read(L"a", &value, errors.get()), S_OK);
  EXPECT_EQ(value.vt, VT_I4);
  EXPECT_EQ(bag->Read(L"B", &value, errors.get()), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(value.vt, VT_I4) << "a failed read leaves the value alone";
  EXPECT_EQ(bag->Read(L"C", &value, errors.get()), E_INVALIDARG);
  ASSERT_EQ(errors->lines().size(), 1u) << "a missing key is no error";
  EXPECT_THAT(errors->lines()[0].substr(0, 2), L"B:");
  Variant changed(5L);
  bag->Write(L"A", &changed);
  EXPECT_THAT(bag->keys(), ElementsAre(L"A", L"B")) << "a key written again keeps its place";
}

TEST_F(PropertyBagTest, BadTextNamesItsLineAndNeverLoads) {
  EXPECT_EQ(parse_error(L"' note\n\n  A = True\n"), L"");
  EXPECT_THAT(parse_error(L"A = 1%\nB 2%\n"), HasSubstr(L"Line 2"));
  for (const wchar_t* bad : {L"= 1%",
                             L"A =",
                             L"A = 32768%",
                             L"A = 1",
                             L"A = 1.5&",
                             L"A = 1e999#",
                             L"A = \"x",
                             L"A = \"\\",
                             L"A = \"\\q\"",
                             L"A = \"\\u12G4\"",
                             L"A = \"\\u12",
                             L"A = \"x\" y",
                             L"A = Font {\nName = \"T\"",
                             L"A = Bytes {\nAAA\n}",
                             L"A = Bytes {\n=AAA\n}",
                             L"A = Bytes {\nAA==AAAA\n}",
                             L"A = Stream {nonsense} {\n}",
                             L"A = Object {0BE35204-8F91-11CE-9DE3-00AA004BB851}\n",
                             L"A = Byte 256",
                             L"A = 1.5@",
                             L"A = 922337203685477.5808@",
                             L"}",
                             L"\"A"})
    EXPECT_THAT(parse_error(bad), HasSubstr(L"Line")) << bad;
  std::wstring deep;
  for (int i = 0; i < 100000; ++i) deep += L"A = Font {\n";
  EXPECT_THAT(parse_error(deep), HasSubstr(L"too deeply"));
}

TEST_F(PropertyBagTest, AnySavedTextCutShortLoadsOrFailsCleanly) {
  const auto bag = make_com<PropertyBag>();
  Variant font(static_cast<IDispatch*>(make_font(L"Tahoma", 8).get()));
  bag->Write(L"Font", &font);
  bag->set(L"Caption", Variant(L"a\tb\x4E2D"));
  bag->set(L"Value", Variant(static_cast<short>(1)));
  const std::wstring text = to_property_text(bag->entries());
  int loaded = 0;
  for (size_t length = 0; length <= text.size(); ++length)
    loaded += parse_error(std::wstring_view(text).substr(0, length)).empty();
  EXPECT_GT(loaded, 3);
  EXPECT_LT(loaded, static_cast<int>(text.size()) / 2);
}

TEST_F(PropertyBagTest, AControlComesBackFromFileStreamAndIsNotToldThatItIsNew) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  probe_of(site)->text = L"ol\x00E1 \"mundo\"";
  wchar_t folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  const std::wstring path = std::wstring(folder) + L"kestrelon_bag_test.txt";
  save_property_file(path, save_properties(site->control())->entries());
  const auto bag = make_com<PropertyBag>(load_property_file(path));
  DeleteFileW(path.c_str());
  const auto from_file = form.add_object(make_probe({}), L"", {}, nullptr, {.bag = bag.get()});
  EXPECT_EQ(probe_of(from_file)->text, probe_of(site)->text);
  EXPECT_EQ(from_file->name(), L"Probe2");
  EXPECT_THAT(probe_of(from_file)->log, testing::Not(testing::Contains(L"new")));

  const auto bytes = save_stream(site->control());
  const auto stream = stream_over(bytes);
  const auto from_stream =
      form.add_object(make_probe({}), L"", {}, nullptr, {.stream = stream.get()});
  EXPECT_EQ(probe_of(from_stream)->text, probe_of(site)->text);
  const auto cut = stream_over({bytes.begin(), bytes.end() - 1});
  EXPECT_THROW(form.add_object(make_probe({}), L"Cut", {}, nullptr, {.stream = cut.get()}),
               ComError);
  EXPECT_EQ(form.find(L"Cut"), nullptr);
}

}  // namespace
}  // namespace kestrelon::host
