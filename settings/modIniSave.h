// The settings file "TINTLINE.ini": the colour scheme and the texts around a
// clipboard copy. Every value is stored with a closing "," that reading drops. It
// lies beside the program, or in the user's own folder where he may not write there.
//
// Tested by tests/unit/app/dialogs_test.cpp.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "engine/color_scheme.h"

namespace tintline::modIniSave {

inline constexpr std::string_view kSettingsFile = "TINTLINE.ini";

// The settings file to read and write: the one beside the program when it can be
// written or created, else the one in the user's folder, which is created when it is
// missing. Where neither is possible (an empty `userFolder` stands for none), the one
// beside the program, to be read at least.
//
// A file in the user's folder begins as a copy of the one beside the program, made
// here once: what is changed there afterwards no longer counts for this user.
std::filesystem::path chooseSettingsFile(const std::filesystem::path& programFolder,
                                         const std::filesystem::path& userFolder);

// The language of the words on pages of the exact conversion, "de" or "en". Only the command line
// uses it; it stays when the window saves.
inline constexpr std::string_view kLanguageKey = "Sprache";

// The mode of the window, "genau" or "klassisch"; only the window reads it.
inline constexpr std::string_view kModeKey = "Modus";

// The stored text of a key without its last character (the terminator), "" when
// file or key are missing. At most 254 characters of a value are read, so at
// most 253 come back.
std::string fkt_IniWertLesen(const std::filesystem::path& file, std::string_view key);

// The same of the bytes of a file.
std::string storedText(std::string_view content, std::string_view key);

// Writes key = value; file and section are created when missing. The value must
// bring its terminator along. A failure goes unreported, the old file stays whole.
void IniWertSchreiben(const std::filesystem::path& file, std::string_view key,
                      std::string_view value);

// What a file, given as its bytes, has behind the key's "="; nothing when the key is missing.
std::optional<std::string> storedValue(std::string_view content, std::string_view key);

// The keys of the five colour categories, in their order.
const std::array<std::string_view, kColorCategories>& fkt_FarbSchluessel();

// Reads the colours into the table and never writes. Stops with false at the
// first damaged value; what was stored before it stays.
bool readColors(const std::filesystem::path& file, ColorScheme& scheme);

// Puts the default colours into a table that holds no scheme; whether it did.
bool setMissingColors(ColorScheme& scheme);

// Reads the colours. When that fails and the table holds no scheme yet, puts the
// default colours into it and saves them; false in every case of failure.
bool fkt_FarbenLaden(const std::filesystem::path& file, ColorScheme& scheme);

// Rewrites the file from the table and reads it back. When the file cannot be
// written, the table gets the default colours and the save is tried once more.
void FarbenSpeichern(const std::filesystem::path& file, ColorScheme& scheme);

// Writes the whole file: the five colour values as given, PreCode and PostCode
// (and language and mode, where there are any) kept when `rewrite` is set, else emptied. Throws
// FileError.
void EinstellungenSchreiben(const std::filesystem::path& file,
                            const std::array<std::string, kColorCategories>& colors, bool rewrite);

}  // namespace tintline::modIniSave
