// See office_error.h. Tested by tests/win32/office/office_test.cpp.
#include "win32/office/office_error.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "win32/error.h"

namespace tintline {
namespace {

using Kind = OfficeError::Kind;

constexpr HRESULT code(std::uint32_t number) { return static_cast<HRESULT>(number); }

template <std::size_t N>
bool contains(const std::array<HRESULT, N>& codes, HRESULT wanted) {
  return std::ranges::find(codes, wanted) != codes.end();
}

constexpr std::array kBusy = {
    code(0x80010001),  // RPC_E_CALL_REJECTED
    code(0x8001010A),  // RPC_E_SERVERCALL_RETRYLATER
    code(0x800AC472),  // VBA_E_IGNORE: a dialog is open, a cell is being edited
};

constexpr std::array kLost = {
    code(0x800706BA),  // RPC_S_SERVER_UNAVAILABLE
    code(0x800706BE),  // RPC_S_CALL_FAILED: the host ended within the call
    code(0x800706BF),  // RPC_S_CALL_FAILED_DNE
    code(0x80010007),  // RPC_E_SERVER_DIED
    code(0x80010012),  // RPC_E_SERVER_DIED_DNE
    code(0x80010108),  // RPC_E_DISCONNECTED
    code(0x800401FD),  // CO_E_OBJNOTCONNECTED
};

constexpr std::array kNotInstalled = {
    code(0x800401F3),  // CO_E_CLASSSTRING: no such name
    code(0x80040154),  // REGDB_E_CLASSNOTREG
    code(0x800401F5),  // CO_E_APPNOTFOUND
    code(0x800401FE),  // CO_E_APPDIDNTREG
    code(0x80080005),  // CO_E_SERVER_EXEC_FAILURE
    code(0x80070002),  // the program file is missing
    code(0x80070003),  // its folder is missing
};

// How the hosts refuse access to their VBA projects. Excel has the number 1004 for nearly
// everything, and the system refuses other things as well: those two count only where the
// program asks for the projects.
struct Refusal {
  HRESULT code;
  bool anyMember;
};
constexpr std::array kRefusals = {
    Refusal{code(0x800A17B4), true},   // Word, 6068: access to the projects is not trusted
    Refusal{code(0x800A03EC), false},  // Excel, 1004: the same, or "VBE" failed
    Refusal{code(0x80070005), false},  // E_ACCESSDENIED
};

// Failures of the calls themselves by the numbers under which a VBA programmer knows them.
constexpr std::array kNumbers = {
    std::pair{DISP_E_OVERFLOW, 6L},         std::pair{DISP_E_BADINDEX, 9L},
    std::pair{DISP_E_TYPEMISMATCH, 13L},    std::pair{DISP_E_UNKNOWNNAME, 438L},
    std::pair{DISP_E_MEMBERNOTFOUND, 438L}, std::pair{DISP_E_PARAMNOTOPTIONAL, 449L},
    std::pair{DISP_E_BADPARAMCOUNT, 450L},  std::pair{code(0x800706BA), 462L},
};
constexpr long kCannotCreate = 429;

bool isAccessRefused(std::wstring_view member, HRESULT failure) {
  const bool asksForProjects = member == L"VBE" || member == L"VBProjects";
  return std::ranges::any_of(kRefusals, [&](const Refusal& refusal) {
    return refusal.code == failure && (refusal.anyMember || asksForProjects);
  });
}

long numberOf(HRESULT failure) {
  // Errors of applications: the low word is their own number.
  if (HRESULT_FACILITY(failure) == FACILITY_CONTROL) return HRESULT_CODE(failure);
  for (const auto& [known, number] : kNumbers)
    if (known == failure) return number;
  return failure;
}

OfficeError makeError(Kind kind, long number, std::wstring description, HRESULT failure) {
  if (description.empty()) description = Win32Error(failure).text();
  return {kind, number, std::move(description), static_cast<std::uint32_t>(failure)};
}

}  // namespace

bool isBusy(HRESULT failure) { return contains(kBusy, failure); }

HRESULT ExceptionInfo::codeOf(HRESULT result) {
  if (result != DISP_E_EXCEPTION) return result;
  if (const auto fillIn = std::exchange(info_.pfnDeferredFillIn, nullptr)) fillIn(&info_);
  if (FAILED(info_.scode)) return info_.scode;
  return info_.wCode != 0 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, info_.wCode) : result;
}

std::wstring ExceptionInfo::description() const {
  constexpr std::wstring_view kAround = L" \t\r\n";
  if (info_.bstrDescription == nullptr) return {};
  std::wstring_view text(info_.bstrDescription, SysStringLen(info_.bstrDescription));
  text.remove_prefix(std::min(text.find_first_not_of(kAround), text.size()));
  return std::wstring(text.substr(0, text.find_last_not_of(kAround) + 1));
}

void ExceptionInfo::reset() {
  SysFreeString(info_.bstrSource);
  SysFreeString(info_.bstrDescription);
  SysFreeString(info_.bstrHelpFile);
  info_ = {};
}

OfficeError memberError(std::wstring_view member, HRESULT failure, std::wstring description) {
  const Kind kind = isAccessRefused(member, failure) ? Kind::AccessRefused
                    : isBusy(failure)                ? Kind::Busy
                    : contains(kLost, failure)       ? Kind::ConnectionLost
                                                     : Kind::Failed;
  return makeError(kind, numberOf(failure), std::move(description), failure);
}

OfficeError connectError(HRESULT failure) {
  if (contains(kNotInstalled, failure))
    return makeError(Kind::NotInstalled, kCannotCreate, {}, failure);
  return memberError({}, failure);
}

}  // namespace tintline
