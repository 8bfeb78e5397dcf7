// See form.h. Tested by the tests of the forms.
#include "app/controls/form.h"

#include <utility>

namespace tintline {

void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  Form_Load();
}

void Form::Show() {
  Load();
  if (view_ == nullptr) view_ = makeView();
  view_->show();
}

void Form::ShowModal() {
  Load();
  view_ = makeView();
  view_->runModal();
  Unload();
}

void Form::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  Form_Unload();
  if (view_ == nullptr) return;
  view_->close();
  closed_ = std::move(view_);
}

}  // namespace tintline
