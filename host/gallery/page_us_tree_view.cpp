// USTreeView: themes, lines, check boxes of three states, selection of whole rows.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USTreeView";
constexpr int kWidth = 250, kHeight = 190;

void add(IDispatch* control, const wchar_t* text, const wchar_t* key, const wchar_t* parent) {
  call_method(control, L"AddNode", {Variant(text), Variant(key), Variant(parent)});
}

// The beginning of an account plan.
void fill(IDispatch* control) {
  add(control, L"Ativo", L"1", L"");
  add(control, L"Circulante", L"1.1", L"1");
  add(control, L"Caixa e bancos", L"1.1.1", L"1.1");
  add(control, L"Contas a receber de clientes", L"1.1.2", L"1.1");
  add(control, L"Não circulante", L"1.2", L"1");
  add(control, L"Imobilizado", L"1.2.1", L"1.2");
  add(control, L"Passivo", L"2", L"");
  add(control, L"Fornecedores", L"2.1", L"2");
  call_method(control, L"ExpandAll");
  const auto nodes = to_object(get_property(control, L"Nodes"));
  const auto node = [&](const wchar_t* key) {
    return to_object(get_property(nodes.get(), L"Item", {Variant(key)}));
  };
  put_property(node(L"2").get(), L"Expanded", Variant(false));
  put_property(node(L"1.2").get(), L"Bold", Variant(true));
  put_property(node(L"1.1.2").get(), L"Checked", Variant(1L));
  put_property(control, L"SelectedNode", Variant(node(L"1.1.1").get()));
}

Prepare with(long theme, std::vector<std::pair<const wchar_t*, Variant>> properties) {
  return [=](IDispatch* control) {
    put_property(control, L"Theme", Variant(theme));
    for (const auto& [name, value] : properties) put_property(control, name, value);
    fill(control);
  };
}

void theme(Page& page, const wchar_t* label, long number) {
  page.text(make_rect(look::kMargin, page.y(), 400, 16), label);
  page.skip(20);
  const auto place = [&](int column) {
    return make_rect(look::kMargin + column * (kWidth + 16), page.y(), kWidth, kHeight);
  };
  page.control(kProgId, place(0), with(number, {}));
  page.control(kProgId, place(1), with(number, {{L"CheckBoxes", Variant(2L)}}));
  page.control(kProgId, place(2),
               with(number, {{L"FullRowSelect", Variant(true)}, {L"ShowLines", Variant(false)}}));
  page.skip(kHeight + 16);
}

}  // namespace

void build_us_tree_view_page(Page& page) {
  page.title(L"USTreeView", L"Árvore com imagens, marcas de três estados, edição e arraste.");
  page.section(L"Temas: linhas; marcas de três estados; linhas inteiras");
  theme(page, L"Office Blue", 0);
  theme(page, L"Office Silver", 1);
  theme(page, L"Windows 8", 2);
}

}  // namespace kestrelon::host
