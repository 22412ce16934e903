#include "tests/controls/control_fixture.h"

#include "frame/dib_section.h"
#include "frame/kit/lines.h"

namespace kestrelon::host {

Picture draw_control(ControlSite& site, int width, int height, COLORREF behind) {
  DibSection memory;
  if (!memory.create(width, height)) return {};
  fill_rect(memory.pixels(), memory.pixels().bounds(), behind);
  site.draw_into(memory.dc(), RECT{0, 0, width, height});
  Picture out{width, height, {}};
  const PixelView view = memory.pixels();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) out.pixels.push_back(view.row(y)[x] & kColorBits);
  return out;
}

}  // namespace kestrelon::host
