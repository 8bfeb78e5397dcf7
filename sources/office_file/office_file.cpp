// See office_file.h. Tested by tests/unit/sources/office_file_test.cpp and
// fuzz/office_file_fuzz.cpp.
#include "sources/office_file/office_file.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/presentation.h"
#include "sources/office_file/text_container.h"
#include "sources/office_file/zip_archive.h"
#include "vb/text.h"

namespace tintline::office_file {
namespace {

constexpr std::string_view kZip = "PK\x03\x04", kEmptyZip = "PK\x05\x06";
constexpr std::string_view kProjectType = "application/vnd.ms-office.vbaProject";
constexpr std::string_view kSignatureName = "vbaprojectsignature";

bool isZip(std::string_view beginning) {
  return beginning.starts_with(kZip) || beginning.starts_with(kEmptyZip);
}
bool isDatabase(std::string_view beginning) {
  const std::string_view name = beginning.substr(std::min<std::size_t>(beginning.size(), 4));
  return name.starts_with("Standard Jet DB") || name.starts_with("Standard ACE DB");
}
bool isBinary(std::string_view beginning) {
  return isZip(beginning) || beginning.starts_with(kCompoundSignature) || isActiveMime(beginning);
}

std::u8string textOf(std::string_view name) { return vb::decode(name).text; }

std::u8string joined(const std::u8string& place, std::u8string_view name) {
  return place.empty() ? std::u8string(name) : place + u8"/" + std::u8string(name);
}

class Reader {
 public:
  explicit Reader(const GoOn& goOn) : budget_(goOn) {}

  OfficeFile read(ByteSource& source) {
    readAny(source, {}, kMaxDepth, false);
    if (file_.projects.empty() && file_.problems.empty())
      file_.problems.push_back({kindWithoutProject_, {}, {}});
    return std::move(file_);
  }

 private:
  void tell(Fault fault, const std::u8string& place) {
    file_.problems.push_back({fault, place, {}});
  }

  bool isFull() const { return file_.projects.size() >= kMaxProjects; }

  void readAny(ByteSource& source, const std::u8string& place, int depth, bool isSigned) {
    const std::string beginning(source.view(0, kBeginning));
    if (depth == 0) return tell(Fault::TooDeep, place);
    if (isZip(beginning)) return readPackage(source, place, depth);
    if (beginning.starts_with(kCompoundSignature))
      return readCompound(source, place, depth, isSigned);
    if (isDatabase(beginning)) return tell(Fault::Access, place);
    if (!isActiveMime(beginning) && !isXmlDocument(beginning) && !isWebArchive(beginning))
      return tell(Fault::UnknownKind, place);
    if (source.size() > kMaxPart) return tell(Fault::TooLarge, place);
    const std::string text(source.view(0, static_cast<std::size_t>(source.size())));
    if (isActiveMime(beginning)) return readActiveMime(text, place, depth, isSigned);
    readText(text, isWebArchive(beginning), place, depth);
  }

  void readBytes(std::string_view bytes, const std::u8string& place, int depth, bool isSigned) {
    MemorySource source(bytes);
    readAny(source, place, depth, isSigned);
  }

  // ------------------------------------------------------------------------------- packages

  void readPackage(ByteSource& source, const std::u8string& place, int depth) {
    Fault fault = Fault::None;
    const auto archive = ZipArchive::open(source, fault);
    if (fault != Fault::None) tell(fault, place);
    if (!archive) return;
    std::vector<ZipArchive::Part> projects = namedProjects(*archive), embedded;
    bool isSigned = false;
    archive->forEach([&](const ZipArchive::Part& part) {
      isSigned = isSigned || findAscii(part.name, kSignatureName) != part.name.npos;
      if (isEmbedded(part.name)) embedded.push_back(part);
      return true;
    });
    if (projects.empty()) projects = compoundParts(*archive);
    for (const auto& part : projects) readPart(*archive, part, place, depth, isSigned);
    for (const auto& part : embedded)
      if (isBinary(archive->read(part, budget_, kCompoundSignature.size()).bytes))
        readPart(*archive, part, place, depth, false);
  }

  static bool isEmbedded(std::string_view name) {
    return findAscii(name, "embeddings/") != name.npos;
  }

  // The parts that the package's list of types calls projects.
  std::vector<ZipArchive::Part> namedProjects(const ZipArchive& archive) {
    std::vector<ZipArchive::Part> parts;
    const auto list = archive.find("[Content_Types].xml");
    if (!list) return parts;
    const std::string types = archive.read(*list, budget_, kMebibyte).bytes;
    for (std::size_t at = 0; (at = types.find(kProjectType, at)) != types.npos;) {
      const std::size_t begin = types.rfind('<', at);
      at += kProjectType.size();
      if (begin == types.npos || types[at] != '"') continue;
      const std::string_view element =
          std::string_view(types).substr(begin, types.find('>', at) - begin);
      addNamed(archive, element, parts);
      if (parts.size() >= kMaxProjects) break;
    }
    return parts;
  }

