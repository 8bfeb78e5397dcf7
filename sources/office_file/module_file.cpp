// See module_file.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/module_file.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/compound_writer.h"
#include "sources/office_file/module_text.h"

namespace tintline::office_file {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kClassHeader =
    "VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1  'True\r\nEND\r\n";
constexpr std::string_view kResourceProperty = "OleObjectBlob";

constexpr std::size_t kResourceHeader = 24;
constexpr std::uint32_t kResourceSignature = 0x0008424C;
constexpr ClassId kFormClass = {'\xF0', '\x69', '\x2A', '\xC6', '\xDC', '\x16', '\xCE', '\x11',
                                '\x9E', '\x98', '\x00', '\xAA', '\x00', '\x57', '\x4A', '\x4F'};
// The same in every exported form: the class of forms and its names.
constexpr std::u16string_view kTypeStream =
    u"\x01"
    u"CompObj";
constexpr std::string_view kType(
    "\x01\x00\xFE\xFF\x03\x0A\x00\x00\xFF\xFF\xFF\xFF\xF0\x69\x2A\xC6\xDC\x16\xCE\x11\x9E\x98\x00"
    "\xAA\x00\x57\x4A\x4F\x19\x00\x00\x00Microsoft Forms 2.0 Form\x00\x10\x00\x00\x00"
    "Embedded Object\x00\x0D\x00\x00\x00"
    "Forms.Form.1\x00\xF4\x39\xB2\x71\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00",
    110);

// The stored text without what the editor keeps for itself.
void appendSource(std::string_view source, bool isStandard, std::string& file) {
  while (!source.empty()) {
    const std::string_view line = takeLine(source);
    const bool hidden =
        !isStandard && (isAttribute(line, "vb_base") || isAttribute(line, "vb_templatederived") ||
                        isAttribute(line, "vb_customizable"));
    if (!hidden) file.append(line).append(kLineEnd);
  }
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

// The name of the property in a line of a form's frame, "" when there is none.
std::string_view propertyOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  return equals == line.npos ? std::string_view() : trimmed(line.substr(0, equals));
}

bool isBeforeAscii(std::string_view a, std::string_view b) {
  return std::ranges::lexicographical_compare(a, b, {}, lowerAscii<char>, lowerAscii<char>);
}

// In the code page, as the text has it.
std::string_view nameIn(std::string_view source) {
  while (!source.empty()) {
    const std::string_view line = takeLine(source);
    if (!isAttribute(line, "vb_name")) continue;
    const std::size_t begin = line.find('"'), end = line.rfind('"');
    return begin < end ? line.substr(begin + 1, end - begin - 1) : std::string_view();
  }
  return {};
}

const std::string* frameOf(const Module& module) {
  if (!module.designer) return nullptr;
  for (const auto& [name, bytes] : module.designer->streams)
    if (equalsAscii<char16_t>(name, kFrameStream)) return &bytes;
  return nullptr;
}

// The frame with the line that names the .frx at its place in the alphabet.
void appendFrame(std::string_view frame, std::string_view name, std::string& file) {
  bool open = false, named = false;
  while (!frame.empty()) {
    const std::string_view line = takeLine(frame);
    const std::string_view property = propertyOf(line);
    if (equalsAscii(property, "typeinfover")) continue;
    const bool ends = equalsAscii(trimmed(line), "end");
    if (open && !named && (ends || isBeforeAscii(kResourceProperty, property))) {
      file.append("   OleObjectBlob   =   \"").append(name).append(".frx\":0000\r\n");
      named = true;
    }
    open = open || equalsAscii(trimmed(line).substr(0, 6), "begin ");
    file.append(line).append(kLineEnd);
  }
}

// A measure of the frame in twips; 0 where it is not given.
std::int32_t measureIn(std::string_view frame, std::string_view wanted) {
  while (!frame.empty()) {
    const std::string_view line = takeLine(frame);
    if (!equalsAscii(propertyOf(line), wanted)) continue;
    const std::string_view value = trimmed(line.substr(line.find('=') + 1));
    std::int32_t number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
  }
  return 0;
}

// The border is as wide at the left as at the right and below.
std::array<std::uint32_t, 4> outerRectangle(std::string_view frame) {
  const auto measure = [&](std::string_view name) {
    return static_cast<std::uint32_t>(measureIn(frame, name));
  };
  const std::uint32_t left = measure("clientleft"), top = measure("clienttop");
  return {left, top, measure("clientwidth") + 2 * left, measure("clientheight") + top + left};
}

void append(std::string& bytes, std::uint32_t number) {
  for (int i = 0; i < 4; ++i, number >>= 8) bytes += static_cast<char>(number & 0xFF);
}

// The storage below `index`, for comparing; nothing when it cannot be read whole.
std::optional<Storage> storageOf(const CompoundFile& file, std::uint32_t index, int depth,
                                 Budget& budget) {
  Storage storage{.name = file.entries()[index].name, .classId = file.entries()[index].classId};
  for (const std::uint32_t child : file.entries()[index].children) {
    const CompoundFile::Entry& entry = file.entries()[child];
    if (entry.isStorage) {
      std::optional<Storage> below;
      if (depth > 0) below = storageOf(file, child, depth - 1, budget);
      if (!below) return {};
      storage.storages.push_back(std::move(*below));
    } else {
      Bytes stream = file.read(child, budget);
      if (stream.fault != Fault::None) return {};
      storage.streams.emplace_back(entry.name, std::move(stream.bytes));
    }
  }
  return storage;
}

// What a .frx holds, written in our way.
std::optional<std::string> canonical(std::string_view resource) {
  if (resource.size() < kResourceHeader) return {};
  MemorySource source(resource.substr(kResourceHeader));
  Fault fault = Fault::None;
  const auto file = CompoundFile::open(source, fault);
  if (!file) return {};
  Budget budget;
  constexpr int kDepth = 16;  // as deep as designers are read
  const auto storage = storageOf(*file, CompoundFile::kRoot, kDepth, budget);
  if (!storage) return {};
  return compoundFileOf(*storage);
}

}  // namespace

