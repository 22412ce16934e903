#include "imaging/dib_win.h"

#include "base/com_win.h"
#include "base/module_win.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {

PixelStoreFactory WindowsImage::started_factory() {
  start_imaging();
  return make_dib_section_store;
}

bool load_resource_image(c32bppDIB& image, HINSTANCE module, const wchar_t* name,
                         const wchar_t* type, const LoadOptions& options) {
  image.DestroyDIB();
  const HRSRC found = FindResourceW(module, name, type);
  const HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
  const void* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
  if (bytes == nullptr) return false;
  return image.LoadPicture_Stream(
      {static_cast<const uint8_t*>(bytes), SizeofResource(module, found)}, options);
}

bool load_resource_image(c32bppDIB& image, int id, const wchar_t* type,
                         const LoadOptions& options) {
  return load_resource_image(image, module_instance(), MAKEINTRESOURCEW(id), type, options);
}

bool load_std_picture(c32bppDIB& image, IPicture* picture) {
  image.DestroyDIB();
  return picture != nullptr && convert_picture(*picture, image);
}

bool load_std_picture(c32bppDIB& image, IUnknown* picture) {
  return load_std_picture(image, query<IPicture>(picture).get());
}

bool load_handle(c32bppDIB& image, HANDLE handle) {
  return convert_handle(handle, image);
}

bool render_to_dc(const c32bppDIB& image, HDC dc, const RenderArguments& args) {
  if (dc == nullptr) return args.destHostDIB != nullptr && image.Render(nullptr, args);
  DcSurface surface(dc);
  return image.Render(&surface, args);
}

bool render_to_dc(const c32bppDIB& image, HDC dc, int x, int y, int width, int height, int opacity,
                  GrayScale gray, float light) {
  RenderArguments args;
  args.destX = x;
  args.destY = y;
  args.destWidth = width;
  args.destHeight = height;
  args.Opacity = opacity;
  args.grayScale = gray;
  args.LightAdjustment = light;
  return render_to_dc(image, dc, args);
}

}  // namespace kestrelon
