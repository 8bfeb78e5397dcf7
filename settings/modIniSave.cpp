// See modIniSave.h. Tested by tests/unit/app/dialogs_test.cpp.
#include "settings/modIniSave.h"

#include <fstream>
#include <optional>

#include "base/file.h"
#include "base/ini.h"
#include "base/text.h"

namespace tintline::modIniSave {
namespace {

constexpr std::string_view kSection = "TINTLINE";

using ColorValues = std::array<std::string, kColorCategories>;

// The file's content, "" when there is no such file yet. Any other failure is
// none of a missing file: writing now would lose what the file holds.
std::string currentContent(const std::filesystem::path& file) {
  try {
    return readFile(file);
  } catch (const FileError& error) {
    if (error.reason() == std::errc::no_such_file_or_directory) return {};
    throw;
  }
}

void replaceContent(const std::filesystem::path& file, std::string_view content) {
  AtomicFile target(file);
  target.stream() << content;
  target.commit();
}

ColorValues colorValues(const ColorScheme& scheme) {
  ColorValues values;
  for (std::size_t category = 0; category < kColorCategories; ++category)
    for (const std::string& field : scheme[category]) values[category].append(field) += ',';
  return values;
}

// Whether a save would succeed. Nothing is left behind, and a file that is there
// stays as it is.
bool isWritable(const std::filesystem::path& file) {
  std::error_code none;
  if (std::filesystem::exists(file, none) &&
      !std::fstream(file, std::ios::in | std::ios::out | std::ios::binary))
    return false;
  try {
    const AtomicFile neverCommitted(file);
    return true;
  } catch (const FileError&) {
    return false;
  }
}

bool isFile(const std::filesystem::path& path) {
  std::error_code none;
  return std::filesystem::is_regular_file(path, none);
}

// Without the copy the user's file begins with the default colours.
void tryToCopy(const std::filesystem::path& from, const std::filesystem::path& to) {
  try {
    replaceContent(to, readFile(from));
  } catch (const FileError&) {  // goes unreported, as all that concerns this file
  }
}

bool tryToSave(const std::filesystem::path& file, const ColorScheme& scheme) {
  try {
    EinstellungenSchreiben(file, colorValues(scheme), true);
    return true;
  } catch (const FileError&) {
    return false;
  }
}

}  // namespace

std::filesystem::path chooseSettingsFile(const std::filesystem::path& programFolder,
                                         const std::filesystem::path& userFolder) {
  std::filesystem::path beside = programFolder / kSettingsFile;
  if (userFolder.empty() || isWritable(beside)) return beside;
  std::filesystem::path own = userFolder / kSettingsFile;
  if (isFile(own)) return own;
  std::error_code none;
  std::filesystem::create_directories(userFolder, none);
  if (!isWritable(own)) return beside;
  if (isFile(beside)) tryToCopy(beside, own);
  return own;
}

// The value is read into a buffer of 255 characters, one of them for the closing
// zero; its last character is taken for the terminator, whatever it is.
std::string storedText(std::string_view content, std::string_view key) {
  constexpr std::size_t kLongestRead = 254;
  std::string value = storedValue(content, key).value_or("").substr(0, kLongestRead);
  if (!value.empty()) value.pop_back();
  return value;
}

std::optional<std::string> storedValue(std::string_view content, std::string_view key) {
  return ini::value(content, kSection, key);
}

std::string fkt_IniWertLesen(const std::filesystem::path& file, std::string_view key) {
  try {
    return storedText(readFile(file), key);
  } catch (const FileError&) {
    return {};
  }
}

void IniWertSchreiben(const std::filesystem::path& file, std::string_view key,
                      std::string_view value) {
  try {
    replaceContent(file, ini::withValue(currentContent(file), kSection, key, value));
  } catch (const FileError&) {  // goes unreported, on purpose
  }
}

const std::array<std::string_view, kColorCategories>& fkt_FarbSchluessel() {
  static constexpr std::array<std::string_view, kColorCategories> kKeys = {
      "ColProz", "ColRes", "ColParms", "ColRem", "ColString"};
  return kKeys;
}

bool readColors(const std::filesystem::path& file, ColorScheme& scheme) {
  for (std::size_t category = 0; category < kColorCategories; ++category) {
    const std::string value = fkt_IniWertLesen(file, fkt_FarbSchluessel()[category]);
    const std::vector<std::string_view> pieces = Split(value, ',');
    for (std::size_t field = 0; field < kColorFields; ++field) {
      if (field == pieces.size()) return false;
      scheme[category][field] = pieces[field];
    }
  }
  return true;
}

// Only category 0 tells whether the table holds a scheme, on purpose: damage further
// back leaves the table half read and the file as it is.
bool setMissingColors(ColorScheme& scheme) {
  if (!scheme[kProzeduren][kTransparency].empty()) return false;
  modColor::Farbesetzen(scheme);
  return true;
}

bool fkt_FarbenLaden(const std::filesystem::path& file, ColorScheme& scheme) {
  if (readColors(file, scheme)) return true;
  if (setMissingColors(scheme)) FarbenSpeichern(file, scheme);
  return false;
}

void FarbenSpeichern(const std::filesystem::path& file, ColorScheme& scheme) {
  if (!tryToSave(file, scheme)) {
    modColor::Farbesetzen(scheme);
    tryToSave(file, scheme);
  }
  if (!readColors(file, scheme)) setMissingColors(scheme);
}

void EinstellungenSchreiben(const std::filesystem::path& file, const ColorValues& colors,
                            bool rewrite) {
  std::string content = currentContent(file);
  std::string PreCode, PostCode;
  const std::optional<std::string> language = storedValue(content, kLanguageKey);
  const std::optional<std::string> mode = storedValue(content, kModeKey);
  if (rewrite) {
    PreCode = storedText(content, "PreCode");
    PostCode = storedText(content, "PostCode");
    content.clear();
  }
  const auto write = [&content](std::string_view key, std::string_view value) {
    content = ini::withValue(content, kSection, key, value);
  };
  for (std::size_t category = 0; category < kColorCategories; ++category)
    write(fkt_FarbSchluessel()[category], colors[category]);
  write("PreCode", PreCode + ",");
  write("PostCode", PostCode + ",");
  if (rewrite && language) write(kLanguageKey, *language);
  if (rewrite && mode) write(kModeKey, *mode);
  replaceContent(file, content);
}

}  // namespace tintline::modIniSave
