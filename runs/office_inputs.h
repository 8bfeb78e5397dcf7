// Office files among the inputs: finding them, and the modules that they hold.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "runs/inputs.h"
#include "sources/office_file/office_file.h"

namespace tintline {

struct OfficeProject {
  std::filesystem::path place;  // of its file
  std::wstring name;
  bool locked;
  bool isSigned;
};

// A module of an Office file.
struct OfficeModule {
  std::wstring name;
  vb::ModuleKind kind;
  std::size_t lines;  // as the editor counts them
  std::string text;   // as the editor exports it, or as it shows it: InputChoice::inEditor
  vb::CodePage codePage;
  Message hint;  // what the user should know of it
  std::shared_ptr<const OfficeProject> project;
};

// An Office file, read.
struct OfficeDocument {
  std::vector<office_file::Project> projects;
  std::vector<Message> failures;            // what could not be read
  std::vector<office_file::Problem> hints;  // what is worth knowing
  bool isForeign = false;  // nothing of Office's, or without a project: in a folder, no failure
};

// What the user is warned of: the hint about an Office module, else what decoding its input lost.
Message warningOf(const Input& input, const Message& lost);

// Throws FileError, and what `watch` throws, which is called now and then meanwhile.
OfficeDocument readOffice(const Input& input, const std::function<void()>& watch = {});

// Whether the choice wants the module.
bool isWanted(const office_file::Module& module, const InputChoice& choice);

// Names of files, each given once where case does not count.
class FreeNames {
 public:
  // Below the folder: the stem, made safe, with a number behind it when it is taken.
  std::filesystem::path take(const std::filesystem::path& folder, std::wstring_view stem,
                             std::wstring_view ending);

 private:
  std::map<std::filesystem::path::string_type, std::size_t>
      taken_;  // and how often they were asked
};

// Gives Office files that have the same place their parent folders' names in front.
void tellPlacesApart(std::vector<Input>& inputs);

// Several modules as one: each behind a comment with its name, which opens a frame. For the classic
// conversion, which makes one document of one input.
Input joinedModules(const std::vector<Input>& modules);

// The inputs with the modules of each Office file in its place. What cannot be read becomes a
// failure of its own; in folders, files without code are passed over.
Inputs withOfficeModules(Inputs inputs, const InputChoice& choice);

}  // namespace tintline
