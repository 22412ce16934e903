#include "imaging/zlib_api.h"

namespace kestrelon {
namespace {

ZlibLoader g_loader = nullptr;

}  // namespace

void set_zlib_loader(ZlibLoader loader) {
  g_loader = loader;
}

const ZlibApi* find_zlib() {
  return g_loader ? g_loader() : nullptr;
}

}  // namespace kestrelon
