// Where exported components go: a dated folder, one below it per document, a file per
// component. Names are those of documents and components, made safe: a name never
// leads out of its folder.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tintline {

// The folder of that day's exports below `base`. Made when it is not there; throws
// FileError.
std::filesystem::path fkt_DatumsOrdner(const std::filesystem::path& base,
                                       std::chrono::year_month_day today);

// The file for a component, in its document's folder below `base`, which is made when it
// is not there. Throws FileError. `type` is a ComponentType.
std::filesystem::path fkt_ExportPfad(const std::filesystem::path& base,
                                     std::wstring_view documentName,
                                     std::wstring_view componentName, std::int32_t type);

// The path of `name` in the folder. What no file name may hold becomes "_": the
// characters < > : " / \ | ? * and controls, dots and blanks at the end. "_" comes in
// front of a name that stands for a device. So the result lies in the folder always.
std::filesystem::path fkt_PfadVerbinden(const std::filesystem::path& folder,
                                        std::wstring_view name);

// The text before its first NUL, or all of it.
std::wstring_view fkt_NullAbschneiden(std::wstring_view text);

}  // namespace tintline
