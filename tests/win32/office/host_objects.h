// The objects of the automation server of the tests: IDispatch over a table of members.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <objidl.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/win32/office/host_folder.h"
#include "win32/com_ptr.h"
#include "win32/office/variant.h"

namespace tintline::test {

// What the objects of a running server share.
struct Host {
  std::wstring programId;
  HostFolder& folder;
  bool visible;  // at the start
  long documents = 0;
  long objects = 0;                              // alive: the application, and what others hold
  bool connected = false;                        // whether others hold the application
  std::map<std::wstring, Variant> properties{};  // what was put, by the name in the log

  long references() const { return objects - 1 + (connected ? 1 : 0); }
  bool isVisible();
};

// One call of a member: its arguments from the first to the last, without those left out at
// the end, and where the result goes.
struct Call {
  std::vector<VARIANT*> arguments;
  VARIANT* result;

  std::wstring text(std::size_t index) const;
  long number(std::size_t index) const;
  void set(long value) const;
  void set(bool value) const;
  void set(std::wstring_view value) const;
  void set(const ComPtr<IDispatch>& object) const;
};

// Stored: a property that may be put and read back; `run` gives its value until then.
enum class MemberKind { Property, Method, Stored };

struct Member {
  std::wstring_view name;
  MemberKind kind;
  std::size_t least, most;  // arguments
  std::function<void(const Call&)> run;
};

class HostObject : public IDispatch {
 public:
  // `path`: how the log names the object. `name`: how commands do.
  HostObject(Host& host, std::wstring path, std::wstring name, std::vector<Member> members);
  virtual ~HostObject() { --host_.objects; }
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override;

 protected:
  Host& host() { return host_; }

 private:
  HRESULT run(const Member& member, WORD flags, const DISPPARAMS& parameters, VARIANT* result);
  HRESULT put(const Member& member, const DISPPARAMS& parameters);
  HRESULT get(const Member& member, const DISPPARAMS& parameters, VARIANT* result);
  std::wstring pathOf(const Member& member) const {
    return path_ + L'.' + std::wstring(member.name);
  }

  Host& host_;
  std::wstring path_, name_;
  std::vector<Member> members_;
  ULONG references_ = 1;
};

// The application. Its member Quit ends the message loop.
ComPtr<IDispatch> makeApplication(Host& host);

}  // namespace tintline::test
