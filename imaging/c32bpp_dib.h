// The image class of the library: a rectangle of premultiplied 32-bit pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "imaging/dib_arguments.h"
#include "imaging/image_types.h"
#include "imaging/image_view.h"
#include "imaging/imaging_bridge.h"
#include "imaging/png_properties.h"
#include "imaging/tones.h"

namespace kestrelon {

/// Memory behind an image: the heap in the portable half, a DIB section where Windows is.
class PixelStore {
 public:
  virtual ~PixelStore() = default;
  /// First byte of the bottom row; width * height * 4 zeroed bytes, owned by the store.
  virtual uint8_t* bits() = 0;
  /// The platform's bitmap handle, or any value other than 0.
  virtual intptr_t handle() = 0;
};

/// Makes a zero-filled store for width * height pixels (both above 0), or null when memory is
/// short.
using PixelStoreFactory = std::function<std::unique_ptr<PixelStore>(int32_t width, int32_t height)>;

/// 32-bit premultiplied pixels: bytes blue, green, red, alpha; rows bottom-up in memory, without
/// gaps. Invariant: every colour byte is at most the pixel's alpha. Public coordinates are top-left
/// based; colours are 0x00BBGGRR. Operations answer success and do not throw but for lack of
/// memory.
class c32bppDIB {
 public:
  /// No image has more pixels than this; every reader checks it before memory is taken.
  static constexpr int64_t kMaxPixels = int64_t{1} << 28;

  c32bppDIB();
  /// An empty factory stands for the heap.
  explicit c32bppDIB(PixelStoreFactory factory);
  ~c32bppDIB();
  c32bppDIB(const c32bppDIB&) = delete;
  c32bppDIB& operator=(const c32bppDIB&) = delete;

  // --- The image (c32bpp_dib.cpp)

  /// Replaces any image by a zeroed one of `width` by |`height`|: format None, alpha Simple.
  /// A height of 0 or a negative width changes nothing and answers false; a width of 0, more than
  /// kMaxPixels or lack of memory: false, and no image.
  bool InitializeDIB(int32_t width, int32_t height);
  /// Frees the image and the original bytes: sizes 0, format Error, alpha None.
  void DestroyDIB();
  /// Zeroes all pixels: format None, alpha Simple.
  void EraseDIB();
  /// Exchanges image, types and original bytes with `other`; settings stay where they are.
  void SwapDIBs(c32bppDIB& other);

  bool has_image() const { return store_ != nullptr; }
  /// The platform's bitmap handle; 0 without an image.
  intptr_t handle() const { return store_ ? store_->handle() : 0; }
  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }
  /// Bytes of a row; rows have no padding.
  size_t scanWidth() const { return static_cast<size_t>(width_) * 4; }
  size_t pixel_count() const { return static_cast<size_t>(width_) * static_cast<size_t>(height_); }

  /// First byte of the bottom row, or null without an image.
  uint8_t* bits() { return bits_; }
  const uint8_t* bits() const { return bits_; }
  /// First byte of picture row `y`, counted from the top; `y` must lie in the image.
  uint8_t* row(int32_t y) { return bits_ + static_cast<size_t>(height_ - 1 - y) * scanWidth(); }
  const uint8_t* row(int32_t y) const {
    return bits_ + static_cast<size_t>(height_ - 1 - y) * scanWidth();
  }
  /// All pixels, top-left based; empty without an image.
  ImageView view() const;
  MutableImageView view();

  ImageFormat ImageType() const { return image_type_; }
  void set_image_type(ImageFormat type) { image_type_ = type; }
  AlphaType Alpha() const { return alpha_; }
  void set_alpha(AlphaType alpha) { alpha_ = alpha; }

  /// The source file as read, kept only when a load was asked to. False if there is none.
  bool GetOrginalFormat(std::vector<uint8_t>& bytes) const;
  std::span<const uint8_t> original_bytes() const { return original_bytes_; }
  void set_original_bytes(std::vector<uint8_t> bytes) { original_bytes_ = std::move(bytes); }

  // --- Settings (dib_settings.cpp)

