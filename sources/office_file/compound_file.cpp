// See compound_file.h.
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/compound_file_fuzz.cpp.
#include "sources/office_file/compound_file.h"

#include <algorithm>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/compound_format.h"
#include "vb/text.h"

namespace tintline::office_file {
namespace {

constexpr std::size_t kHeader = 512, kHeaderTable = 76, kHeaderTableEntries = 109;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF, kEndOfChain = 0xFFFFFFFE;
constexpr std::size_t kMaxEntries = kMaxDirectory / kEntry;

EntryType typeOf(std::string_view entry) { return static_cast<EntryType>(entry[66]); }

std::u16string nameOf(std::string_view entry) {
  std::u16string name;
  const std::size_t bytes = std::min<std::size_t>(u16(entry, 64), 64);  // the NUL counts
  for (std::size_t i = 0; i + 2 <= bytes && u16(entry, i) != 0; i += 2)
    name += static_cast<char16_t>(u16(entry, i));
  return name;
}

}  // namespace

std::optional<CompoundFile> CompoundFile::open(ByteSource& source, Fault& fault) {
  const std::string header(source.view(0, kHeader));
  fault = Fault::Damaged;
  if (!header.starts_with(kCompoundSignature)) return {};
  if (header.size() < kHeader) {
    fault = Fault::Truncated;
    return {};
  }
  const unsigned version = u16(header, 26), sectorShift = u16(header, 30);
  if (sectorShift != 9 && sectorShift != 12) return {};
  CompoundFile file(source, sectorShift);
  file.miniShift_ = u16(header, 32);
  if (file.miniShift_ < 2 || file.miniShift_ > sectorShift) return {};
  file.cutoff_ = u32(header, 56);
  const std::uint64_t behindHeader =
      source.size() - std::min<std::uint64_t>(source.size(), file.sectorSize());
  file.sectors_ = static_cast<std::size_t>((behindHeader + file.sectorSize() - 1) >> sectorShift);
  file.readTable(header);
  fault = file.readDirectory(u32(header, 48), version > 3);
  if (file.entries_.empty()) {
    if (fault == Fault::None) fault = Fault::Truncated;
    return {};
  }
  file.readMiniTable(header);
  return file;
}

// The sectors of the table stand in the header and, when it is long, in a chain of their own.
void CompoundFile::readTable(std::string_view header) {
  table_.reserve(sectors_);
  for (std::size_t i = 0; i < kHeaderTableEntries && table_.size() < sectors_; ++i)
    appendTable(u32(header, kHeaderTable + 4 * i));
  std::uint32_t sector = u32(header, 68);
  const std::size_t last = sectorSize() - 4;  // holds the next of the chain
  for (std::size_t rounds = 0; sector < sectors_ && rounds < sectors_ && table_.size() < sectors_;
       ++rounds) {
    const std::string list(source_->view(placeOf(sector), sectorSize()));
    for (std::size_t i = 0; i + 4 <= last && i + 4 <= list.size() && table_.size() < sectors_;
         i += 4)
      appendTable(u32(list, i));
    sector = list.size() == sectorSize() ? u32(list, last) : kNoEntry;
  }
}

// A sector that is missing leaves its place in the table, so that the others keep theirs.
void CompoundFile::appendTable(std::uint32_t sector) {
  const std::string_view numbers =
      sector < sectors_ ? source_->view(placeOf(sector), sectorSize()) : std::string_view();
  for (std::size_t i = 0; i < sectorSize() && table_.size() < sectors_; i += 4)
    table_.push_back(i + 4 <= numbers.size() ? u32(numbers, i) : kNoEntry);
}

// At most `most` sectors: a chain that bites its tail ends, too.
std::vector<std::uint32_t> CompoundFile::chain(std::uint32_t first, std::size_t most) const {
  std::vector<std::uint32_t> sectors;
  for (std::uint32_t sector = first; sector < table_.size() && sectors.size() < most;
       sector = table_[sector])
    sectors.push_back(sector);
  return sectors;
}

std::string CompoundFile::readSectors(const std::vector<std::uint32_t>& sectors) const {
  std::string bytes;
  bytes.reserve(sectors.size() * sectorSize());
  for (const std::uint32_t sector : sectors) {
    const std::string_view view = source_->view(placeOf(sector), sectorSize());
    bytes += view;
    if (view.size() < sectorSize()) break;
  }
  return bytes;
}

void CompoundFile::readMiniTable(std::string_view header) {
  const Entry& root = entries_[kRoot];
  const std::uint64_t streamSectors = (root.size + sectorSize() - 1) >> sectorShift_;
  miniStream_ =
      chain(root.start, static_cast<std::size_t>(std::min<std::uint64_t>(streamSectors, sectors_)));
  const std::size_t miniSectors = (miniStream_.size() << sectorShift_) >> miniShift_;
  const std::size_t tableSectors = (miniSectors * 4 + sectorSize() - 1) >> sectorShift_;
  const std::string numbers = readSectors(chain(u32(header, 60), tableSectors));
  miniTable_.resize(std::min(numbers.size() / 4, miniSectors));
  for (std::size_t i = 0; i < miniTable_.size(); ++i) miniTable_[i] = u32(numbers, 4 * i);
}

Fault CompoundFile::readDirectory(std::uint32_t first, bool longSizes) {
  const std::size_t most = kMaxDirectory >> sectorShift_;
  const std::vector<std::uint32_t> sectors = chain(first, std::min(sectors_, most));
  const std::string directory = readSectors(sectors);
  entries_.resize(std::min(directory.size() / kEntry, kMaxEntries));
  if (entries_.empty()) return first < sectors_ ? Fault::Damaged : Fault::Truncated;
  link(directory);
  for (std::size_t i = 0; i < entries_.size() && !longSizes; ++i)
    entries_[i].size &= 0xFFFFFFFF;  // the upper half may hold anything
  if (sectors.size() == most && most < sectors_) return Fault::TooLarge;
  // Else storages may be missing, and nobody could tell which.
  const bool isWhole =
      table_[sectors.back()] == kEndOfChain && directory.size() == sectors.size() << sectorShift_;
  return isWhole ? Fault::None : Fault::Truncated;
}

// Walks the trees of siblings below each storage. What was seen once is not entered again.
void CompoundFile::link(const std::string& directory) {
  const auto raw = [&](std::uint32_t index) {
    return std::string_view(directory).substr(index * kEntry, kEntry);
  };
  std::vector<bool> seen(entries_.size());
  std::vector<std::uint32_t> storages = {kRoot}, siblings;
  seen[kRoot] = true;
  const auto take = [&](std::uint32_t index) {
    Entry& entry = entries_[index];
    const std::string_view bytes = raw(index);
    entry.name = nameOf(bytes);
    entry.isStorage = typeOf(bytes) == EntryType::Storage || index == kRoot;
    std::copy_n(bytes.begin() + 80, entry.classId.size(), entry.classId.begin());
    entry.start = u32(bytes, 116);
    entry.size = u64(bytes, 120);
  };
  take(kRoot);
  while (!storages.empty()) {
    const std::uint32_t storage = storages.back();
    storages.pop_back();
    siblings = {u32(raw(storage), 76)};
    while (!siblings.empty()) {
      const std::uint32_t index = siblings.back();
      siblings.pop_back();
      if (index >= entries_.size() || seen[index]) continue;
      seen[index] = true;
      siblings.push_back(u32(raw(index), 72));
      siblings.push_back(u32(raw(index), 68));
      const EntryType type = typeOf(raw(index));
      if (type != EntryType::Storage && type != EntryType::Stream) continue;
      take(index);
      entries_[storage].children.push_back(index);
      if (type == EntryType::Storage) storages.push_back(index);
    }
    std::ranges::sort(entries_[storage].children);
  }
}

std::optional<std::uint32_t> CompoundFile::child(std::uint32_t storage,
                                                 std::u16string_view name) const {
  for (const std::uint32_t index : entries_[storage].children)
    if (equalsAscii<char16_t>(entries_[index].name, name)) return index;
  return {};
}

Bytes CompoundFile::read(std::uint32_t stream, Budget& budget, std::size_t limit) const {
  const Entry& entry = entries_[stream];
  const std::uint64_t there = std::min<std::uint64_t>(entry.size, sectors_ << sectorShift_);
  const std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(there, limit));
  Bytes result;
  if (!budget.spend(size)) return {{}, Fault::TooLarge};
  result.bytes.reserve(size);
  if (entry.size < cutoff_)
    readMini(entry, size, result.bytes);
  else
    readLong(entry, size, result.bytes);
  if (result.bytes.size() < std::min<std::uint64_t>(entry.size, limit))
    result.fault = Fault::Truncated;
  else if (entry.size > kMaxPart)
    result.fault = Fault::TooLarge;
  return result;
}

