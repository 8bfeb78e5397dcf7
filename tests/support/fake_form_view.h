// A window of a form.
//
//   FakeWindow window;
//   form.makeView = window.maker();
//   window.whileModal = [&] { form.OKButton_Click(); };
//   form.ShowModal();
#pragma once

#include <functional>
#include <memory>

#include "app/controls/form.h"

namespace tintline::test {

struct FakeWindow {
  // Makes views that report to this window, which must outlive them.
  std::function<std::unique_ptr<FormView>()> maker() {
    return [this] { return std::make_unique<View>(*this); };
  }

  std::function<void()> whileModal;  // what the user does while the form is modal
  bool open = false;

 private:
  struct View final : FormView {
    explicit View(FakeWindow& ofWindow) : window(ofWindow) {}
    void show() override { window.open = true; }
    void close() override { window.open = false; }
    void runModal() override {
      window.open = true;
      if (window.whileModal) window.whileModal();
      window.open = false;  // this view outlives the event that closes it
    }
    FakeWindow& window;
  };
};

}  // namespace tintline::test
