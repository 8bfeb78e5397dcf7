// The model of a drop-down list without a text field.
#pragma once

#include <string>
#include <vector>

#include "app/controls/control.h"

namespace tintline {

// The view sets ListIndex before it calls Click.
class ComboBox : public Control {
 public:
  Property<std::vector<std::wstring>> List{*this, {}};
  Property<int> ListIndex{*this, -1};  // -1 for none
  Event Click;
};

}  // namespace tintline
