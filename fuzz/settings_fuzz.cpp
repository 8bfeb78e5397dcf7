// Fuzzes reading and writing a settings file. The input's first line is a value that is
// written, what follows is the file.
#include <algorithm>
#include <cassert>
#include <cstdint>

#include "base/file.h"
#include "settings/modIniSave.h"
#include "tests/support/temp_folder.h"

using namespace tintline;
using namespace tintline::modIniSave;

namespace {

constexpr std::string_view kOtherKeys[] = {"ColProz", "ColRes",    "ColParms",
                                           "ColRem",  "ColString", "PostCode"};
constexpr std::size_t kLongest = 253;  // characters of a value that come back

void write(const std::filesystem::path& path, std::string_view content) {
  AtomicFile file(path);
  file.stream() << content;
  file.commit();
}

std::vector<std::string> others(const std::filesystem::path& file) {
  std::vector<std::string> values;
  for (const std::string_view key : kOtherKeys) values.push_back(fkt_IniWertLesen(file, key));
  for (const std::string& value : values) assert(value.size() <= kLongest);
  return values;
}

void checkValue(const std::filesystem::path& file, std::string_view value) {
  const std::vector<std::string> before = others(file);
  IniWertSchreiben(file, "PreCode", std::string(value) + ",");
  assert(fkt_IniWertLesen(file, "PreCode") == value.substr(0, kLongest));
  assert(others(file) == before);
}

// The defaults do not shorten field 0: what a damaged file holds there may leave them no room.
bool fits(const ColorScheme& scheme) {
  return std::all_of(scheme.begin(), scheme.end(), [](const auto& fields) {
    std::size_t characters = kColorFields - 1;  // the commas between them
    for (const std::string& field : fields) characters += field.size();
    return characters <= kLongest;
  });
}

void checkColors(const std::filesystem::path& file) {
  const std::string PreCode = fkt_IniWertLesen(file, "PreCode");
  const std::string PostCode = fkt_IniWertLesen(file, "PostCode");
  const std::string content = readFile(file);
  ColorScheme read, again;
  const bool whole = readColors(file, read);
  assert(readFile(file) == content);
  assert(fkt_FarbenLaden(file, again) == whole);
  if (whole) {
    assert(again == read && readFile(file) == content);
    FarbenSpeichern(file, read);
    assert(read == again);
  }
  assert(fkt_IniWertLesen(file, "PreCode") == PreCode);
  assert(fkt_IniWertLesen(file, "PostCode") == PostCode);
  // Either the file holds the table now, or it is damaged behind the first colour.
  ColorScheme kept;
  if ((whole || readFile(file) != content) && fits(again))
    assert(readColors(file, kept) && kept == again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::TempFolder folder;
  static const std::filesystem::path file = folder / kSettingsFile;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view value = input.substr(0, input.find_first_of("\r\n"));
  write(file, input.substr(std::min(value.size() + 1, size)));
  checkValue(file, value);
  checkColors(file);
  return 0;
}