// Whether the source had all of it.
bool CompoundFile::appendRun(std::uint64_t place, std::size_t count, std::string& bytes) const {
  const std::string_view view = source_->view(place, count);
  bytes += view;
  return view.size() == count;
}

// Sectors that lie behind one another are read at once.
void CompoundFile::readLong(const Entry& entry, std::size_t size, std::string& bytes) const {
  constexpr std::size_t kMaxRun = kMebibyte;  // the source may have to hold a run
  std::uint32_t sector = entry.start;
  while (bytes.size() < size && sector < table_.size()) {
    const std::uint32_t first = sector;
    const std::size_t wanted = std::min(size - bytes.size(), kMaxRun);
    std::size_t run = 0;
    do {
      run += sectorSize();
      sector = table_[sector];
    } while (run < wanted && sector == first + (run >> sectorShift_) && sector < table_.size());
    if (!appendRun(placeOf(first), std::min(run, wanted), bytes)) return;
  }
}

void CompoundFile::readMini(const Entry& entry, std::size_t size, std::string& bytes) const {
  const std::size_t miniSize = std::size_t{1} << miniShift_;
  const std::size_t perSector = sectorSize() >> miniShift_;
  for (std::uint32_t mini = entry.start; bytes.size() < size && mini < miniTable_.size();
       mini = miniTable_[mini]) {
    const std::uint64_t place =
        placeOf(miniStream_[mini / perSector]) + ((mini % perSector) << miniShift_);
    if (!appendRun(place, std::min(miniSize, size - bytes.size()), bytes)) return;
  }
}

std::u8string nameText(std::u16string_view name) {
  std::string bytes;
  for (const char16_t unit : name) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return vb::decode(bytes, vb::CodePage{1200}).text;
}

}  // namespace tintline::office_file