  // <Override PartName="/word/vbaProject.bin" .../> or <Default Extension="bin" .../>
  static void addNamed(const ZipArchive& archive, std::string_view element,
                       std::vector<ZipArchive::Part>& parts) {
    const auto value = [element](std::string_view name) {
      const std::size_t at = element.find(name);
      if (at == element.npos) return std::string_view();
      const std::string_view rest = element.substr(at + name.size());
      return rest.substr(0, rest.find('"'));
    };
    const auto add = [&parts](const ZipArchive::Part& part) {
      const bool known = std::ranges::any_of(
          parts, [&](const ZipArchive::Part& other) { return other.header == part.header; });
      if (!known) parts.push_back(part);
    };
    if (const std::string_view name = value("PartName=\""); !name.empty()) {
      if (const auto part = archive.find(name)) add(*part);
      return;
    }
    const std::string ending = "." + std::string(value("Extension=\""));
    if (ending == ".") return;
    archive.forEach([&](const ZipArchive::Part& part) {
      const bool has = part.name.size() > ending.size() &&
                       equalsAscii(part.name.substr(part.name.size() - ending.size()), ending);
      if (has && !isEmbedded(part.name)) add(part);
      return parts.size() < kMaxProjects;
    });
  }

  // A package that names no project may have one even so.
  std::vector<ZipArchive::Part> compoundParts(const ZipArchive& archive) {
    std::vector<ZipArchive::Part> parts;
    archive.forEach([&](const ZipArchive::Part& part) {
      if (!isEmbedded(part.name) &&
          archive.read(part, budget_, kCompoundSignature.size()).bytes == kCompoundSignature)
        parts.push_back(part);
      return parts.size() < kMaxProjects;
    });
    return parts;
  }

  void readPart(const ZipArchive& archive, const ZipArchive::Part& part, const std::u8string& place,
                int depth, bool isSigned) {
    if (isFull()) return;
    const std::u8string name = joined(place, textOf(part.name));
    const Bytes bytes = archive.read(part, budget_);
    if (bytes.fault != Fault::None) tell(bytes.fault, name);
    if (isBinary(bytes.bytes))
      readBytes(bytes.bytes, name, depth - 1, isSigned);
    else if (bytes.fault == Fault::None)
      tell(Fault::Damaged, name);
  }

  // ------------------------------------------------------------------------- compound files

  void readCompound(ByteSource& source, const std::u8string& place, int depth, bool isSigned) {
    Fault fault = Fault::None;
    const auto file = CompoundFile::open(source, fault);
    if (fault != Fault::None) tell(fault, place);
    if (!file) return;
    const std::size_t projects = file_.projects.size(), problems = file_.problems.size();
    isSigned = isSigned || hasSignature(*file);
    readStorages(*file, place, depth, isSigned);
    readPresentation(*file, place, depth, isSigned);
    if (file_.projects.size() != projects || file_.problems.size() != problems) return;
    const Fault kind = kindOf(*file);
    if (kind != Fault::NoProject && place.empty())
      kindWithoutProject_ = kind;
    else if (kind == Fault::Encrypted || kind == Fault::RightsManaged)
      tell(kind, place);
  }

  // Why a compound file has no project.
  static Fault kindOf(const CompoundFile& file) {
    const auto has = [&](std::u16string_view name) {
      return file.child(CompoundFile::kRoot, name).has_value();
    };
    if (has(u"\x09"
            u"DRMContent"))
      return Fault::RightsManaged;
    if (has(u"EncryptedPackage"))
      return isRightsManaged(file) ? Fault::RightsManaged : Fault::Encrypted;
    if (has(u"Book") && !has(u"Workbook")) return Fault::Excel95;
    if (has(u"VisioDocument")) return Fault::Visio;
    return Fault::NoProject;
  }

  // What encrypted a package stands beside it: [MS-OFFCRYPTO] 2.2.
  static bool isRightsManaged(const CompoundFile& file) {
    return std::ranges::any_of(file.entries(), [](const CompoundFile::Entry& entry) {
      return entry.name.starts_with(u"DRMEncrypted");
    });
  }

  // Every storage with a project, and documents embedded as streams.
  void readStorages(const CompoundFile& file, const std::u8string& place, int depth,
                    bool isSigned) {
    struct Item {
      std::uint32_t index;
      std::u8string path;
    };
    std::vector<Item> items = {{CompoundFile::kRoot, place}};
    for (std::size_t i = 0; i < items.size() && !isFull(); ++i) {
      const Item item = items[i];
      for (const std::uint32_t child : file.entries()[item.index].children) {
        const CompoundFile::Entry& entry = file.entries()[child];
        if (!entry.isStorage)
          readEmbedded(file, child, item.path, depth);
        else if (isCodeStorage(file, child) && !isFull())
          addProject(readProject(file, child, item.index, item.path, budget_, file_.problems),
                     isSigned);
        else if (item.path.size() < kMaxPath)
          items.push_back({child, joined(item.path, nameText(entry.name))});
      }
    }
  }

