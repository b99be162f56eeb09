// LibreOffice Calc as the spreadsheet application.
#pragma once

#include <QString>

#include <chrono>
#include <memory>

#include "platform/spreadsheet.h"

namespace vesk {

/// How long the office may take. Every wait has one of these limits.
struct OfficeLimits {
  std::chrono::milliseconds start{60'000};  ///< from the start of the process to its first answer
  std::chrono::milliseconds call{120'000};  ///< for any one call, such as opening or saving a workbook
  std::chrono::milliseconds end{10'000};    ///< for a friendly end, before the private office is killed
};

/// The operator's own office: binds to the running one or starts it visibly. It is never killed: an office
/// that does not answer in time gives an error and is left alone.
std::unique_ptr<Spreadsheet> MakeInteractiveSpreadsheet(const OfficeLimits& limits = {});

/// A private office without a window, with a profile and a pipe of its own, started with the first workbook
/// and kept for the next ones. Its end, also by Quit or by a hang, takes its processes and its profile with
/// it.
std::unique_ptr<Spreadsheet> MakeUnattendedSpreadsheet(const OfficeLimits& limits = {});

}  // namespace vesk
