// See image_strips.h.
#include "win32/controls/image_strips.h"

#include <algorithm>
#include <iterator>

#include "win32/control_ids.h"
#include "win32/controls/fonts.h"

namespace tintline {
namespace {

// In the order in which data/icons/build.sh puts the pictures side by side. The keys "modul"
// of the toolbar and "word" of the tree, a document, have drawings of other names there.
constexpr std::string_view kToolbarKeys[] = {"file",    "word",  "excel",   "wordende", "ini",
                                             "save",    "copy",  "insert",  "format",   "format2",
                                             "umbruch", "modul", "makro",   "auswahl",  "export",
                                             "2word",   "farbe", "preview", "help"};
constexpr std::string_view kTreeKeys[] = {"open", "modul", "frm", "cls", "word",
                                          "this", "dec",   "vb",  "lock"};

constexpr int kSizes[] = {32, 24, 16};

}  // namespace

UniqueImageList loadStrip(Strip strip, unsigned dpi) {
  const int wanted = scaled(16, dpi);
  const auto* size = std::find_if(std::begin(kSizes), std::prev(std::end(kSizes)),
                                  [wanted](int there) { return there <= wanted; });
  const int first = strip == Strip::Toolbar ? kToolbarStrip16 : kTreeStrip16;
  const int resource = first + static_cast<int>(std::prev(std::end(kSizes)) - size);
  const auto count =
      static_cast<int>(strip == Strip::Toolbar ? std::size(kToolbarKeys) : std::size(kTreeKeys));
  const UniqueBitmap bitmap(
      static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                      IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
  UniqueImageList list(ImageList_Create(*size, *size, ILC_COLOR32 | ILC_MASK, count, 0));
  ImageList_Add(list.get(), bitmap.get(), nullptr);
  return list;
}

int pictureOf(Strip strip, std::string_view key) {
  const auto find = [key](const auto& keys) {
    const auto* place = std::find(std::begin(keys), std::end(keys), key);
    return place == std::end(keys) ? I_IMAGENONE : static_cast<int>(place - std::begin(keys));
  };
  return strip == Strip::Toolbar ? find(kToolbarKeys) : find(kTreeKeys);
}

}  // namespace tintline
