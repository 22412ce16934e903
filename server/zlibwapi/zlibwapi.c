// zlibwapi.dll: the distribution's zlib behind stdcall exports, the form in which the library and its
// users' other programs load it by name. Each function does what zlib's of the same name does.
#include <windows.h>
#include <zlib.h>

uLong WINAPI wapi_crc32(uLong crc, const Bytef* data, uInt length) { return crc32(crc, data, length); }

uLong WINAPI wapi_adler32(uLong adler, const Bytef* data, uInt length) {
  return adler32(adler, data, length);
}

int WINAPI wapi_compress(Bytef* out, uLongf* out_length, const Bytef* data, uLong length) {
  return compress(out, out_length, data, length);
}

int WINAPI wapi_compress2(Bytef* out, uLongf* out_length, const Bytef* data, uLong length, int level) {
  return compress2(out, out_length, data, length, level);
}

uLong WINAPI wapi_compressBound(uLong length) { return compressBound(length); }

int WINAPI wapi_uncompress(Bytef* out, uLongf* out_length, const Bytef* data, uLong length) {
  return uncompress(out, out_length, data, length);
}

int WINAPI wapi_inflateInit_(z_streamp stream, const char* version, int stream_size) {
  return inflateInit_(stream, version, stream_size);
}

int WINAPI wapi_inflate(z_streamp stream, int flush) { return inflate(stream, flush); }

int WINAPI wapi_inflateEnd(z_streamp stream) { return inflateEnd(stream); }

const char* WINAPI wapi_zlibVersion(void) { return zlibVersion(); }
