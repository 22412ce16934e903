// USOptionButton: states, groups on frames and on the form, alignment, transparency.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"
#include "host/property_bag.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USOptionButton";

Prepare option(const wchar_t* caption, bool chosen, bool enabled = true) {
  return [=](IDispatch* control) {
    put_property(control, L"Caption", Variant(caption));
    // Any value given to an option clears the others of its group.
    if (chosen) put_property(control, L"Value", Variant(true));
    if (!enabled) put_property(control, L"Enabled", Variant(false));
  };
}

void states(Page& page) {
  constexpr const wchar_t* kNames[] = {L"normal", L"sob o ponteiro", L"pressionado",
                                       L"desabilitado"};
  constexpr Situation kSituations[] = {Situation::kAway, Situation::kOver, Situation::kPressed,
                                       Situation::kAway};
  for (int i = 0; i < 4; ++i) {
    const int x = look::kMargin + i * 204;
    page.text(make_rect(x, page.y(), 200, 16), kNames[i], TextStyle::kSmall);
    for (int chosen = 0; chosen < 2; ++chosen) {
      const Picture shot =
          page.snapshot(kProgId, 46, 20, kSituations[i], option(L"Sim", chosen == 1, i != 3));
      const int y = page.y() + 20 + chosen * 92;
      page.picture(x, y, shot, 4);
      page.picture(x + 150, y + 30, shot);
    }
  }
  page.skip(204);
}

void groups(Page& page) {
  const int y = page.y();
  constexpr const wchar_t* kPayment[] = {L"À &vista", L"&30 dias", L"30 e &60 dias"};
  constexpr const wchar_t* kFreight[] = {L"Por conta do &emitente", L"Por conta do &destinatário",
                                         L"&Sem frete"};
  for (int i = 0; i < 3; ++i) {
    page.control(kProgId, make_rect(look::kMargin, y + i * 24, 180, 20),
                 option(kPayment[i], i == 1));
  }
  const int left = look::kMargin + 210;
  const auto frame = page.form().add_frame(L"Frete", make_rect(left, y - 4, 240, 88), &page.box());
  const auto bag = make_com<PropertyBag>();
  for (int i = 0; i < 3; ++i) {
    const auto site = page.form().add_control(kProgId, L"", make_rect(12, 8 + i * 24, 210, 20),
                                              frame.get(), {.bag = bag.get()});
    option(kFreight[i], i == 0)(site->dispatch());
  }
  page.control(kProgId, make_rect(left + 270, y, 200, 20), [](IDispatch* control) {
    option(L"Marca à direita", false)(control);
    put_property(control, L"Alignment", Variant(1L));
  });
  const Picture focus =
      page.snapshot(kProgId, 200, 22, Situation::kFocused, option(L"Com o foco do teclado", true));
  page.picture(left + 270, y + 28, focus);
  page.skip(100);
}

}  // namespace

void build_us_option_button_page(Page& page) {
  page.title(L"USOptionButton", L"Botão de opção: uma escolha entre as do mesmo contêiner.");
  page.section(L"Estados, quatro vezes ampliados e no tamanho natural");
  states(page);
  page.section(L"Grupos no formulário e em uma moldura; alinhamento e foco");
  groups(page);
}

}  // namespace kestrelon::host
