#include "host/gallery/page_list.h"

#include "host/gallery/page.h"

namespace kestrelon::host {

const std::vector<PageEntry>& pages() {
  static const std::vector<PageEntry> list = {
      {L"USCheckBox", L"Controles básicos", build_us_check_box_page},
      {L"USScrollBar", L"Controles básicos", build_us_scroll_bar_page},
      {L"c32bppDIB", L"Imagens", build_images_page},
  };
  return list;
}

}  // namespace kestrelon::host
