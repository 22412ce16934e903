#include "imaging/codecs.h"

#include <utility>

namespace kestrelon {
namespace {

ImageCodecs& codecs_in_force() {
  static ImageCodecs codecs;
  return codecs;
}

}  // namespace

const ImageCodecs& image_codecs() {
  return codecs_in_force();
}

ImageCodecs set_image_codecs(const ImageCodecs& codecs) {
  return std::exchange(codecs_in_force(), codecs);
}

}  // namespace kestrelon
