// USComboBox filled from record sets, and what screen readers find in it.
#include <oleacc.h>

#include "tests/controls/control_fixture.h"
#include "tests/controls/record_set_fake.h"

namespace kestrelon::host {
namespace {

// Hands out one record set under the name of the data library's own.
class RecordSetFactory final : public ComObject<IClassFactory> {
 public:
  explicit RecordSetFactory(ComPtr<FakeRecords> records) : records_(std::move(records)) {
    CLSIDFromProgID(L"ADODB.Recordset", &id_);
    CoRegisterClassObject(id_, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  }
  bool known() const { return cookie_ != 0 && !IsEqualCLSID(id_, CLSID_NULL); }
  void end() { CoRevokeClassObject(cookie_); }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** out) override {
    return records_->QueryInterface(iid, out);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  ComPtr<FakeRecords> records_;
  CLSID id_{};
  DWORD cookie_ = 0;
};

class ComboRecordsTest : public ControlTest {
 protected:
  ComboRecordsTest() : site_(place(L"USComboBox", RECT{20, 20, 180, 41})) {
    bring_up(form_);
    mouse_away();
  }
  IDispatch* combo() { return site_->control_dispatch().get(); }
  std::wstring text() { return to_text(get(*site_, L"Text")); }
  long index() { return number(*site_, L"ListIndex"); }

  ComPtr<ControlSite> site_;
};

TEST_F(ComboRecordsTest, KeepsTheTextOfABoundFieldThroughAFillOfManyRecords) {
  const auto records = make_com<FakeRecords>(std::vector<std::wstring>{L"nome", L"codigo"});
  constexpr int kRecords = 100'000;
  for (int i = 0; i < kRecords; ++i)
    records->rows.push_back({L"Cliente d'\u00c1gua " + std::to_wstring(i), std::to_wstring(i * 3)});
  const Variant object(static_cast<IDispatch*>(records.get()));
  put(*site_, L"Text", Variant(L"cliente d'agua 70000"));
  EXPECT_EQ(to_long(call_method(combo(), L"FillListFromQuery",
                                {object, Variant(L"nome"), Variant(L"codigo")})),
            kRecords);
  EXPECT_EQ(text(), L"cliente d'agua 70000");
  EXPECT_EQ(index(), 70'000);
  EXPECT_EQ(to_long(get(*site_, L"BoundValue")), 210'000);
  put(*site_, L"BoundValue", Variant(299'997L));
  EXPECT_EQ(text(), L"Cliente d'\u00c1gua 99999");
  EXPECT_EQ(to_long(call_method(combo(), L"FillListFromQuery", {object, Variant(L"falta")})), -1);
  EXPECT_EQ(number(*site_, L"ListCount"), kRecords) << "a missing field leaves the list";
  site_->take_focus();
  pump_for(30);
  put(*site_, L"AutoComplete", Variant(3L));
  put(*site_, L"Text", Variant(L""));
  type_text(L"gua 9999");
  EXPECT_TRUE(to_bool(get(*site_, L"DroppedDown")));
  key_press(VK_DOWN);
  EXPECT_EQ(text(), L"Cliente d'\u00c1gua 9999");
}

TEST_F(ComboRecordsTest, CompletesFromTheDistinctValuesOfAField) {
  const auto records = make_com<FakeRecords>(std::vector<std::wstring>{L"nome", L"sigla"});
  records->rows = {{L"Acre", L"AC"}, {L"Bahia", L"BA"}};
  const auto factory = make_com<RecordSetFactory>(records);
  if (!factory->known()) GTEST_SKIP() << "the system has no data library";
  const Variant connection(static_cast<IDispatch*>(records.get()));
  put(*site_, L"Text", Variant(L"bahia"));
  EXPECT_TRUE(
      to_bool(call_method(combo(), L"InitializeAutoComplete",
                          {connection, Variant(L"estados"), Variant(L"nome"), Variant(L"sigla")})));
  EXPECT_EQ(records->query, L"SELECT DISTINCT nome, sigla FROM estados;");
  EXPECT_EQ(to_text(get(*site_, L"BoundValue")), L"BA");
  records->rows.insert(records->rows.begin(), {L"Alagoas", L"AL"});
  call_method(combo(), L"RequeryAutoComplete");
  EXPECT_EQ(number(*site_, L"ListCount"), 3);
  EXPECT_EQ(index(), 2) << "the chosen one has moved";
  EXPECT_FALSE(to_bool(call_method(combo(), L"InitializeAutoComplete",
                                   {connection, Variant(L"estados"), Variant(L"falta")})));
  EXPECT_EQ(number(*site_, L"ListCount"), 3);
  call_method(combo(), L"FinalizeAutoComplete");
  EXPECT_EQ(records->closed, 1);
  factory->end();
}

TEST_F(ComboRecordsTest, TheOpenListIsAListOfItsOwnToReaders) {
  call_method(combo(), L"AddItems", {Variant(L"Arruela\nBroca\nPorca")});
  put(*site_, L"ListIndex", Variant(1L));
  const auto field = query<IAccessible>(site_->control());
  const Variant self(long{CHILDID_SELF});
  Variant role, state;
  field->get_accRole(self, role.put());
  EXPECT_EQ(to_long(role), ROLE_SYSTEM_COMBOBOX);
  Bstr value;
  field->get_accValue(self, value.put());
  EXPECT_EQ(to_wstring(value.get()), L"Broca");
  field->accDoDefaultAction(self);
  ASSERT_TRUE(to_bool(get(*site_, L"DroppedDown")));
  ComPtr<IDispatch> child;
  ASSERT_EQ(field->get_accChild(Variant(1L), child.put()), S_OK);
  const auto list = child.as<IAccessible>();
  ASSERT_TRUE(list);
  long count = 0;
  list->get_accChildCount(&count);
  EXPECT_EQ(count, 3);
  list->get_accRole(Variant(2L), role.put());
  EXPECT_EQ(to_long(role), ROLE_SYSTEM_LISTITEM);
  list->get_accState(Variant(2L), state.put());
  EXPECT_NE(to_long(state) & STATE_SYSTEM_SELECTED, 0);
  list->accDoDefaultAction(Variant(3L));
  EXPECT_EQ(text(), L"Porca");
  EXPECT_FALSE(to_bool(get(*site_, L"DroppedDown")));
  EXPECT_EQ(list->get_accChildCount(&count), CO_E_OBJNOTCONNECTED) << "the list has gone";
}

}  // namespace
}  // namespace kestrelon::host
