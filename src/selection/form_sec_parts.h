// The parts of the selection window that are laid out around its grid.
#pragma once

#include "selection/control_maker.h"
#include "selection/form_sec_controls.h"

namespace vesk {

class FormSecPart : protected ControlMaker {
 public:
  FormSecPart(QWidget& form, const Language& language, FormSecControls& controls)
      : ControlMaker(form, language), c_(controls) {}

 protected:
  FormSecControls& c_;
};

/// Middle: the review grid and what is done with it.
QWidget* MakeReviewPanel(QWidget& form, const Language& language, FormSecControls& controls,
                         RowSelection& selection);
/// Right: setup parameters, loaded files, messages.
QWidget* MakeParameterColumn(QWidget& form, const Language& language, FormSecControls& controls);

}  // namespace vesk
