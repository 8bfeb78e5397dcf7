// See compound_writer.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/compound_writer.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "sources/office_file/compound_format.h"

namespace tintline::office_file {
namespace {

constexpr std::size_t kSector = 512, kMiniSector = 64, kCutoff = 4096;
constexpr std::size_t kNumbers = kSector / 4;  // in a sector of a table
constexpr std::size_t kInHeader = 109;         // sectors of the table that the header names
constexpr std::uint32_t kFree = 0xFFFFFFFF, kEnd = 0xFFFFFFFE, kTable = 0xFFFFFFFD,
                        kTableList = 0xFFFFFFFC, kNone = 0xFFFFFFFF;
constexpr std::size_t kMaxFile = std::size_t{1} << 31;  // what version 3 allows

void append(std::string& bytes, std::uint64_t number, std::size_t width) {
  for (; width > 0; --width, number >>= 8) bytes += static_cast<char>(number & 0xFF);
}

void pad(std::string& bytes, std::size_t unit, char with = '\0') {
  bytes.append((unit - bytes.size() % unit) % unit, with);
}

std::size_t unitsOf(std::size_t size, std::size_t unit) { return (size + unit - 1) / unit; }

// The order of siblings: shorter names first, then without regard to case.
bool isBefore(const std::u16string& a, const std::u16string& b) {
  if (a.size() != b.size()) return a.size() < b.size();
  const auto upper = [](char16_t c) {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
  };
  return std::ranges::lexicographical_compare(a, b, {}, upper, upper);
}

struct Entry {
  std::u16string name;
  EntryType type;
  ClassId classId{};
  const std::string* stream = nullptr;
  bool red = false;
  std::uint32_t left = kNone, right = kNone, child = kNone;
  std::uint32_t start = 0;
  std::size_t size = 0;
};

class Writer {
 public:
  std::string write(const Storage& root) {
    entries_.push_back({.name = u"Root Entry", .type = EntryType::Root, .classId = root.classId});
    addChildren(0, root);
    placeSmallStreams();
    placeAll();
    return assemble();
  }

 private:
  void addChildren(std::uint32_t parent, const Storage& storage) {
    struct Child {
      const std::u16string* name;
      const std::string* stream;
      const Storage* storage;
    };
    std::vector<Child> children;
    for (const auto& [name, bytes] : storage.streams) children.push_back({&name, &bytes, nullptr});
    for (const Storage& below : storage.storages)
      children.push_back({&below.name, nullptr, &below});
    std::ranges::stable_sort(
        children, [](const Child& a, const Child& b) { return isBefore(*a.name, *b.name); });
    const std::uint32_t first = static_cast<std::uint32_t>(entries_.size());
    for (const Child& child : children)
      entries_.push_back({.name = *child.name,
                          .type = child.stream != nullptr ? EntryType::Stream : EntryType::Storage,
                          .classId = child.storage != nullptr ? child.storage->classId : ClassId{},
                          .stream = child.stream});
    const int levels = static_cast<int>(std::bit_width(children.size()));
    entries_[parent].child = linkTree(first, first + children.size(), levels - 1);
    for (std::size_t i = 0; i < children.size(); ++i)
      if (children[i].storage != nullptr)
        addChildren(static_cast<std::uint32_t>(first + i), *children[i].storage);
  }

  // A balanced tree of siblings; the nodes of its last level are red but for a lonely root.
  std::uint32_t linkTree(std::size_t begin, std::size_t end, int levelsBelow, bool isRoot = true) {
    if (begin == end) return kNone;
    const std::size_t middle = begin + (end - begin) / 2;
    Entry& entry = entries_[middle];
    entry.red = levelsBelow == 0 && !isRoot;
    entry.left = linkTree(begin, middle, levelsBelow - 1, false);
    entry.right = linkTree(middle + 1, end, levelsBelow - 1, false);
    return static_cast<std::uint32_t>(middle);
  }

  static void chainUp(std::vector<std::uint32_t>& table, std::size_t count) {
    for (std::size_t i = 1; i <= count; ++i)
      table.push_back(i < count ? static_cast<std::uint32_t>(table.size() + 1) : kEnd);
  }

  // Streams below the cutoff share the mini stream, which belongs to the root.
  void placeSmallStreams() {
    for (Entry& entry : entries_) {
      if (entry.stream == nullptr) continue;
      entry.size = entry.stream->size();
      if (entry.size >= kCutoff) continue;
      entry.start = entry.size == 0 ? kEnd : static_cast<std::uint32_t>(miniTable_.size());
      miniStream_ += *entry.stream;
      pad(miniStream_, kMiniSector);
      chainUp(miniTable_, unitsOf(entry.size, kMiniSector));
    }
    entries_.front().size = miniStream_.size();
  }

