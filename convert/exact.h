// The exact conversion as a whole: from the texts of files to the documents of their modules.
//
//     const listing::DocumentMaker maker(listing::Format::Page, options, listing::Place::OwnPages);
//     ExactProject project(maker);
//     project.add(module, "Modul1.htm");
//     project.close();
//     project.write(module, 0, u8"Modul1.bas", file);
//
// Tested by tests/cli/run.py and tests/golden.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "convert/format.h"
#include "convert/reformatting.h"
#include "engine/color_scheme.h"
#include "listing/document.h"
#include "listing/options.h"
#include "listing/targets.h"
#include "vb/module.h"
#include "vb/project.h"
#include "vb/text.h"
#include "vb/word.h"

namespace tintline {

// The words that a user's vb.ini, given as its bytes, adds to those of the language.
vb::WordLists exactWords(std::string_view iniFile);

// A style sheet, given as the bytes of its file.
std::u8string exactStyleSheet(std::string_view bytes);

// The colours that are not those which the program begins with.
listing::UserColors exactColors(const ColorScheme& colors);

// The name of a file, or a path below the folder of the page, as the address of a link.
std::u8string addressOf(const std::filesystem::path& page);

// A text as valid UTF-8 in the type of the exact conversion.
std::u8string exactText(std::wstring_view text);

// What a file of that name holds.
vb::ModuleKind moduleKindOf(const std::filesystem::path& file);

// A module of a file, given as its text: reformatted and read. Name and kind are those of the
// file's name, where the text itself does not tell. `inEditor`: without file header and attributes,
// as the editor shows it; what they say of the module still counts. Throws std::length_error when
// it is too large.
vb::Module readExact(std::u8string text, const std::filesystem::path& file,
                     const vb::WordLists& words, const std::vector<Reformatting>& passes = {},
                     bool inEditor = false);

// The form of listings; `format` is one that the exact mode has.
listing::Format listingFormat(Format format);

// Modules that are converted together.
class ExactProject {
 public:
  // The maker of their documents must live as long as the project.
  explicit ExactProject(const listing::DocumentMaker& maker);

  // Adds what the module shows to the others and returns its index. `page` is the name of the
  // file that will show it, empty when no link can lead there.
  std::uint32_t add(const vb::Module& module, const std::filesystem::path& page);

  // To be called once behind the last `add`. What follows may be called by several threads.
  void close() { project_.close(); }

  // What stands in front of a line's number in its id.
  std::u8string linePrefix(std::uint32_t index) const;

  std::unique_ptr<listing::Document> makeDocument(std::u8string_view title,
                                                  std::ostream& out) const;
  void write(const vb::Module& module, std::uint32_t index, listing::Document& document) const;

  // A document of that module alone.
  void write(const vb::Module& module, std::uint32_t index, std::u8string_view title,
             std::ostream& out) const;

 private:
  bool needsReferences() const;

  const listing::DocumentMaker& maker_;
  vb::Project project_;
  listing::Targets targets_;
};

}  // namespace tintline
