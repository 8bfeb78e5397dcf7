// The model of a form: what all forms have in common. Its view is made when the
// form is shown and goes when it is unloaded.
//
// Tested by tests/app/ and tests/win32/controls/.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/controls/control.h"

namespace tintline {

class Form;

// The window of a form.
class FormView {
 public:
  // The controls of the form may be gone by then.
  virtual ~FormView() = default;

  // Shows the window and returns at once; brings it forward when it is shown.
  virtual void show() = 0;

  // Shows the window and processes events until the form is unloaded.
  virtual void runModal() = 0;

  // Closes the window and ends runModal. May be called inside the window's own
  // events; the view itself lives on until the form is shown again or gone.
  virtual void close() = 0;
};

enum class Pointer { Default, Hourglass };

class Form : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};
  Property<Pointer> MousePointer{*this, Pointer::Default};
  Property<bool> Topmost{*this, false};  // in front of the windows of other programs

  // Makes the window of this form; set by the platform before the form is shown.
  std::function<std::unique_ptr<FormView>()> makeView;

  // Loads the form, when it is not yet loaded, without showing it.
  void Load();
  bool isLoaded() const { return loaded_; }
  bool isShown() const { return view_ != nullptr; }

  // Loads and shows the form: without waiting, or until it is unloaded.
  void Show();
  void ShowModal();

  // Closes the window, if there is one. May be called inside its own events.
  void Unload();

 protected:
  // What the form does when it is loaded and before it is unloaded.
  virtual void Form_Load() {}
  virtual void Form_Unload() {}

 private:
  bool loaded_ = false;
  std::unique_ptr<FormView> view_;
  std::unique_ptr<FormView> closed_;  // perhaps still at work in its last event
};

}  // namespace tintline