  // The table itself comes first, then the directory, the mini table, and the streams.
  void placeAll() {
    const std::size_t directory = unitsOf(entries_.size() * kEntry, kSector);
    const std::size_t miniTable = unitsOf(miniTable_.size() * 4, kSector);
    std::size_t others = directory + miniTable + unitsOf(miniStream_.size(), kSector);
    for (const Entry& entry : entries_)
      if (entry.stream != nullptr && entry.size >= kCutoff) others += unitsOf(entry.size, kSector);
    if (others > kMaxFile / kSector) throw std::length_error("compound file: beyond 2 GiB");
    for (std::size_t before = 0; tableSectors_ != before || before == 0;) {
      before = tableSectors_;
      tableSectors_ = unitsOf(others + tableSectors_ + listSectors_, kNumbers);
      listSectors_ =
          tableSectors_ > kInHeader ? unitsOf(tableSectors_ - kInHeader, kNumbers - 1) : 0;
    }
    table_.assign(tableSectors_, kTable);
    table_.insert(table_.end(), listSectors_, kTableList);
    directoryStart_ = place(directory);
    miniTableStart_ = place(miniTable);
    entries_.front().start = place(unitsOf(miniStream_.size(), kSector));
    for (Entry& entry : entries_)
      if (entry.stream != nullptr && entry.size >= kCutoff)
        entry.start = place(unitsOf(entry.size, kSector));
  }

  std::uint32_t place(std::size_t sectors) {
    if (sectors == 0) return kEnd;
    const std::uint32_t start = static_cast<std::uint32_t>(table_.size());
    chainUp(table_, sectors);
    return start;
  }

  std::string assemble() const {
    std::string file = header();
    for (const std::uint32_t next : table_) append(file, next, 4);
    pad(file, kSector, '\xFF');
    for (std::size_t i = 0; i < listSectors_; ++i) appendTableList(file, i);
    for (const Entry& entry : entries_) appendEntry(file, entry);
    while (file.size() % kSector != 0) appendEntry(file, {.name = {}, .type = EntryType{}});
    for (const std::uint32_t next : miniTable_) append(file, next, 4);
    pad(file, kSector, '\xFF');
    file += miniStream_;
    pad(file, kSector);
    for (const Entry& entry : entries_) {
      if (entry.stream == nullptr || entry.size < kCutoff) continue;
      file += *entry.stream;
      pad(file, kSector);
    }
    return file;
  }

  std::string header() const {
    std::string bytes(kCompoundSignature);
    bytes.append(16, '\0');
    for (const unsigned field : {0x3EU, 3U, 0xFFFEU, 9U, 6U}) append(bytes, field, 2);
    bytes.append(10, '\0');  // version 3 does not count the sectors of the directory
    append(bytes, tableSectors_, 4);
    append(bytes, directoryStart_, 4);
    append(bytes, 0, 4);
    append(bytes, kCutoff, 4);
    append(bytes, miniTableStart_, 4);
    append(bytes, unitsOf(miniTable_.size() * 4, kSector), 4);
    append(bytes, listSectors_ == 0 ? kEnd : tableSectors_, 4);
    append(bytes, listSectors_, 4);
    for (std::size_t i = 0; i < kInHeader; ++i) append(bytes, i < tableSectors_ ? i : kFree, 4);
    return bytes;
  }

  void appendTableList(std::string& file, std::size_t number) const {
    constexpr std::size_t kPerList = kNumbers - 1;
    for (std::size_t i = 0; i < kPerList; ++i) {
      const std::size_t sector = kInHeader + number * kPerList + i;
      append(file, sector < tableSectors_ ? sector : kFree, 4);
    }
    append(file, number + 1 < listSectors_ ? tableSectors_ + number + 1 : kEnd, 4);
  }

  static void appendEntry(std::string& file, const Entry& entry) {
    const std::size_t begin = file.size();
    constexpr std::size_t kNameBytes = 64;
    const std::u16string_view name = std::u16string_view(entry.name).substr(0, kNameBytes / 2 - 1);
    for (const char16_t unit : name) append(file, unit, 2);
    file.resize(begin + kNameBytes);
    append(file, name.empty() ? 0 : 2 * (name.size() + 1), 2);
    file += static_cast<char>(entry.type);
    file += entry.red ? '\0' : '\1';
    for (const std::uint32_t link : {entry.left, entry.right, entry.child}) append(file, link, 4);
    file.append(entry.classId.data(), entry.classId.size());
    file.append(20, '\0');  // neither state nor times
    append(file, entry.start, 4);
    append(file, entry.size, 8);
  }

  std::vector<Entry> entries_;
  std::string miniStream_;
  std::vector<std::uint32_t> miniTable_;
  std::vector<std::uint32_t> table_;
  std::size_t tableSectors_ = 0, listSectors_ = 0;
  std::uint32_t directoryStart_ = 0, miniTableStart_ = 0;
};

}  // namespace

std::string compoundFileOf(const Storage& root) { return Writer().write(root); }

}  // namespace tintline::office_file
