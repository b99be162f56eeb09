// The regional conventions that the file helpers depend on, handed in so that nothing reads the process
// locale.
#pragma once

#include <QChar>

namespace vesk {

struct Regional {
  QChar decimalSign = QLatin1Char('.');    ///< '.' or ','; decides how a number text with a comma is read
  QChar dateSeparator = QLatin1Char('/');  ///< '/' or '.'; joins the parts of a normalised date text
};

}  // namespace vesk
