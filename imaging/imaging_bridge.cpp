#include "imaging/imaging_bridge.h"

#include <utility>

namespace kestrelon {
namespace {

ImagingBridge*& installed_bridge() {
  static ImagingBridge* bridge = nullptr;
  return bridge;
}

}  // namespace

ImagingBridge& imaging_bridge() {
  static ImagingBridge declining;
  ImagingBridge* bridge = installed_bridge();
  return bridge ? *bridge : declining;
}

ImagingBridge* set_imaging_bridge(ImagingBridge* bridge) {
  return std::exchange(installed_bridge(), bridge);
}

}  // namespace kestrelon
