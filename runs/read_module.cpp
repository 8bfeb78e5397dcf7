// See read_module.h. Tested by tests/cli/run.py and tests/golden/run.py.
#include "runs/read_module.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "convert/exact.h"
#include "convert/source_text.h"
#include "runs/messages.h"
#include "runs/office_inputs.h"
#include "runs/task.h"

namespace tintline {
namespace {

// The number of the line that holds a place in the text, from 1.
std::size_t lineOf(std::u8string_view text, std::size_t place) {
  std::size_t line = 1;
  for (std::size_t i = 0; i < place; ++i)
    line += text[i] == u8'\n' || (text[i] == u8'\r' && text[i + 1] != u8'\n');
  return line;
}

// What decoding a source lost, for the user; empty: nothing.
Message lossText(const vb::Decoded& source) {
  if (source.replaced == 0) return {};
  const Message page =
      source.codePage == vb::kUtf8 ? valueOf(L"UTF-8") : messages::kCodePage(source.codePage);
  return atLine(lineOf(source.text, source.text.find(u8"\uFFFD")),
                source.replaced == 1 ? messages::kLostCharacter(page)
                                     : messages::kLostCharacters(source.replaced, page));
}

}  // namespace

ReadModule readModule(const Input& input, const Reading& reading) {
  const OfficeModule* const office = input.module.get();
  const vb::CodePage page =
      office != nullptr ? office->codePage : reading.encoding.value_or(kAutomatic);
  // Of an Office module the user knows what the editor shows.
  const auto usual = office != nullptr ? listing::Header::Drop : listing::Header::Fold;
  const bool asInEditor = reading.header.value_or(usual) == listing::Header::Drop;
  vb::Decoded source = decodeSource(readInput(input), page);
  Message warning = warningOf(input, lossText(source));
  return {.module = readExact(std::move(source.text), input.place.filename(), reading.words,
                              reading.passes, asInEditor),
          .warning = std::move(warning)};
}

}  // namespace tintline