  bool isAlphaBlendFriendly() const { return (flags_ & kFlagAlphaBlend) != 0; }
  void set_isAlphaBlendFriendly(bool on);
  bool isGDIplusEnabled() const { return (flags_ & kFlagLibrary) != 0; }
  void set_isGDIplusEnabled(bool on);
  bool isZlibEnabled() const;
  bool KeepGDIplusActive() const { return keep_library_active_; }
  /// True is refused, and becomes false, while isGDIplusEnabled is false.
  void set_KeepGDIplusActive(bool on);
  intptr_t gdiToken() const { return library_token_; }
  void set_gdiToken(intptr_t token) { library_token_ = token; }
  static intptr_t CreateGDIplusToken() { return imaging_bridge().start_library(); }
  static void DestroyGDIplusToken(intptr_t token);
  bool HighQualityInterpolation() const { return high_quality_; }
  void set_HighQualityInterpolation(bool on) { high_quality_ = on; }
  /// All system flags as one number.
  int32_t system_flags() const { return flags_; }

  /// ClearProps discards the store; no value removes the entry; a value makes the store on demand.
  bool PngPropertySet(PngProperty id, std::optional<PngPropertyValue> value,
                      std::wstring_view keyword = {});
  PngPropertyValue PngPropertyGet(PngProperty id, std::wstring_view keyword = {}) const;
  /// The store, or null if nothing was ever set.
  const PngProperties* png_properties() const { return png_properties_.get(); }

  // --- Pixels (dib_pixels.cpp)

  /// The colour, or -1 out of bounds; `alpha`, if not null, gets the pixel's alpha. Straight colour
  /// unless `as_premultiplied`.
  int32_t GetPixel(int32_t x, int32_t y, int32_t* alpha = nullptr,
                   bool as_premultiplied = false) const;
  /// Address of the pixel written, 0 if a position or `alpha` (0 to 255) is out of range. Colour
  /// bytes above `alpha` are scaled even if said to be premultiplied.
  intptr_t SetPixel(int32_t x, int32_t y, int32_t color, int32_t alpha = 255,
                    bool is_premultiplied = false);
  /// Copies a rectangle out. A width or height of 0 means the whole; the rectangle is clipped.
  bool GetDIBbits(std::vector<uint8_t>& out, const BitsFormat& format,
                  const ImageRect& area = {}) const;
  /// Stores bytes as given, without a look at the invariant; three-byte input leaves alpha alone.
  bool SetDIBbits(std::span<const uint8_t> bytes, const BitsFormat& format,
                  const ImageRect& area = {});
  /// One alpha byte a pixel; rows padded to four bytes if asked.
  bool GetAlphaMask(std::vector<uint8_t>& out, bool dword_aligned, bool bottom_up,
                    const ImageRect& area = {}) const;

  // --- Loading (dib_load.cpp). The current image is destroyed first; true if one exists
  // afterwards.

  /// A file of 56 bytes or less is not tried.
  bool LoadPicture_File(const std::wstring& file_name, const LoadOptions& options = {});
  /// `offset` below 0 counts as 0, `length` 0 as to the end; fewer than 20 bytes are not tried.
  bool LoadPicture_Stream(std::span<const uint8_t> stream, const LoadOptions& options = {},
                          int64_t offset = 0, int64_t length = 0);
  /// Reads the original bytes again, for instance for another icon size.
  bool LoadPicture_FromOrignalFormat(int32_t icon_cx = 0, int32_t icon_cy = 0,
                                     int32_t icon_bit_depth = 32);
  /// The pictures in the icon file that the original bytes are; false if they are none.
  bool SourceIconSizes(std::vector<IconSize>& sizes) const;

  // --- Saving (dib_save.cpp). An existing file is replaced; a stream's old content is dropped.

  bool SaveToFile_Bitmap(const std::wstring& file_name, bool keep_premultiplied = false,
                         int32_t fill_color = 0xFFFFFF) const;
  bool SaveToStream_Bitmap(std::vector<uint8_t>& out, bool keep_premultiplied = false,
                           int32_t fill_color = 0xFFFFFF) const;
  bool SaveToFile_PNG(const std::wstring& file_name) const;
  bool SaveToStream_PNG(std::vector<uint8_t>& out) const;
  bool SaveToFile_JPG(const std::wstring& file_name, int32_t quality = 80,
                      int32_t fill_color = 0xFFFFFF) const;
  bool SaveToStream_JPG(std::vector<uint8_t>& out, int32_t quality = 80,
                        int32_t fill_color = 0xFFFFFF) const;
  bool SaveToFile_GIF(const std::wstring& file_name, bool adaptive_palette = true,
                      int32_t opaqueness_tolerance = 128) const;
  bool SaveToStream_GIF(std::vector<uint8_t>& out, bool adaptive_palette = true,
                        int32_t opaqueness_tolerance = 128) const;
  bool SaveToFile_TGA(const std::wstring& file_name, bool compress = true,
                      bool reduce_bit_depth = true, bool allow_premultiplied = false) const;
  bool SaveToStream_TGA(std::vector<uint8_t>& out, bool compress = true,
                        bool reduce_bit_depth = true, bool allow_premultiplied = false) const;