  void addProject(Project project, bool isSigned) {
    project.isSigned = isSigned;
    file_.projects.push_back(std::move(project));
  }

  // A package as an object has the stream "Package", any other file "Ole10Native".
  void readEmbedded(const CompoundFile& file, std::uint32_t stream, const std::u8string& place,
                    int depth) {
    const std::u16string& name = file.entries()[stream].name;
    const bool isNative = equalsAscii<char16_t>(name, u"\x01Ole10Native");
    if (!isNative && !equalsAscii<char16_t>(name, u"Package")) return;
    const Bytes bytes = file.read(stream, budget_);
    const std::string_view content = isNative ? nativeContent(bytes.bytes) : bytes.bytes;
    if (isBinary(content)) readBytes(content, joined(place, nameText(name)), depth - 1, false);
  }

  // The file in the stream: behind its size, a type and three names with other values between them.
  static std::string_view nativeContent(std::string_view stream) {
    const auto skip = [&stream](std::size_t count) {
      stream.remove_prefix(std::min(count, stream.size()));
    };
    const auto skipName = [&] { skip(std::min(stream.find('\0'), stream.size()) + 1); };
    skip(6);
    skipName();
    skipName();
    skip(8);
    skipName();
    const std::uint32_t size = u32(stream, 0);
    skip(4);
    return stream.substr(0, size);
  }

  void readPresentation(const CompoundFile& file, const std::u8string& place, int depth,
                        bool isSigned) {
    const auto document = file.child(CompoundFile::kRoot, u"PowerPoint Document");
    if (!document) return;
    std::string user;
    if (const auto stream = file.child(CompoundFile::kRoot, u"Current User"))
      user = file.read(*stream, budget_, kMebibyte).bytes;
    if (isEncryptedPresentation(user)) return tell(Fault::Encrypted, place);
    const Bytes bytes = file.read(*document, budget_);
    if (bytes.fault != Fault::None) tell(bytes.fault, place);
    std::size_t number = 0;
    forEachObject(bytes.bytes, user, budget_, [&](const Bytes& object) {
      const std::string name = "object " + std::to_string(++number);
      const std::u8string path = joined(place, textOf(name));
      if (object.fault != Fault::None) tell(object.fault, path);
      if (isBinary(object.bytes) && !isFull()) readBytes(object.bytes, path, depth - 1, isSigned);
    });
  }

  // A signature of the project is a property of the document: [MS-OSHARED] 2.3.3.2.
  bool hasSignature(const CompoundFile& file) {
    constexpr std::uint32_t kSignature = 0x18, kBlob = 0x41;
    const auto stream = file.child(CompoundFile::kRoot,
                                   u"\x05"
                                   u"DocumentSummaryInformation");
    if (!stream) return false;
    const std::string bytes = file.read(*stream, budget_, kMebibyte).bytes;
    const std::string_view set =
        std::string_view(bytes).substr(std::min<std::size_t>(u32(bytes, 44), bytes.size()));
    const std::size_t count = std::min<std::size_t>(u32(set, 4), set.size() / 8);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t value = u32(set, 8 + 8 * i + 4);
      if (u32(set, 8 + 8 * i) == kSignature)
        return (u32(set, value) & 0xFFFF) == kBlob && u32(set, std::size_t{value} + 4) > 0;
    }
    return false;
  }

  // ----------------------------------------------------------------------------- documents as text

  void readText(std::string_view text, bool isArchive, const std::u8string& place, int depth) {
    const bool isSigned = findAscii(text, kSignatureName) != text.npos;
    const auto visit = [&](std::string_view name, std::string_view bytes) {
      if (isBinary(bytes) && !isFull())
        readBytes(bytes, joined(place, textOf(name)), depth - 1, isSigned);
    };
    isArchive ? forEachArchivePart(text, budget_, visit) : forEachXmlPart(text, budget_, visit);
  }

  void readActiveMime(std::string_view part, const std::u8string& place, int depth, bool isSigned) {
    const Bytes content = activeMimeContent(part, budget_);
    if (content.fault != Fault::None) tell(content.fault, place);
    if (content.bytes.starts_with(kCompoundSignature))
      readBytes(content.bytes, place, depth - 1, isSigned);
    else if (content.fault == Fault::None)
      tell(Fault::Damaged, place);
  }

  static constexpr std::size_t kMaxPath = 2000;  // of storages in storages, as text

  OfficeFile file_;
  Budget budget_;
  Fault kindWithoutProject_ = Fault::NoProject;
};

}  // namespace

bool isOfficeFile(std::string_view beginning) {
  return isBinary(beginning) || isDatabase(beginning) || isXmlDocument(beginning) ||
         isWebArchive(beginning);
}

bool isOfficeFileAt(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string beginning(kBeginning, '\0');
  stream.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  beginning.resize(static_cast<std::size_t>(stream.gcount()));
  return isOfficeFile(beginning);
}

OfficeFile readOfficeFile(ByteSource& source, const GoOn& goOn) {
  return Reader(goOn).read(source);
}

}  // namespace tintline::office_file
