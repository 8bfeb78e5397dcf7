// See vba_project.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/vba_project.h"

#include <algorithm>
#include <map>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/dir_stream.h"
#include "sources/office_file/module_text.h"
#include "sources/office_file/project_stream.h"
#include "sources/office_file/vba_compression.h"
#include "vb/fold.h"

namespace tintline::office_file {
namespace {

// A module without code that has at least so much compiled code hides something: those that are
// honestly empty reach some 5 KB.
constexpr std::size_t kMuchCompiled = 8192;
constexpr int kMaxDesignerDepth = 16;  // frames in frames, pages in them

class ProjectReader {
 public:
  ProjectReader(const CompoundFile& file, std::uint32_t code, std::uint32_t parent, Budget& budget,
                std::vector<Problem>& problems)
      : file_(file),
        code_(code),
        parent_(parent),
        budget_(budget),
        problems_(problems),
        streams_(childrenOf(code)),
        besideCode_(childrenOf(parent)),
        used_(file.entries().size()) {}

  Project read(const std::u8string& place) {
    project_.place = place;
    const Directory directory = readList();
    project_.codePage = vb::isKnown(directory.codePage) ? directory.codePage : vb::CodePage{1252};
    trueNames_ = readTrueNames(streamOf(parent_, u"PROJECTwm"));
    properties_ = readProperties(streamOf(parent_, u"PROJECT"), project_.codePage, trueNames_);
    project_.name = directory.name.empty() ? properties_.name : decoded(directory.name);
    project_.locked = properties_.locked;
    project_.modules.reserve(directory.modules.size());
    for (const DirModule& listed : directory.modules) readModule(listed);
    if (directory.fault != Fault::None) readUnlisted(directory.fault);
    return std::move(project_);
  }

 private:
  // What a storage holds, by folded names: there may be many modules.
  using Children = std::map<std::u8string, std::uint32_t>;
  Children childrenOf(std::uint32_t storage) const {
    Children children;
    for (const std::uint32_t index : file_.entries()[storage].children)
      children.emplace(vb::folded(nameText(file_.entries()[index].name)), index);
    return children;
  }
  static std::optional<std::uint32_t> childOf(const Children& children, std::u8string_view name) {
    const auto found = children.find(vb::folded(name));
    if (found == children.end()) return {};
    return found->second;
  }

  void tell(Fault fault, const std::u8string& module = {}) {
    problems_.push_back({fault, project_.place, module});
  }

  std::u8string decoded(std::string_view bytes) const {
    return vb::decode(bytes, project_.codePage).text;
  }

  // A small stream beside the code, "" when there is none.
  std::string streamOf(std::uint32_t storage, std::u16string_view name) {
    const auto stream = file_.child(storage, name);
    return stream ? file_.read(*stream, budget_, kMebibyte).bytes : std::string();
  }

  Directory readList() {
    Bytes stream = file_.read(*file_.child(code_, u"dir"), budget_);
    const Bytes dir = decompressed(stream.bytes, kMaxModule);
    budget_.spend(dir.bytes.size());
    Directory directory = readDirectory(dir.bytes);
    if (directory.fault != Fault::None && dir.fault != Fault::None) directory.fault = dir.fault;
    return directory;
  }

  std::u8string nameOf(const DirModule& listed) const {
    if (!listed.unicodeName.empty()) return nameText(listed.unicodeName);
    const auto known = trueNames_.find(listed.name);
    if (known != trueNames_.end()) return known->second;
    if (listed.name == listed.stream && !listed.unicodeStream.empty())
      return nameText(listed.unicodeStream);
    return decoded(listed.name);
  }

  // The stream's name in the file is Unicode; the project may have it in its code page alone.
  std::optional<std::uint32_t> streamOf(const DirModule& listed) const {
    for (const std::u8string& name :
         {nameText(listed.unicodeStream), decoded(listed.stream), nameOf(listed)})
      if (const auto found = childOf(streams_, name)) return found;
    return {};
  }

  void readModule(const DirModule& listed) {
    const std::u8string name = nameOf(listed);
    const auto stream = streamOf(listed);
    if (!stream) return tell(Fault::StreamMissing, name);
    used_[*stream] = true;
    const Bytes bytes = file_.read(*stream, budget_);
    if (bytes.fault != Fault::None) tell(bytes.fault, name);
    const Bytes source = sourceOf(bytes.bytes, listed.sourceOffset);
    if (source.fault != Fault::None && bytes.fault == Fault::None) tell(source.fault, name);
    add(name, kindOf(name, listed, *stream), source.bytes, file_.entries()[*stream].name);
    if (listed.sourceOffset >= kMuchCompiled && listed.sourceOffset <= bytes.bytes.size() &&
        !hasCode(source.bytes))
      tell(Fault::CompiledOnly, name);
  }

