// Portable models of a form's controls. A form works on them as if they were the
// controls; a view shows them and forwards the user's events, and decides nothing.
//
// Tested by tests/app/ and tests/win32/controls/.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace tintline {

class Control;

// The view of a control.
class ControlView {
 public:
  virtual ~ControlView() = default;

  // A property changed: show the control's present state, soon.
  virtual void changed(Control& control) = 0;

  // Show the present state now.
  virtual void refresh(Control& control) = 0;
};

// A value whose change the view gets to know.
template <class T>
class Property {
 public:
  Property(Control& owner, T value) : owner_(owner), value_(std::move(value)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

  Property& operator=(T value);
  operator const T&() const { return value_; }
  const T& operator()() const { return value_; }

 private:
  Control& owner_;
  T value_;
};

class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  Property<bool> Enabled{*this, true};
  Property<bool> Visible{*this, true};
  Property<std::wstring> ToolTipText{*this, {}};

  // What screen readers call the control, where it does not show its name itself. To be set before
  // there is a view.
  std::wstring AccessibleName;

  // The view must live until another one or none is set.
  void setView(ControlView* view) { view_ = view; }

  // Tells the view that something changed.
  void changed() {
    if (view_ != nullptr) view_->changed(*this);
  }

  void Refresh() {
    if (view_ != nullptr) view_->refresh(*this);
  }

 private:
  ControlView* view_ = nullptr;
};

template <class T>
Property<T>& Property<T>::operator=(T value) {
  if (value_ != value) {
    value_ = std::move(value);
    owner_.changed();
  }
  return *this;
}

// What happens when the user uses a control; set by the form, called by the view.
using Event = std::function<void()>;

class Label : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};
  Event Click;  // for labels that act as links
};

class Frame : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};
  Event Click;
};

class CommandButton : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};  // "&" in front of the access key
  Event Click;
};

// The view sets Value before it calls Click.
class CheckBox : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};
  Property<bool> Value{*this, false};
  Event Click;
};

// One of several; the form keeps the others clear. The view sets Value before Click.
class OptionButton : public Control {
 public:
  Property<std::wstring> Caption{*this, {}};
  Property<bool> Value{*this, false};
  Event Click;
};

// A single-line text field. The view sets Text before it calls Change.
class TextBox : public Control {
 public:
  Property<std::wstring> Text{*this, {}};
  Event Change;
};

class ProgressBar : public Control {
 public:
  Property<int> Max{*this, 100};
  Property<int> Value{*this, 0};
};

}  // namespace tintline
