// What the tests of Office automation stand on: a server for each application, with the same
// projects, and short ways to call members.
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/message_loop.h"
#include "tests/support/temp_folder.h"
#include "tests/win32/office/controlled_server.h"
#include "win32/office/office.h"

namespace tintline {

inline bool operator==(OfficeOut a, OfficeOut b) { return a.value == b.value; }

namespace test {

using Kind = OfficeError::Kind;
inline constexpr std::monostate kLeftOut{};

template <class... Values>
OfficeValue get(const OfficeObjectPtr& object, std::wstring_view member, Values... values) {
  std::vector<OfficeValue> arguments{OfficeValue(values)...};
  return object->get(member, arguments);
}

template <class... Values>
OfficeValue call(const OfficeObjectPtr& object, std::wstring_view member, Values... values) {
  std::vector<OfficeValue> arguments{OfficeValue(values)...};
  return object->call(member, arguments);
}

template <class... Values>
OfficeObjectPtr objectOf(const OfficeObjectPtr& object, std::wstring_view member,
                         Values... values) {
  return std::get<OfficeObjectPtr>(get(object, member, values...));
}

inline std::wstring text(const OfficeValue& value) { return std::get<std::wstring>(value); }
inline std::int32_t number(const OfficeValue& value) { return std::get<std::int32_t>(value); }

// Handles the messages that wait.
class PumpingLoop final : public MessageLoop {
 public:
  void yield() override {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) DispatchMessageW(&message);
  }
};

inline constexpr char kCode[] =
    "Option Explicit\r\n"
    "Private mH\xF6he As Long\r\n"
    "\r\n"
    "' Liest die H\xF6he.\r\n"
    "Public Property Get H\xF6he() As Long\r\n"
    "  H\xF6he = mH\xF6he\r\n"
    "End Property\r\n"
    "Public Property Let H\xF6he(ByVal Wert As Long)\r\n"
    "  mH\xF6he = Wert\r\n"
    "End Property\r\n"
    "\r\n"
    "Sub Drucken()\r\n"
    "End Sub\r\n"
    "' Ende\r\n";

class OfficeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<TempFolder>();
    ControlledServer::registerAt(folder_->path());
  }
  static void TearDownTestSuite() {
    ControlledServer::unregister();
    folder_ = nullptr;
  }

  OfficeTest() {
    for (const ControlledServer* server : {&word_, &excel_}) {
      server->write(L"hoehe.bas", kCode);
      server->write(L"leer.bas", "");
      server->write(L"projects.txt",
                    "project Übung\n"
                    "file C:\\Vorlagen\\Übung €.dotm\n"
                    "component 100 leer.bas ThisDocument\n"
                    "component 1 hoehe.bas Höhenmaß\n"
                    "project Geheim\n"
                    "file C:\\Geheim.dotm\n"
                    "protection 1\n");
    }
  }

  OfficeObjectPtr connectWord() { return office_->connect(L"Word.Application").object; }

  static OfficeObjectPtr projectsOf(const OfficeObjectPtr& application) {
    return objectOf(objectOf(application, L"VBE"), L"VBProjects");
  }
  static OfficeObjectPtr moduleOf(const OfficeObjectPtr& application) {
    const auto components = objectOf(projectsOf(application), L"Item", 1);
    return objectOf(objectOf(components, L"VBComponents"), L"Item", L"Höhenmaß");
  }
  static OfficeObjectPtr codeOf(const OfficeObjectPtr& application) {
    return objectOf(moduleOf(application), L"CodeModule");
  }

  static std::optional<OfficeError> errorOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const OfficeError& error) {
      return error;
    }
    return std::nullopt;
  }

  static inline std::unique_ptr<TempFolder> folder_;
  ControlledServer word_{folder_->path(), L"Word.Application"};
  ControlledServer excel_{folder_->path(), L"Excel.Application"};
  PumpingLoop loop_;
  std::unique_ptr<SystemOffice> office_ = std::make_unique<SystemOffice>(loop_);
};

}  // namespace test
}  // namespace tintline
