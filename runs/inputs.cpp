// See inputs.h.
// Tested by tests/cli/run.py.
#include "runs/inputs.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "base/codepage.h"
#include "base/file.h"
#include "convert/exact.h"
#include "runs/messages.h"
#include "runs/office_inputs.h"
#include "vb/fold.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

// What a module is called that comes from the standard input and does not tell its name itself.
constexpr const char* kStandardName = "stdin";

constexpr std::u8string_view kModules[] = {u8".bas", u8".cls", u8".frm", u8".ctl",
                                           u8".pag", u8".dob", u8".dsr"};

// What the development system leaves beside modules, and a pattern like * finds as well.
constexpr std::u8string_view kCompanions[] = {u8".frx", u8".ctx", u8".pgx", u8".dox", u8".dsx",
                                              u8".vbp", u8".vbw", u8".vbg", u8".res", u8".bmp",
                                              u8".ico", u8".gif", u8".jpg", u8".png"};

constexpr std::u8string_view kProjectFiles[] = {u8".vbp"};

// What a file is by the ending of its name.
enum class Called : std::uint8_t { Module, ProjectFile, Companion, Otherwise };

// The module files and the folders in a folder, each by name.
struct Listing {
  std::vector<fs::path> modules, folders;
  std::error_code failure;  // what was found so far counts
};

class Collector {
 public:
  explicit Collector(const InputChoice& choice)
      : wantsProjects_(choice.projectFiles), watch_(choice.watch) {
    if (!choice.results.empty()) results_ = findFile(choice.results).identity;
    for (const fs::path& path : choice.paths) addNamed(path);
    if (!inputs_.modules.empty() || !inputs_.projectFiles.empty()) return;
    for (PassedOver& passedOver : std::exchange(inputs_.passedOver, {}))
      addFailure(std::move(passedOver.path), std::move(passedOver.reason));
  }

  Inputs take() { return std::move(inputs_); }

 private:
  struct Folder {
    fs::path path;
    fs::path place;  // below the named folder
  };

  void addNamed(const fs::path& path) {
    if (path.empty()) {
      inputs_.modules.push_back({.path = {}, .place = kStandardName, .file = {}, .folder = {}});
      return;
    }
    FoundFile file = findFile(path);
    if (file.kind == FoundFile::Kind::Folder) return addFolder(path);
    const Called called = calledBy(path);
    if (called == Called::Companion && file.kind == FoundFile::Kind::File)
      return passOver(path, messages::kNoModuleFile());
    addFile(path, path.filename(), std::move(file), called, false);
  }

  void addFile(fs::path path, fs::path place, FoundFile file, Called called, bool inFolder) {
    fs::path::string_type folder = identityOfFolder(path.parent_path());
    if (file.kind != FoundFile::Kind::Nothing &&
        !known_.insert(folder + fs::path::preferred_separator + nameIdentity(path.filename()))
             .second)
      return;
    const bool isOffice = file.kind == FoundFile::Kind::File && isOfficeFile(path, called);
    auto& inputs = called == Called::ProjectFile ? inputs_.projectFiles : inputs_.modules;
    inputs.push_back({.path = std::move(path),
                      .place = std::move(place),
                      .file = std::move(file),
                      .folder = std::move(folder),
                      .inFolder = inFolder,
                      .isOffice = isOffice});
  }

  // A project file lists modules and is no module itself; where it is not wanted it lies beside
  // them.
  Called calledBy(const fs::path& path) const {
    const std::u8string ending = exactText(pathText(path.extension()));
    if (vb::isOneOf(kModules, ending)) return Called::Module;
    if (wantsProjects_ && vb::isOneOf(kProjectFiles, ending)) return Called::ProjectFile;
    return vb::isOneOf(kCompanions, ending) ? Called::Companion : Called::Otherwise;
  }

  // Office files are told by what is in them; what is called like a module is none.
  static bool isOfficeFile(const fs::path& path, Called called) {
    return called == Called::Otherwise && office_file::isOfficeFileAt(path);
  }