  Bytes sourceOf(std::string_view stream, std::uint32_t offset) {
    const std::size_t limit = std::min(kMaxModule, budget_.room());
    Bytes source = decompressed(stream.substr(std::min<std::size_t>(offset, stream.size())), limit);
    if (!source.bytes.starts_with("Attribut")) {
      const std::size_t found = findSource(stream);
      if (found != stream.npos && found != offset)
        source = decompressed(stream.substr(found), limit);
    }
    if (!budget_.spend(source.bytes.size())) return {{}, Fault::TooLarge};
    budget_.keep(source.bytes.size());
    return source;
  }

  vb::ModuleKind kindOf(const std::u8string& name, const DirModule& listed,
                        std::uint32_t stream) const {
    const auto known = properties_.kinds.find(vb::folded(name));
    if (known != properties_.kinds.end()) return known->second;
    if (listed.isProcedural) return vb::ModuleKind::Standard;
    const bool isForm = childOf(besideCode_, nameText(file_.entries()[stream].name)).has_value();
    return isForm ? vb::ModuleKind::Form : vb::ModuleKind::Class;
  }

  void add(const std::u8string& name, vb::ModuleKind kind, std::string source,
           std::u16string_view stream) {
    project_.modules.push_back(
        {.name = name, .kind = kind, .source = std::move(source), .designer = {}});
    if (kind != vb::ModuleKind::Form) return;
    const auto designer = childOf(besideCode_, nameText(stream));
    if (!designer || !file_.entries()[*designer].isStorage) return tell(Fault::StreamMissing, name);
    project_.modules.back().designer = readStorage(*designer, kMaxDesignerDepth, name);
  }

  Storage readStorage(std::uint32_t index, int depth, const std::u8string& module) {
    const CompoundFile::Entry& entry = file_.entries()[index];
    Storage storage{.name = entry.name, .classId = entry.classId};
    for (const std::uint32_t child : entry.children) {
      const CompoundFile::Entry& below = file_.entries()[child];
      if (below.isStorage) {
        if (depth > 0)
          storage.storages.push_back(readStorage(child, depth - 1, module));
        else
          tell(Fault::TooDeep, module);
        continue;
      }
      Bytes stream = file_.read(child, budget_, std::min(kMaxPart, budget_.room()));
      budget_.keep(stream.bytes.size());
      if (stream.fault != Fault::None) tell(stream.fault, module);
      storage.streams.emplace_back(below.name, std::move(stream.bytes));
    }
    return storage;
  }

  // Without a whole list: every other stream that holds the text of a module.
  void readUnlisted(Fault fault) {
    tell(fault == Fault::TooLarge ? fault : Fault::DirectoryDamaged);
    for (const std::uint32_t index : file_.entries()[code_].children) {
      const CompoundFile::Entry& entry = file_.entries()[index];
      if (entry.isStorage || used_[index]) continue;
      const std::string stream = file_.read(index, budget_).bytes;
      const std::size_t found = findSource(stream);
      if (found == stream.npos) continue;
      DirModule listed;
      const Bytes source = sourceOf(stream, static_cast<std::uint32_t>(found));
      listed.isProcedural = source.bytes.find("Attribute VB_Base") == source.bytes.npos &&
                            source.bytes.find("Attribute VB_Exposed") == source.bytes.npos;
      const std::u8string name = nameText(entry.name);
      add(name, kindOf(name, listed, index), source.bytes, entry.name);
    }
  }

  const CompoundFile& file_;
  const std::uint32_t code_;
  const std::uint32_t parent_;
  Budget& budget_;
  std::vector<Problem>& problems_;
  TrueNames trueNames_;
  ProjectProperties properties_;
  const Children streams_, besideCode_;
  std::vector<bool> used_;  // streams of listed modules
  Project project_;
};

}  // namespace

bool isCodeStorage(const CompoundFile& file, std::uint32_t storage) {
  const auto dir = file.child(storage, u"dir");
  return dir && !file.entries()[*dir].isStorage && file.child(storage, u"_VBA_PROJECT");
}

Project readProject(const CompoundFile& file, std::uint32_t code, std::uint32_t parent,
                    const std::u8string& place, Budget& budget, std::vector<Problem>& problems) {
  return ProjectReader(file, code, parent, budget, problems).read(place);
}

}  // namespace tintline::office_file
