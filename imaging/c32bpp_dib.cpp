#include "imaging/c32bpp_dib.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace kestrelon {
namespace {

class HeapStore final : public PixelStore {
 public:
  explicit HeapStore(size_t bytes) : bits_(static_cast<uint8_t*>(std::calloc(bytes, 1))) {}
  ~HeapStore() override { std::free(bits_); }
  HeapStore(const HeapStore&) = delete;
  HeapStore& operator=(const HeapStore&) = delete;
  uint8_t* bits() override { return bits_; }
  intptr_t handle() override { return reinterpret_cast<intptr_t>(bits_); }

 private:
  uint8_t* bits_;
};

std::unique_ptr<PixelStore> make_heap_store(int32_t width, int32_t height) {
  auto store = std::make_unique<HeapStore>(static_cast<size_t>(width) * height * 4);
  if (store->bits() == nullptr) return nullptr;
  return store;
}

}  // namespace

c32bppDIB::c32bppDIB() : c32bppDIB(make_heap_store) {}
c32bppDIB::c32bppDIB(PixelStoreFactory factory)
    : factory_(factory ? std::move(factory) : make_heap_store) {
  set_platform_flags(imaging_bridge().facts());
}
c32bppDIB::~c32bppDIB() = default;

bool c32bppDIB::InitializeDIB(int32_t width, int32_t height) {
  if (width < 0 || height == 0) return false;
  DestroyDIB();
  const int64_t rows = height < 0 ? -int64_t{height} : int64_t{height};
  if (width == 0 || width * rows > kMaxPixels) return false;
  store_ = factory_(width, static_cast<int32_t>(rows));
  if (!store_) return false;
  bits_ = store_->bits();
  width_ = width;
  height_ = static_cast<int32_t>(rows);
  // The store comes zeroed, so this is what EraseDIB leaves.
  image_type_ = ImageFormat::None;
  alpha_ = AlphaType::Simple;
  return true;
}

void c32bppDIB::DestroyDIB() {
  store_.reset();
  original_bytes_ = {};
  bits_ = nullptr;
  width_ = height_ = 0;
  image_type_ = ImageFormat::Error;
  alpha_ = AlphaType::None;
}

void c32bppDIB::EraseDIB() {
  if (!has_image()) return;
  std::memset(bits_, 0, scanWidth() * static_cast<size_t>(height_));
  image_type_ = ImageFormat::None;
  alpha_ = AlphaType::Simple;
}

void c32bppDIB::SwapDIBs(c32bppDIB& other) {
  std::swap(store_, other.store_);
  std::swap(bits_, other.bits_);
  std::swap(width_, other.width_);
  std::swap(height_, other.height_);
  std::swap(image_type_, other.image_type_);
  std::swap(alpha_, other.alpha_);
  std::swap(original_bytes_, other.original_bytes_);
}

ImageView c32bppDIB::view() const {
  if (!has_image()) return {};
  return {row(0), -static_cast<ptrdiff_t>(scanWidth()), width_, height_};
}

MutableImageView c32bppDIB::view() {
  if (!has_image()) return {};
  return {row(0), -static_cast<ptrdiff_t>(scanWidth()), width_, height_};
}

bool c32bppDIB::GetOrginalFormat(std::vector<uint8_t>& bytes) const {
  bytes = original_bytes_;
  return !bytes.empty();
}

}  // namespace kestrelon
