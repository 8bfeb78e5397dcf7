// Office applications as late-bound automation objects: members are called by name.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace tintline {

class OfficeObject;
using OfficeObjectPtr = std::shared_ptr<OfficeObject>;

// A number that the member may change: its new value stands here after the call.
struct OfficeOut {
  std::int32_t value = 0;
};

// What goes in and out of a member. monostate is no value; as an argument, one that
// is left out.
using OfficeValue =
    std::variant<std::monostate, bool, std::int32_t, std::wstring, OfficeObjectPtr, OfficeOut>;

// Any failure of a member.
class OfficeError : public std::runtime_error {
 public:
  enum class Kind {
    Failed,          // the member says so
    AccessRefused,   // the host does not trust access to its VBA projects
    ConnectionLost,  // the host is gone
    Busy,            // the host was busy for too long
    NotInstalled     // there is no such application
  };

  OfficeError(Kind kind, long number, std::wstring description, std::uint32_t hresult);

  Kind kind() const { return kind_; }
  long number() const { return number_; }  // as the user reads it
  const std::wstring& description() const { return description_; }
  std::uint32_t hresult() const { return hresult_; }

 private:
  Kind kind_;
  long number_;
  std::wstring description_;
  std::uint32_t hresult_;
};

// One object of a host. The last pointer to it lets the host's object go. All members
// throw OfficeError. A host that is busy is asked again for a few seconds.
class OfficeObject {
 public:
  virtual ~OfficeObject() = default;

  // The value of a property, perhaps one with indexes; an OfficeOut argument is
  // written back.
  virtual OfficeValue get(std::wstring_view member, std::span<OfficeValue> arguments) = 0;

  virtual void put(std::wstring_view member, OfficeValue value) = 0;

  virtual OfficeValue call(std::wstring_view member, std::span<OfficeValue> arguments) = 0;
};

// An application that the program is connected to.
struct OfficeApplication {
  OfficeObjectPtr object;
  bool created = false;  // started by the program, so the program ends it
};

class Office {
 public:
  virtual ~Office() = default;

  // Connects to the running application of that name ("Word.Application"), or starts
  // one. Throws OfficeError.
  virtual OfficeApplication connect(std::wstring_view programId) = 0;
};

}  // namespace tintline
