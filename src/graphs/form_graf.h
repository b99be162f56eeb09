// FormGraf: the graph window. Shows pages of one sheet; read-out, zoom, paging, print and save around them.
#pragma once

#include <QMainWindow>

#include <array>
#include <functional>
#include <optional>

#include "graphs/flow_plot.h"
#include "graphs/graph_pages.h"
#include "graphs/graph_readout.h"
#include "graphs/graph_sheet.h"
#include "platform/wording.h"
#include "shell/language.h"

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPrinter;
class QScrollArea;

namespace vesk {

class GraphPicture;

class FormGraf : public QMainWindow {
  Q_OBJECT

 public:
  /// mouseAdjustment: pixels that the read-out's level is taken below the cursor (option slot 22).
  /// saveDirectory: where saving proposes to put a picture.
  FormGraf(GraphSheet sheet, const Language& language, double mouseAdjustment, QString saveDirectory,
           QWidget* parent = nullptr);

  /// Opens graphs of discharge of the same station.
  using OpenFlow = std::function<void(FlowKind kind, bool severalYears)>;
  /// hasCurve: without one only levels can be drawn.
  void SetFlow(OpenFlow open, bool hasCurve);

  [[nodiscard]] const PageTable& Pages() const { return pages_; }
  [[nodiscard]] const GraphSheet& Sheet() const { return sheet_; }
  [[nodiscard]] QString ImageFolder() const { return images_.Folder(); }
  /// Draws the current page on paper and says where it went; what the print command does once a printer is
  /// chosen.
  Status PrintPage(QPrinter& printer);
  /// Saves the current page in the picture's size; what the save command does once a name is chosen.
  Status SavePage(const QString& path) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Mode { Yeni, Eski };  ///< draw anew, or show the saved image of the page

  void CreateActions();
  void CreateMenus();
  void CreateFlowMenu();
  QAction* AddAction(const char* name, const QString& text, const QKeySequence& key,
                     void (FormGraf::*slot)());
  void CreateWidgets();
  void CreateReadout(QWidget* parent);
  void CreateStatusBar();
  QGroupBox* MakePageFields();
  QGroupBox* MakeCornerFields();
  QGroupBox* MakeDateFields();
  void ConnectPicture();

  void DrawPage(Mode mode);
  void ShowPageFields();
  void ShowPageMessages();
  void AddPage(const GraphPage& page);

  void DrawFirst();
  void DrawPrevious();
  void DrawNext();
  void DrawSelection();
  void DrawDates();
  void ShowDateEntry();
  void Print();
  void Preview();
  void Save();
  void Copy();

  void ShowReadout(QPointF point);
  void StartRectangle(QPointF point);
  void StretchRectangle(QPointF point);
  void ZoomBy(double cursorX, double factor);
  void SetRectangle(const std::optional<QRectF>& rectangle);
  void ShowCorners();
  bool HandleKey(int key);
  bool MoveByKey(int key);
  void MoveReadout(int readings, int series);
  void TellReading();
  void ShowReading(ReadoutPlace place, const QString& prefix);
  void Say(const QString& message);
  /// In the operator's language, places filled.
  template <class... Places>
  [[nodiscard]] QString Words(const Wording& wording, Places&&... places) const {
    return InWords(Message(wording, std::forward<Places>(places)...));
  }
  [[nodiscard]] QString InWords(const Message& message) const;
  void PrepareForPaper(QPrinter& printer) const;

  GraphSheet sheet_;
  Language language_;  ///< as it was when the window opened
  double mouseAdjustment_;
  QString saveDirectory_;
  PageTable pages_;
  PageImages images_;
  PageScale scale_;
  std::optional<QPointF> press_;
  std::optional<QRectF> rectangle_;
  std::array<GraphCorner, 2> corners_;
  std::optional<ReadoutPlace> place_;

  GraphPicture* picture_ = nullptr;
  QScrollArea* scroll_ = nullptr;
  QLabel* readout_ = nullptr;
  QLabel* message_ = nullptr;
  QLabel* pageLabel_ = nullptr;
  QGroupBox* dateBox_ = nullptr;
  QLabel* dateMessage_ = nullptr;
  QLineEdit* startEntry_ = nullptr;
  QLineEdit* endEntry_ = nullptr;
  QLineEdit* pageStart_ = nullptr;
  QLineEdit* pageEnd_ = nullptr;
  QLineEdit* levelBottom_ = nullptr;
  QLineEdit* levelTop_ = nullptr;
  std::array<std::array<QLineEdit*, 3>, 2> cornerFields_{};  ///< date, time and level of both corners
  QAction* first_ = nullptr;
  QAction* previous_ = nullptr;
  QAction* next_ = nullptr;
  QAction* select_ = nullptr;
  QAction* dates_ = nullptr;
  QAction* print_ = nullptr;
  QAction* preview_ = nullptr;
  QAction* save_ = nullptr;
  QAction* copy_ = nullptr;
  QAction* exit_ = nullptr;
  OpenFlow openFlow_;
  QMenu* flowMenu_ = nullptr;
};

}  // namespace vesk
