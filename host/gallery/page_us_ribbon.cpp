// USRibbon: the ribbon of an office program in the three themes, its states, and how it shrinks.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/ribbon_pictures.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USRibbon";
constexpr int kHeight = 116;

void call(IDispatch* ribbon, const wchar_t* name, std::vector<Variant> arguments) {
  call_method(ribbon, name, std::move(arguments));
}

struct ButtonSample {
  const wchar_t* caption;
  Glyph glyph;
  bool arrow = false;
};

class Filler {
 public:
  explicit Filler(IDispatch* ribbon) : ribbon_(ribbon) {}

  void tab(const wchar_t* caption) {
    call(ribbon_, L"AddTab", {Variant(tab_++), Variant(caption)});
  }
  void category(const wchar_t* caption, bool launcher, const std::vector<ButtonSample>& buttons) {
    call(ribbon_, L"AddCat",
         {Variant(++category_), Variant(0L), Variant(caption), Variant(launcher)});
    for (const ButtonSample& each : buttons) {
      const ComPtr<IDispatch> picture = glyph_picture(each.glyph, 32);
      call(ribbon_, L"AddButton",
           {Variant(button_++), Variant(category_), Variant(each.caption), Variant(picture.get()),
            Variant(0L), Variant(each.arrow)});
    }
  }

 private:
  IDispatch* ribbon_;
  long tab_ = 0, category_ = 0, button_ = 0;
};

void set_indexed(IDispatch* target, const wchar_t* name, long index, const Variant& value) {
  LPOLESTR text = const_cast<LPOLESTR>(name);
  DISPID id = 0, put = DISPID_PROPERTYPUT;
  if (FAILED(target->GetIDsOfNames(IID_NULL, &text, 1, 0, &id))) return;
  VARIANT arguments[] = {value, Variant(index)};
  DISPPARAMS params{arguments, &put, 2, 1};
  target->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
}

void fill_office(IDispatch* ribbon) {
  Filler filler(ribbon);
  for (const wchar_t* caption : {L"Início", L"Vendas", L"Compras", L"Financeiro", L"Relatórios"})
    filler.tab(caption);
  filler.category(L"Área de transferência", true,
                  {{L"Colar", Glyph::kPaste, true}, {L"Copiar", Glyph::kCopy}});
  filler.category(L"Pedidos", true,
                  {{L"Novo pedido", Glyph::kNew},
                   {L"Abrir", Glyph::kOpen},
                   {L"Salvar", Glyph::kSave},
                   {L"Imprimir boleto", Glyph::kPrint, true}});
  filler.category(L"Clientes", false,
                  {{L"Cadastro de clientes", Glyph::kPerson}, {L"Enviar e-mail", Glyph::kMail}});
  filler.category(L"Análise", true,
                  {{L"Gráfico de vendas", Glyph::kChart, true}, {L"Localizar", Glyph::kFind}});
  for (long i = 0; i < 2; ++i) {
    const ComPtr<IDispatch> picture = glyph_picture(i == 0 ? Glyph::kFind : Glyph::kHelp, 16);
    call(ribbon, L"AddTabButton",
         {Variant(i), Variant(picture.get()), Variant(0L),
          Variant(i == 0 ? L"Localizar" : L"Ajuda")});
  }
  call(ribbon, L"Refresh", {});
}

Prepare office(long theme) {
  return [=](IDispatch* ribbon) {
    put_property(ribbon, L"Theme", Variant(theme));
    fill_office(ribbon);
  };
}

Prepare sized(long theme) {
  return [=](IDispatch* ribbon) {
    put_property(ribbon, L"Theme", Variant(theme));
    fill_office(ribbon);
    for (long i = 0; i < 10; ++i)
      if (i % 4 != 0) set_indexed(ribbon, L"ButtonSize", i, Variant(i > 5 ? 2L : 1L));
    set_indexed(ribbon, L"ButtonStyle", 1, Variant(1L));
    set_indexed(ribbon, L"ButtonValue", 1, Variant(true));
    set_indexed(ribbon, L"ButtonEnabled", 3, Variant(false));
    set_indexed(ribbon, L"TabColor", 3, Variant(0x3C8CE6L));
    put_property(ribbon, L"ShrinkGroups", Variant(true));
    call(ribbon, L"Refresh", {});
  };
}

constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};

void themes(Page& page, const std::function<Prepare(long)>& prepare, int width) {
  for (long theme = 0; theme < 3; ++theme) {
    page.text(make_rect(look::kMargin, page.y(), 200, 16), kThemes[theme], TextStyle::kSmall);
    page.control(kProgId, make_rect(look::kMargin, page.y() + 20, width, kHeight), prepare(theme));
    page.skip(kHeight + 34);
  }
}

// The pointer rests in the middle of the control, on a button.
void states(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    int x = look::kMargin;
    for (const Situation situation : {Situation::kOver, Situation::kPressed}) {
      page.picture(x, page.y(), page.snapshot(kProgId, 380, kHeight, situation, office(theme)));
      x += 400;
    }
    page.skip(kHeight + 24);
  }
}

void close_up(Page& page) {
  constexpr int kWidth = 92, kScale = 3;
  for (int theme = 0; theme < 3; ++theme)
    page.picture(look::kMargin + theme * kScale * kWidth, page.y(),
                 page.snapshot(kProgId, kWidth - 2, kHeight, Situation::kOver, office(theme))
                     .part({0, 0, kWidth, kHeight + 4}),
                 kScale);
  page.skip(kScale * (kHeight + 8));
}

}  // namespace

void build_us_ribbon_page(Page& page) {
  page.title(L"USRibbon", L"Faixa de opções com guias, categorias e botões grandes.");
  page.section(L"Os três temas");
  themes(page, office, 790);
  page.section(L"Botões médios e pequenos, marcados e desabilitados; guia de contexto");
  themes(page, sized, 600);
}

void build_us_ribbon_states_page(Page& page) {
  page.title(L"USRibbon: estados", L"Sob o ponteiro, pressionado e de perto.");
  page.section(L"Sob o ponteiro e pressionado");
  states(page);
  page.section(L"Estreita, três vezes ampliada");
  close_up(page);
}

}  // namespace kestrelon::host
