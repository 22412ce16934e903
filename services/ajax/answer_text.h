// The text of an HTTP answer, where the platform leaves its bytes packed or misreads their set.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

/// The content of a gzip file; nothing when it is damaged, cut short or larger than `limit` bytes.
std::optional<std::vector<uint8_t>> gunzip(std::span<const uint8_t> bytes, uint64_t limit);

/// The text of an answer's bytes. A byte order mark tells the character set before `content_type`
/// does; where neither tells, bytes that are no UTF-8 are of the Western page. Nothing for a set
/// that is not known here and for packed bytes that cannot be unpacked.
std::optional<std::wstring> answer_text(std::span<const uint8_t> body,
                                        std::wstring_view content_type);

}  // namespace kestrelon
