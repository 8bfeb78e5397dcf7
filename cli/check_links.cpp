// See check_links.h. Tested by tests/cli/project.py.
#include "cli/check_links.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/messages.h"
#include "site/link_check.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

using Reason = site::BrokenLink::Reason;

std::string nameOf(const fs::path& file) {
  const std::u8string name = file.generic_u8string();
  return {name.begin(), name.end()};
}

bool isPage(const fs::path& file) {
  return file.extension() == ".htm" || file.extension() == ".html";
}

class FolderCheck {
 public:
  FolderCheck(fs::path folder, const Surroundings& surroundings)
      : folder_(std::move(folder)), surroundings_(surroundings) {}

  void run() {
    findFiles();
    if (good_ && pages_.empty()) fail(folder_, messages::kNoPages());
    forPages([this](const fs::path& page, const std::string& html) {
      check_.addPage(nameOf(page), html);
    });
    if (!good_) return;
    forPages([this](const fs::path& page, const std::string& html) {
      landed_ +=
          check_.check(nameOf(page), html, [&](const site::BrokenLink& link) { tell(page, link); });
    });
  }

  bool isGood() const { return good_; }
  std::size_t pages() const { return pages_.size(); }
  std::size_t landed() const { return landed_; }

 private:
  void findFiles() {
    std::error_code failure;
    fs::recursive_directory_iterator entry(folder_, failure);
    for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
      if (!entry->is_regular_file()) continue;
      const fs::path file = entry->path().lexically_relative(folder_);
      if (isPage(file))
        pages_.push_back(file);
      else
        check_.addFile(nameOf(file));
    }
    if (failure) fail(folder_, reasonText(failure));
    std::ranges::sort(pages_);
  }

  // One page at a time, since all together may be large.
  template <class Work>
  void forPages(Work work) {
    for (const fs::path& page : pages_) {
      try {
        work(page, readFile(folder_ / page));
      } catch (const FileError& error) {
        fail(folder_ / page, reasonText(error.reason()));
      }
    }
  }

  void tell(const fs::path& page, const site::BrokenLink& link) {
    const auto& reason = link.reason == Reason::NoFile ? messages::kNoFileThere
                         : link.reason == Reason::NoId ? messages::kNoIdThere
                                                       : messages::kLeadsOutside;
    fail(folder_ / page, atLine(link.line, reason(link.line, fromUtf8(link.link))));
  }

  void fail(const fs::path& file, Message message) {
    surroundings_.tell({.severity = Notice::Severity::Error,
                        .file = pathText(file),
                        .message = std::move(message)});
    good_ = false;
  }

  const fs::path folder_;
  const Surroundings& surroundings_;
  std::vector<fs::path> pages_;  // from the folder
  site::LinkCheck check_;
  std::size_t landed_ = 0;
  bool good_ = true;
};

}  // namespace

ExitCode checkLinks(const Options& options, const Surroundings& surroundings) {
  bool good = true;
  for (const std::string& argument : options.inputs) {
    FolderCheck check(argumentPath(argument), surroundings);
    check.run();
    good = good && check.isGood();
    if (check.isGood() && options.verbose)
      surroundings.write(
          messages::kLinksLand(check.landed(), check.pages()).in(surroundings.language));
  }
  return good ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
