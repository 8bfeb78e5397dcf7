// Tests of app/controls/control.h and form.h.
#include <gtest/gtest.h>

#include "app/controls/control.h"
#include "app/controls/form.h"
#include "tests/support/fake_form_view.h"

namespace tintline {
namespace {

using test::FakeControlView;
using test::FakeWindow;
using Events = std::vector<std::string>;

TEST(Control, AViewGetsToKnowRealChangesOnly) {
  FakeControlView view;
  Label label;
  label.Caption = L"vor der Ansicht";
  label.setView(&view);
  label.Caption = L"neu";
  label.Caption = L"neu";
  label.Enabled = true;
  EXPECT_EQ(view.changes, 1);
  label.Enabled = false;
  label.ToolTipText = L"Hinweis";
  label.Refresh();
  EXPECT_EQ(view.changes, 3);
  EXPECT_EQ(view.refreshes, 1);
  label.setView(nullptr);
  label.Caption = L"nach der Ansicht";
  label.Refresh();
  EXPECT_EQ(view.changes, 3);
  EXPECT_EQ(view.refreshes, 1);
}

TEST(Control, AViewSeesTheNewStateWhenItIsTold) {
  struct Reader final : ControlView {
    void changed(Control& control) override {
      seen = dynamic_cast<CheckBox&>(control).Value ? "checked" : "clear";
    }
    void refresh(Control&) override {}
    std::string seen;
  } reader;
  CheckBox box;
  box.setView(&reader);
  box.Value = true;
  EXPECT_EQ(reader.seen, "checked");
}

class TestForm final : public Form {
 public:
  Events events;

 private:
  void Form_Load() override { events.emplace_back("load"); }
  void Form_Unload() override {
    events.emplace_back("unload");
    Unload();  // as when the form ends the program, which unloads every form
  }
};

TEST(Form, IsLoadedOnceHoweverOftenItIsShown) {
  FakeWindow window;
  TestForm form;
  form.makeView = window.maker();
  form.Unload();
  form.Load();
  EXPECT_FALSE(form.isShown());
  EXPECT_EQ(window.views, 0);
  form.Show();
  form.Show();
  EXPECT_TRUE(form.isLoaded());
  EXPECT_TRUE(form.isShown());
  EXPECT_EQ(window.views, 1);
  form.Unload();
  form.Unload();
  EXPECT_FALSE(form.isLoaded());
  EXPECT_FALSE(form.isShown());
  EXPECT_EQ(form.events, (Events{"load", "unload"}));
  EXPECT_EQ(window.events, (Events{"show", "show", "close"}));
  form.Show();
  EXPECT_EQ(window.views, 2);
}

TEST(Form, OneThatWasOnlyLoadedHasNoWindowToClose) {
  FakeWindow window;
  TestForm form;
  form.makeView = window.maker();
  form.Load();
  form.Unload();
  EXPECT_EQ(form.events, (Events{"load", "unload"}));
  EXPECT_EQ(window.events, Events{});
}

TEST(Form, AModalOneIsUnloadedHoweverItsWindowEnds) {
  FakeWindow window;
  TestForm form;
  form.makeView = window.maker();
  form.ShowModal();  // the window ends by itself
  window.whileModal = [&form] { form.Unload(); };
  form.ShowModal();
  EXPECT_FALSE(form.isLoaded());
  EXPECT_EQ(form.events, (Events{"load", "unload", "load", "unload"}));
  EXPECT_EQ(window.events, (Events{"runModal", "close", "runModal", "close"}));
}

TEST(Form, AWindowOutlivesTheEventInWhichItIsClosed) {
  struct Window final : FormView {
    Window(Form& ofForm, int& windows) : form(ofForm), alive(windows) { ++alive; }
    ~Window() override { --alive; }
    void show() override {}
    void close() override { closed = true; }
    void runModal() override {
      form.Unload();
      EXPECT_EQ(alive, 1);
      EXPECT_TRUE(closed);
    }
    Form& form;
    int& alive;
    bool closed = false;
  };
  int alive = 0;
  {
    TestForm form;
    form.makeView = [&form, &alive] { return std::make_unique<Window>(form, alive); };
    form.ShowModal();
    form.ShowModal();
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace tintline
