// A window of a form that writes down what becomes of it.
//
//   FakeWindow window;
//   form.makeView = window.maker();
//   window.whileModal = [&] { form.OKButton_Click(); };
//   form.ShowModal();
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/controls/form.h"

namespace tintline::test {

struct FakeWindow {
  // Makes views that report to this window, which must outlive them.
  std::function<std::unique_ptr<FormView>()> maker() {
    return [this] {
      ++views;
      return std::make_unique<View>(*this);
    };
  }

  std::vector<std::string> events;   // "show", "runModal", "close", in order
  std::function<void()> whileModal;  // what the user does while the form is modal
  bool open = false;
  int views = 0;  // how many windows were made

 private:
  struct View final : FormView {
    explicit View(FakeWindow& ofWindow) : window(ofWindow) {}
    void note(const char* event, bool open) {
      window.events.emplace_back(event);
      window.open = open;
    }
    void show() override { note("show", true); }
    void close() override { note("close", false); }
    void runModal() override {
      note("runModal", true);
      if (window.whileModal) window.whileModal();
    }
    FakeWindow& window;
  };
};

// A view of a control that counts what it is told.
struct FakeControlView final : ControlView {
  void changed(Control&) override { ++changes; }
  void refresh(Control&) override { ++refreshes; }
  int changes = 0, refreshes = 0;
};

}  // namespace tintline::test
