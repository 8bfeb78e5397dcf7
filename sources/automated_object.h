// An object of an Office application with typed values: what stands between member
// names and the code that knows what the members give.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "ports/office.h"

namespace tintline {

// The failure of a member that gave a value of another type than it must.
OfficeError wrongType();

// Copies stand for the same object. All members throw OfficeError.
class AutomatedObject {
 public:
  explicit AutomatedObject(OfficeObjectPtr object) : object_(std::move(object)) {}

  // The value of a property, perhaps one with indexes.
  std::int32_t number(std::wstring_view member) const { return get<std::int32_t>(member); }
  std::wstring text(std::wstring_view member) const { return get<std::wstring>(member); }
  AutomatedObject object(std::wstring_view member) const {
    return AutomatedObject(get<OfficeObjectPtr>(member));
  }
  template <class T, class... Arguments>
  T get(std::wstring_view member, Arguments... arguments) const {
    std::array<OfficeValue, sizeof...(Arguments)> values{OfficeValue(std::move(arguments))...};
    return as<T>(object_->get(member, values));
  }

  // A property with one index and a number that the member writes.
  template <class T>
  T getWithOut(std::wstring_view member, std::int32_t index, std::int32_t& out) const {
    std::array<OfficeValue, 2> values{OfficeValue(index), OfficeValue(OfficeOut{out})};
    T result = as<T>(object_->get(member, values));
    out = std::get<OfficeOut>(values[1]).value;
    return result;
  }

  void put(std::wstring_view member, OfficeValue value) const {
    object_->put(member, std::move(value));
  }

  template <class... Arguments>
  OfficeValue call(std::wstring_view member, Arguments... arguments) const {
    std::array<OfficeValue, sizeof...(Arguments)> values{OfficeValue(std::move(arguments))...};
    return object_->call(member, values);
  }

 private:
  template <class T>
  static T as(OfficeValue value) {
    if (T* known = std::get_if<T>(&value)) return std::move(*known);
    throw wrongType();
  }

  OfficeObjectPtr object_;
};

}  // namespace tintline
