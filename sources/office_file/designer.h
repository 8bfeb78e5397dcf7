// The designer of a form as its project stores it: a storage with streams and further storages.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sources/office_file/compound_file.h"

namespace tintline::office_file {

struct Storage {
  std::u16string name{};
  ClassId classId{};
  std::vector<std::pair<std::u16string, std::string>> streams{};
  std::vector<Storage> storages{};
};

// The stream of a designer with the form's own properties, as text: [MS-OVBA] 2.3.5.
inline constexpr std::u16string_view kFrameStream = u"\x03VBFrame";

}  // namespace tintline::office_file
