// The questions of a table build, asked in message boxes; its progress, with a button to stop it.
#pragma once

#include <memory>
#include <optional>

#include "shell/busy_cursor.h"
#include "tables/build_level_table.h"

class QProgressDialog;
class QWidget;

namespace vesk {

class Language;
class ReviewQuestions;

class WindowBuildQuestions : public BuildQuestions {
 public:
  /// extremes: said with the question about the hourly values, where the operator never chose which extremes
  /// a table shows; else empty.
  WindowBuildQuestions(QWidget& window, ReviewQuestions& questions, const Language& language,
                       QString extremes);
  ~WindowBuildQuestions() override;
  WindowBuildQuestions(const WindowBuildQuestions&) = delete;
  WindowBuildQuestions& operator=(const WindowBuildQuestions&) = delete;

  void TellWorkbooksAreOpen(const BuildMessage& message) override;
  bool AskDespiteNotes(const std::vector<QString>& notes) override;
  bool AskToReplace(const QString& path, TableOrigin origin) override;
  HourlyAnswer AskForHourlyValues(const BuildMessage& message) override;
  bool WarnNotToSwitchSheets(const BuildMessage& message) override;
  /// Paints what is going on and takes the press on Stop. Nothing else takes input meanwhile.
  bool ShowProgress(BuildStep step, int percent) override;

 private:
  void OpenDialog();
  [[nodiscard]] QString StepText(BuildStep step) const;

  QWidget& window_;
  ReviewQuestions& questions_;
  const Language& language_;
  QString extremes_;
  std::unique_ptr<QProgressDialog> dialog_;  ///< from the last question on
  std::optional<BusyCursor> busy_;
  bool stopped_ = false;
};

}  // namespace vesk
