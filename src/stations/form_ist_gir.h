// The register window: station numbers and names, typed straight into the table.
#pragma once

#include <QElapsedTimer>
#include <QPersistentModelIndex>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

#include "platform/wording.h"
#include "stations/station_register.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class MainFrame;
class StationFilterModel;
class StationTableModel;

class Form_IstGir : public QWidget {
  Q_OBJECT

 public:
  /// Opens a window on a station's gaugings.
  using OpenGaugings = std::function<void(const QString& number, const QString& name)>;

  /// openGaugings: of the button for it; empty: there is none.
  explicit Form_IstGir(MainFrame& frame, OpenGaugings openGaugings = {});

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /// A text that was typed as a number and waits for the operator's word.
  struct DoubtedNumber {
    QPersistentModelIndex index;
    QString text;
  };
  void CreateTable();
  void CreateControls();
  void LayOut();
  void OpenRegister();
  void ShowTable();
  void ConnectTable();

  void ShowFailure(const Error& error);
  void ShowRefusedChange(const Error& error);
  void ShowOvertaken(const QStringList& lines);
  void ShowMessage(const QString& text, bool isFault);
  void ClearMessage();
  /// In the operator's language, places filled.
  template <class... Places>
  [[nodiscard]] QString Words(const Wording& wording, Places&&... places) const {
    return InWords(Message(wording, std::forward<Places>(places)...));
  }
  [[nodiscard]] QString InWords(const Message& message) const;

  void Reload();
  void ReloadIfOutdated();
  void SaveAgain();
  void KeepCurrentInView();
  void GoOnAfterEnter();
  void HoldNumberBack(const QPersistentModelIndex& index, const QString& text);
  bool AskAboutNumber();

  void GaugingsClicked();
  void ExitClicked();
  void DeleteClicked();
  void Arm();
  void Disarm();
  [[nodiscard]] bool IsArmed() const { return armed_.has_value(); }
  [[nodiscard]] bool ShowsArmedStation() const;
  [[nodiscard]] int CurrentRow() const;
  void DeleteCurrent();
  void TakeDeletionBack();

  MainFrame& frame_;
  OpenGaugings openGaugings_;
  std::optional<StationRegister> register_;
  StationTableModel* table_ = nullptr;  ///< null while the register cannot be opened
  StationFilterModel* filter_ = nullptr;
  QLabel* searchLabel_ = nullptr;
  QLineEdit* search_ = nullptr;
  QTableView* grid_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* exit_ = nullptr;
  QPushButton* gaugings_ = nullptr;
  QPushButton* delete_ = nullptr;
  std::optional<qint64> armed_;  ///< key of the station that the next press of delete_ takes
  QElapsedTimer sincePress_;     ///< of delete_, while it is armed
  QTimer again_;                 ///< until what the register refused is tried again
  std::optional<DoubtedNumber> doubted_;
};

}  // namespace vesk
