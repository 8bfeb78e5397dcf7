// Tests of win32/com_ptr.h, win32/handle.h and win32/error.h.
#include "win32/com_ptr.h"

#include <gtest/gtest.h>

#include "win32/error.h"
#include "win32/handle.h"

namespace tintline {
namespace {

// Counts what is held on it and knows no interface but IUnknown.
struct CountingObject : IUnknown {
  long references = 1;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown) return E_NOINTERFACE;
    AddRef();
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
};

using Pointer = ComPtr<IUnknown>;

TEST(ComPtr, everyReferenceIsGivenBack) {
  CountingObject object;
  {
    Pointer shared = Pointer::share(&object);
    EXPECT_EQ(object.references, 2);
    Pointer moved = std::move(shared);
    EXPECT_EQ(object.references, 2);
    EXPECT_FALSE(shared);  // NOLINT(bugprone-use-after-move): what the test is about
    const auto asked = moved.query<IUnknown>();
    EXPECT_TRUE(asked);
    EXPECT_EQ(object.references, 3);
    EXPECT_FALSE(moved.query<IDispatch>());
    EXPECT_EQ(object.references, 3);
  }
  EXPECT_EQ(object.references, 1);
}

TEST(ComPtr, whatItHeldIsLetGo) {
  CountingObject first, second;
  Pointer pointer = Pointer::share(&first);
  pointer = Pointer::share(&second);
  EXPECT_EQ(first.references, 1);
  EXPECT_EQ(second.references, 2);
  EXPECT_EQ(*pointer.put(), nullptr);
  EXPECT_EQ(second.references, 1);
  Pointer::adopt(&second);
  EXPECT_EQ(second.references, 0);
}

int freed = 0;
void freeNumber(int* handle) { freed += *handle; }
using UniqueNumber = UniqueHandle<int*, freeNumber>;

TEST(UniqueHandle, isFreedOnce) {
  int one = 1, ten = 10, hundred = 100;
  freed = 0;
  {
    UniqueNumber handle(&one);
    UniqueNumber other(std::move(handle));
    other.reset(&ten);
    EXPECT_EQ(freed, 1);
    other = UniqueNumber(&hundred);
    EXPECT_EQ(freed, 11);
    UniqueNumber given(&one);
    EXPECT_EQ(given.release(), &one);
  }
  EXPECT_EQ(freed, 111);
}

TEST(Win32Error, tellsTheSystemsTextAndTheNumber) {
  const Win32Error denied(E_ACCESSDENIED);
  EXPECT_EQ(denied.code(), E_ACCESSDENIED);
  EXPECT_TRUE(denied.text().ends_with(L" (0x80070005)"));
  EXPECT_GT(denied.text().size(), sizeof " (0x80070005)");
  EXPECT_EQ(Win32Error(static_cast<HRESULT>(0xA1234567)).text(),
            L"Unbekannter Fehler (0xA1234567)");
  EXPECT_NO_THROW(throwIfFailed(S_FALSE));
  EXPECT_THROW(throwIfFailed(E_FAIL), Win32Error);
  SetLastError(ERROR_FILE_NOT_FOUND);
  try {
    throwLastError();
  } catch (const Win32Error& error) {
    EXPECT_EQ(error.code(), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  }
}

}  // namespace
}  // namespace tintline