  // --- Drawing (dib_render.cpp, dib_rotate.cpp, dib_tile.cpp)

  /// Draws on `destination`, or on `args.destHostDIB` if given. See RenderArguments.
  bool Render(DrawingSurface* destination, const RenderArguments& args) const;
  /// Fills the target rectangle with copies of the source rectangle; effects apply once.
  bool TileImage(DrawingSurface* destination, const RenderArguments& args) const;
  /// Draws this image's shadow without keeping it.
  bool RenderDropShadow_JIT(DrawingSurface* destination, int32_t dest_x, int32_t dest_y,
                            int32_t depth, int32_t color, int32_t opacity = 100, float light = 0,
                            GrayScale gray = GrayScale::None, c32bppDIB* host = nullptr) const;

  // --- Other sizes (dib_copy.cpp, dib_trim.cpp)

  /// Copies the image, scaled if a size is given; a negative size mirrors. Pixel format and alpha
  /// go along, original bytes only if asked.
  bool CopyImageTo(c32bppDIB& dest, int32_t new_width = 0, int32_t new_height = 0,
                   bool copy_original_bytes = false) const;
  /// A copy in a new image with this one's settings; null on failure.
  std::unique_ptr<c32bppDIB> CopyImage(int32_t new_width = 0, int32_t new_height = 0,
                                       bool copy_original_bytes = false) const;
  bool Resize(int32_t new_width, int32_t new_height);
  /// The size at which the image fits; computes only.
  bool ScaleImage(int32_t dest_width, int32_t dest_height, int32_t& out_width, int32_t& out_height,
                  ScaleOption option) const;
  /// Finds the part that is not transparent and, with `update`, cuts the image to it.
  bool TrimImage(bool update, int32_t method, ImageRect& found);
  /// The visible area as rectangles, top to bottom, left to right, moved by the offset. Empty
  /// answer without an image or with an unknown style.
  std::optional<std::vector<ImageRect>> CreateRegion(RegionStyle style, int32_t offset_x = 0,
                                                     int32_t offset_y = 0) const;

  // --- Changing pixels (dib_adjust.cpp, dib_shadow.cpp)

  bool MakeGrayScale(GrayScale formula);
  bool MakeImageInverse();
  bool MakeTransparent(int32_t color, bool reverse = false);
  bool MirrorImage(bool mirror_x, bool mirror_y);
  bool MakeLighterDarker(float percent);
  bool BlendToColor(int32_t color, int32_t blend_percent);
  bool CreateCheckerBoard(int32_t size, int32_t color1, int32_t color2);
  /// Makes `out` the shadow: 2 * depth larger each way, depth 0 to 10.
  bool CreateDropShadow(int32_t depth, int32_t color, c32bppDIB& out) const;

 private:
  static constexpr int32_t kFlagAlphaBlend = 1;
  static constexpr int32_t kFlagLibrary = 2;
  static constexpr int32_t kFlagBlendSound = 8;
  static constexpr int32_t kFlagBlendExists = 16;
  static constexpr int32_t kFlagNoLibrary = 32;
  static constexpr int32_t kFlagNt = 64;

  void set_platform_flags(const PlatformFacts& facts);
  bool run_readers(std::span<const uint8_t> data, const LoadOptions& options,
                   std::vector<uint8_t>& kept);
  bool alpha_blend_serves(const RenderArguments& args, bool mirrored, bool scaled) const;
  bool scale_into(c32bppDIB& dest, int32_t width, int32_t height) const;
  void take_settings(const c32bppDIB& other);

  PixelStoreFactory factory_;
  std::unique_ptr<PixelStore> store_;
  uint8_t* bits_ = nullptr;
  int32_t width_ = 0;
  int32_t height_ = 0;
  int32_t flags_ = 0;
  ImageFormat image_type_ = ImageFormat::Error;
  AlphaType alpha_ = AlphaType::None;
  intptr_t library_token_ = 0;
  std::vector<uint8_t> original_bytes_;
  bool keep_library_active_ = false;
  std::unique_ptr<PngProperties> png_properties_;
  bool high_quality_ = false;
};

}  // namespace kestrelon