std::string_view extensionOf(vb::ModuleKind kind) {
  if (kind == vb::ModuleKind::Standard) return ".bas";
  return kind == vb::ModuleKind::Form ? ".frm" : ".cls";
}

std::string moduleFile(const Module& module) {
  std::string file;
  file.reserve(module.source.size() + 1024);
  const bool isStandard = module.kind == vb::ModuleKind::Standard;
  if (module.kind == vb::ModuleKind::Form) {
    if (const std::string* const frame = frameOf(module))
      appendFrame(*frame, nameIn(module.source), file);
  } else if (!isStandard) {
    file = kClassHeader;
  }
  appendSource(module.source, isStandard, file);
  return file;
}

std::optional<std::string> formResource(const Module& module) {
  const std::string* const frame = frameOf(module);
  if (module.kind != vb::ModuleKind::Form || frame == nullptr) return {};
  Storage root = *module.designer;
  root.classId = kFormClass;
  std::erase_if(root.streams, [](const auto& stream) {
    return equalsAscii<char16_t>(stream.first, kFrameStream) ||
           equalsAscii<char16_t>(stream.first, kTypeStream);
  });
  root.streams.emplace_back(kTypeStream, kType);
  const std::string file = compoundFileOf(root);
  std::string resource;
  append(resource, kResourceSignature);
  append(resource, static_cast<std::uint32_t>(file.size()));
  for (const std::uint32_t measure : outerRectangle(*frame)) append(resource, measure);
  return resource + file;
}

bool holdSame(std::string_view resource, std::string_view other) {
  if (resource == other) return true;
  const auto a = canonical(resource), b = canonical(other);
  return a && a == b;
}

}  // namespace tintline::office_file
