// What the reader and the writer of compound files share of the format, [MS-CFB] 2.6.1.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tintline::office_file {

inline constexpr std::size_t kEntry = 128;  // bytes of an entry of the directory

enum class EntryType : std::uint8_t { Storage = 1, Stream = 2, Root = 5 };

}  // namespace tintline::office_file
