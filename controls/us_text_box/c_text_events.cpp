#include "controls/us_text_box/c_text_events.h"

#include "base/text.h"
#include "controls/us_text_box/entry_box.h"
#include "services/distinct_records_win.h"

namespace kestrelon {
namespace {

constexpr long kForward = 1, kFromFirst = 1;  // of the record set's Find
std::wstring text_in(const Variant& value) {
  Variant text;
  if (V_VT(&value) == VT_NULL || V_VT(&value) == VT_EMPTY ||
      FAILED(VariantChangeType(text.put(), const_cast<Variant*>(&value), 0, VT_BSTR)))
    return {};
  return to_wstring(V_BSTR(&text));
}

std::wstring doubled_apostrophes(const std::wstring& text) {
  std::wstring out;
  for (const wchar_t c : text) out.append(c == L'\'' ? 2 : 1, c);
  return out;
}

bool is_true(const Variant& value) {
  return V_VT(&value) == VT_BOOL && V_BOOL(&value) != VARIANT_FALSE;
}

}  // namespace

void cTextEvents::Texto_Inicializar(IDispatch* connection, const std::wstring& field,
                                    const std::wstring& table) {
  Texto_Finalizar();
  if (connection == nullptr || field.empty()) return;
  try {
    records_ = open_distinct_records(connection, field, table);
    field_ = field;
  } catch (const ComError&) {
    Texto_Finalizar();
  }
}

void cTextEvents::Texto_Verificar(short key) {
  erased_ = key == VK_DELETE || key == VK_BACK;
}

void cTextEvents::Texto_AutoCompletar(EntryBox& box) {
  const EntryState typed = box.state();
  const bool at_end = !typed.has_selection() && typed.caret == typed.text.size();
  const bool plain = box.rules().kind == EntryKind::kText && !box.rules().multiline;
  // The record set's own wildcards would match anything.
  const bool wild = typed.text.find_first_of(L"*%_") != std::wstring::npos;
  if (!records_ || erased_ || typed.text.empty() || !at_end || !plain || wild) return;
  try {
    const std::wstring wanted = field_ + L" like '" + doubled_apostrophes(typed.text) + L"*'";
    LateObject records = records_;  // a handler of the host's may end this
    records.call(L"Find", {Variant(std::wstring_view(wanted)), Variant(0L), Variant(kForward),
                           Variant(kFromFirst)});
    if (is_true(records.get_property(L"EOF"))) {
      records.call(L"MoveFirst");
      return;
    }
    LateObject fields = records.get_object(L"Fields");
    const LateObject found = object_of(fields.call(L"Item", {Variant(std::wstring_view(field_))}));
    const std::wstring value = text_in(LateObject(found).get_property(L"Value"));
    if (value.size() <= typed.text.size()) return;
    const bool begins = equals_ignoring_case(value.substr(0, typed.text.size()), typed.text);
    if (begins) box.edit({value, value.size(), typed.text.size()}, EntryHistory::Kind::kOther);
  } catch (const ComError&) {
    Texto_Finalizar();
  }
}

std::vector<std::wstring> cTextEvents::values() {
  std::vector<std::wstring> values;
  try {
    LateObject records = records_;
    if (!records) return values;
    if (is_true(records.get_property(L"BOF")) && is_true(records.get_property(L"EOF")))
      return values;
    records.call(L"MoveFirst");
    LateObject fields = records.get_object(L"Fields");
    LateObject field = object_of(fields.call(L"Item", {Variant(std::wstring_view(field_))}));
    const DISPID eof = records.id(L"EOF"), next = records.id(L"MoveNext");
    const DISPID value = field.id(L"Value");
    while (!is_true(records.get_property(eof))) {
      values.push_back(text_in(field.get_property(value)));
      records.call(next, {});
    }
    records.call(L"MoveFirst");
  } catch (const ComError&) {
    Texto_Finalizar();
  }
  return values;
}

void cTextEvents::Texto_AtualizarDados() {
  if (!records_) return;
  try {
    records_.call(L"Requery");
  } catch (const ComError&) {
    Texto_Finalizar();
  }
}

void cTextEvents::Texto_Finalizar() {
  LateObject records = std::move(records_);
  records_ = {};
  if (!records) return;
  try {
    records.call(L"Close");
  } catch (const ComError&) {
    return;  // it is let go all the same
  }
}

}  // namespace kestrelon
