// Questions to the user that the platform's own dialogs ask.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace tintline {

struct FileDialog {
  std::wstring title;
  std::wstring filter;                // "text|pattern;pattern|text|pattern"
  std::wstring fileName;              // what the dialog offers, "" for nothing
  std::filesystem::path folder = {};  // that it begins in; empty: as the system likes it
};

// What a file dialog gave: a path, or the number of an error. Cancelling is one.
struct FileChoice {
  static constexpr long kCancelled = 32755;

  long error = 0;
  std::filesystem::path path;  // the full path, as the user chose or typed it
  int filterIndex = 1;         // the chosen filter, from 1
};

enum class MessageIcon { None, Information, Critical };

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // One existing file to read.
  virtual FileChoice showOpen(const FileDialog& dialog) = 0;

  // A file to write; the program itself asks before it replaces one.
  virtual FileChoice showSave(const FileDialog& dialog) = 0;

  // An existing folder of the file system, `startFolder` chosen at first; nothing when
  // the user cancels.
  virtual std::optional<std::filesystem::path> chooseFolder(
      const std::wstring& title, const std::filesystem::path& startFolder) = 0;

  // The same, or an existing file.
  virtual std::optional<std::filesystem::path> chooseFolderOrFile(
      const std::wstring& title, const std::filesystem::path& startFolder) = 0;

  // A box with "OK". An empty title stands for the program's name.
  virtual void message(const std::wstring& text, MessageIcon icon, const std::wstring& title) = 0;

  // A box with "Ja" and "Nein", which Enter answers; true for "Ja".
  virtual bool confirm(const std::wstring& text) = 0;

  // One line of text, `value` offered; nothing when the user cancels.
  virtual std::optional<std::wstring> input(const std::wstring& prompt,
                                            const std::wstring& value) = 0;

  // A colour integer 0x00BBGGRR, `color` offered; nothing when the user cancels.
  virtual std::optional<std::uint32_t> chooseColor(std::uint32_t color) = 0;
};

}  // namespace tintline
