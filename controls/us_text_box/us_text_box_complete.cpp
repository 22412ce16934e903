// Completion of typed text: from a table, from a list, in place and as a list that drops out.
#include "controls/us_text_box/us_text_box.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr size_t kMostShown = 8;

std::vector<std::wstring> texts_in(const VARIANT& items) {
  std::vector<std::wstring> texts;
  Variant copy;
  if (FAILED(VariantCopyInd(copy.put(), const_cast<VARIANT*>(&items)))) return texts;
  if ((V_VT(&copy) & VT_ARRAY) == 0 || SafeArrayGetDim(V_ARRAY(&copy)) != 1) return texts;
  SAFEARRAY* const array = V_ARRAY(&copy);
  LONG first = 0, last = -1;
  SafeArrayGetLBound(array, 1, &first);
  SafeArrayGetUBound(array, 1, &last);
  const VARTYPE kind = V_VT(&copy) & VT_TYPEMASK;
  for (LONG i = first; i <= last; ++i) {
    Variant item, text;
    if (kind == VT_VARIANT) {
      SafeArrayGetElement(array, &i, item.put());
    } else if (kind == VT_BSTR) {
      V_VT(&item) = VT_BSTR;
      SafeArrayGetElement(array, &i, &V_BSTR(&item));
    }
    if (SUCCEEDED(VariantChangeType(text.put(), &item, 0, VT_BSTR)))
      texts.push_back(to_wstring(V_BSTR(&text)));
  }
  return texts;
}

}  // namespace

void USTextBox::initialize_auto_complete(IDispatch* connection, const std::wstring& table,
                                         const std::wstring& field) {
  text_events_.Texto_Inicializar(connection, field.empty() ? DataField.get() : field, table);
  scanned_ = false;
}

void USTextBox::finalize_auto_complete() {
  text_events_.Texto_Finalizar();
  if (scanned_) values_.assign({});
  scanned_ = false;
  suggestions_.close();
}

void USTextBox::auto_complete_list(const VARIANT& items) {
  values_.assign(texts_in(items));
  scanned_ = false;
  suggestions_.close();
}

void USTextBox::complete() {
  if (Locked.get()) return;
  suggest();
  by_code_ = true;
  text_events_.Texto_AutoCompletar(box_);
  by_code_ = false;
}

// The records are read once; a key searches in memory.
void USTextBox::suggest() {
  const bool records = AutoCompleteDropDown.get() && text_events_.is_running();
  if (records && !scanned_) {
    values_.assign(text_events_.values());
    scanned_ = true;
  }
  const EntryState typed = box_.state();
  const bool plain = box_.rules().kind == EntryKind::kText && !Multiline.get();
  if (values_.empty() || !plain || typed.text.empty() || !focus_within())
    return suggestions_.close();
  const SuggestionSearch search{AutoCompleteAnyWord.get(), AutoCompleteIgnoreAccents.get()};
  std::vector<std::wstring> found = values_.find(typed.text, kMostShown, search);
  if (found.size() == 1 && found[0] == typed.text) found.clear();
  SuggestionList::Style style;
  style.font = Font.handle();
  style.text = TranslateColor(ForeColor.get());
  style.back = TranslateColor(BackColor.get());
  style.border = TranslateColor(BorderColor.get());
  suggestions_.show(window(), *this, std::move(found), style);
  key_wishes_changed();
}

void USTextBox::suggestion_taken(const std::wstring& text) {
  by_code_ = true;
  box_.edit(state_at(text, text.size()), EntryHistory::Kind::kOther);
  by_code_ = false;
}

}  // namespace kestrelon
