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
  class View final : public FormView {
   public:
    explicit View(FakeWindow& window) : window_(window) {}

    void show() override {
      window_.events.emplace_back("show");
      window_.open = true;
    }

    void runModal() override {
      window_.events.emplace_back("runModal");
      window_.open = true;
      if (window_.whileModal) window_.whileModal();
    }

    void close() override {
      window_.events.emplace_back("close");
      window_.open = false;
    }

   private:
    FakeWindow& window_;
  };
};

// A view of a control that counts what it is told.
struct FakeControlView final : ControlView {
  void changed(Control&) override { ++changes; }
  void refresh(Control&) override { ++refreshes; }

  int changes = 0;
  int refreshes = 0;
};

}  // namespace tintline::test
