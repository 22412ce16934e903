#include "frame/object_bytes.h"

#include <olectl.h>

#include <cstring>

#include "base/byte_reader.h"

namespace kestrelon {
namespace {

constexpr size_t kLargestObject = 128u << 20;

std::vector<uint8_t> stream_bytes(IStream& stream) {
  STATSTG state{};
  if (FAILED(stream.Stat(&state, STATFLAG_NONAME)) || state.cbSize.QuadPart > kLargestObject)
    return {};
  std::vector<uint8_t> out(static_cast<size_t>(state.cbSize.QuadPart));
  stream.Seek({}, STREAM_SEEK_SET, nullptr);
  ULONG read = 0;
  stream.Read(out.data(), static_cast<ULONG>(out.size()), &read);
  out.resize(read);
  return out;
}

std::vector<uint8_t> object_bytes(IUnknown* object) {
  const auto persist = query<IPersistStream>(object);
  ComPtr<IStream> stream;
  CLSID clsid{};
  if (!persist || FAILED(persist->GetClassID(&clsid)) ||
      FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
      FAILED(persist->Save(stream.get(), TRUE))) {
    return {};
  }
  std::vector<uint8_t> out(sizeof clsid);
  std::memcpy(out.data(), &clsid, sizeof clsid);
  const auto body = stream_bytes(*stream.get());
  out.insert(out.end(), body.begin(), body.end());
  return out;
}

ComPtr<IUnknown> empty_object(const CLSID& clsid) {
  ComPtr<IUnknown> out;
  if (clsid == CLSID_StdFont) {
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    wchar_t name[] = L"Tahoma";
    description.lpstrName = name;
    description.cySize.int64 = 80000;
    description.sWeight = FW_NORMAL;
    OleCreateFontIndirect(&description, IID_IUnknown, out.put_void());
  } else if (clsid == CLSID_StdPicture) {
    OleCreatePictureIndirect(nullptr, IID_IUnknown, TRUE, out.put_void());
  }
  return out;
}

ComPtr<IUnknown> load_object(std::span<const uint8_t> data) {
  CLSID clsid{};
  ByteReader reader(data);
  if (!reader.read(clsid)) return {};
  const auto object = empty_object(clsid);
  const auto persist = object.as<IPersistStream>();
  const auto body = reader.rest();
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, body.empty() ? 1 : body.size());
  if (!persist || memory == nullptr) return {};
  std::memcpy(GlobalLock(memory), body.data(), body.size());
  GlobalUnlock(memory);
  ComPtr<IStream> stream;
  if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.put()))) {
    GlobalFree(memory);
    return {};
  }
  ULARGE_INTEGER size{};
  size.QuadPart = body.size();
  stream->SetSize(size);
  return SUCCEEDED(persist->Load(stream.get())) ? object : ComPtr<IUnknown>();
}

std::vector<uint8_t> number_bytes(const VARIANT& value, size_t size) {
  const auto* const first = reinterpret_cast<const uint8_t*>(&V_UI1(&value));
  return {first, first + size};
}

// Bytes of a plain number held in a VARIANT, 0 for any other type.
size_t number_size(VARTYPE type) {
  switch (type) {
    case VT_UI1:
    case VT_I1:
      return 1;
    case VT_BOOL:
    case VT_I2:
    case VT_UI2:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_R4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
      return 4;
    case VT_R8:
    case VT_DATE:
    case VT_CY:
      return 8;
    default:
      return 0;
  }
}

}  // namespace

PropertyRecord to_record(std::wstring_view key, const VARIANT& value) {
  PropertyRecord record{std::wstring(key), V_VT(&value), {}};
  if (const size_t size = number_size(V_VT(&value))) {
    record.data = number_bytes(value, size);
  } else if (V_VT(&value) == VT_BSTR) {
    record.data = utf16_bytes(to_wstring(V_BSTR(&value)));
  } else if (V_VT(&value) == (VT_ARRAY | VT_UI1)) {
    void* data = nullptr;
    SAFEARRAY* const array = V_ARRAY(&value);
    if (array != nullptr && SUCCEEDED(SafeArrayAccessData(array, &data))) {
      const auto* const bytes = static_cast<const uint8_t*>(data);
      record.data.assign(bytes, bytes + array->rgsabound[0].cElements);
      SafeArrayUnaccessData(array);
    }
  } else if (V_VT(&value) == VT_UNKNOWN || V_VT(&value) == VT_DISPATCH) {
    record.type = VT_UNKNOWN;
    record.data = object_bytes(V_UNKNOWN(&value));
    if (record.data.empty()) record.type = VT_EMPTY;
  } else {
    record.type = VT_EMPTY;
  }
  return record;
}

Variant from_record(const PropertyRecord& record) {
  Variant out;
  if (const size_t size = number_size(record.type)) {
    if (record.data.size() != size) return out;
    V_VT(&out) = record.type;
    std::memcpy(&V_UI1(&out), record.data.data(), size);
  } else if (record.type == VT_BSTR) {
    out = Variant(std::wstring_view(utf16_text(record.data)));
  } else if (record.type == (VT_ARRAY | VT_UI1)) {
    SAFEARRAY* const array =
        SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(record.data.size()));
    if (array == nullptr) return out;
    V_VT(&out) = record.type;
    V_ARRAY(&out) = array;
    std::memcpy(array->pvData, record.data.data(), record.data.size());
  } else if (record.type == VT_UNKNOWN) {
    if (const auto object = load_object(record.data)) out = Variant(object.get());
  }
  return out;
}

}  // namespace kestrelon