  // All module files below a folder, without recursion: it may be deep.
  void addFolder(const fs::path& root) {
    bool empty = true;
    std::vector<Folder> waiting{{.path = root, .place = {}}};
    while (!waiting.empty()) {
      const Folder folder = std::move(waiting.back());
      waiting.pop_back();
      const Listing listing = list(folder.path);
      empty = empty && listing.modules.empty() && !listing.failure;
      for (const fs::path& name : listing.modules)
        addFound(folder.path / name, folder.place / name);
      if (listing.failure) addFailure(folder.path, reasonText(listing.failure));
      for (auto name = listing.folders.rbegin(); name != listing.folders.rend(); ++name)
        waiting.push_back({.path = folder.path / *name, .place = folder.place / *name});
    }
    if (empty) passOver(root, messages::kHoldsNoModules());
  }

  // A pipe would be waited for, which somebody has to name.
  void addFound(fs::path path, fs::path place) {
    FoundFile file = findFile(path);
    if (file.kind == FoundFile::Kind::Other) return passOver(std::move(path), messages::kNoFile());
    const Called called = calledBy(path);
    addFile(std::move(path), std::move(place), std::move(file), called, true);
  }

  void addFailure(fs::path path, Message reason) {
    inputs_.modules.push_back({.path = std::move(path),
                               .place = {},
                               .file = {},
                               .folder = {},
                               .failure = std::move(reason)});
  }

  Listing list(const fs::path& folder) {
    Listing listing;
    fs::directory_iterator entry(folder, listing.failure);
    for (; !listing.failure && entry != fs::directory_iterator();
         entry.increment(listing.failure)) {
      if (watch_) watch_();
      sortIn(*entry, listing);
    }
    std::ranges::sort(listing.modules);
    std::ranges::sort(listing.folders);
    return listing;
  }

  void sortIn(const fs::directory_entry& entry, Listing& listing) {
    std::error_code none;
    const bool isFolder = entry.is_directory(none);
    const Called called = calledBy(entry.path());
    const bool isModule =
        !isFolder && (called == Called::Module || called == Called::ProjectFile ||
                      (entry.is_regular_file(none) && isOfficeFile(entry.path(), called)));
    if ((!isFolder && !isModule) || isHidden(entry.path())) return;
    if (!isFolder) {
      listing.modules.push_back(entry.path().filename());
    } else if (isFolderLink(entry.path())) {
      passOver(entry.path(), messages::kFolderLink());
    } else if (!results_.empty() && identityOfFolder(entry.path()) == results_) {
      passOver(entry.path(), messages::kTakesResults());
    } else {
      listing.folders.push_back(entry.path().filename());
    }
  }

  void passOver(fs::path path, Message reason) {
    inputs_.passedOver.push_back({.path = std::move(path), .reason = std::move(reason)});
  }

  const fs::path::string_type& identityOfFolder(const fs::path& folder) {
    const auto [identity, isNew] = folders_.try_emplace(folder.native());
    if (isNew) identity->second = findFile(folder.empty() ? fs::path(".") : folder).identity;
    return identity->second;
  }

  const bool wantsProjects_;
  const std::function<void()>& watch_;
  Inputs inputs_;
  fs::path::string_type results_;  // identity of the folder for results; empty: there is none
  std::map<fs::path::string_type, fs::path::string_type> folders_;  // their identities
  std::unordered_set<fs::path::string_type> known_;                 // files that are there already
};

}  // namespace

Inputs collectInputs(const InputChoice& choice) { return Collector(choice).take(); }

Message knownFailure(const Input& input) {
  if (!input.failure.empty() || isStandardInput(input)) return input.failure;
  if (input.file.kind == FoundFile::Kind::Nothing) return reasonText(input.file.failure);
  if (input.file.size > kLargestInput) return messages::kTooLarge(kLargestInput >> 20);
  return {};
}

bool isStandardInput(const Input& input) { return input.path.empty(); }

}  // namespace tintline
