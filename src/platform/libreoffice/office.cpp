#include "platform/libreoffice/office.h"

#include <utility>

#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include "platform/libreoffice/office_session.h"
#include "platform/libreoffice/office_workbook.h"

namespace vesk {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;

bool HasVisibleWindow(const Reference<css::frame::XModel>& model) {
  const Reference<css::frame::XController> controller = model->getCurrentController();
  const Reference<css::frame::XFrame> frame =
      controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>();
  if (!frame.is()) return false;
  const Reference<css::awt::XWindow2> window(frame->getContainerWindow(), UNO_QUERY);
  return window.is() && window->isVisible();
}

/// The application that both kinds share; they differ in how a session comes about.
class OfficeSpreadsheet : public Spreadsheet {
 public:
  explicit OfficeSpreadsheet(const OfficeLimits& limits) : limits_(limits) {}

  Result<std::unique_ptr<Workbook>> Open(const QString& path, Macros macros) override {
    if (const Status ready = MakeReady(); !ready) return ready.Failure();
    auto workbook = OfficeWorkbook::Load(session_, path, macros);
    if (!workbook) return workbook.Failure();
    return std::unique_ptr<Workbook>(std::move(*workbook));
  }

  Status Show() override { return {}; }  // an office shows itself with its first visible workbook

  Status Recalculate() override {
    if (!session_) return {};
    return session_->Ask(
        Wording{u"Tablo dosyaları yeniden hesaplanamadı", u"The workbooks could not be recalculated"},
        QString(), [this] {
          ForEachDocument([](const Reference<css::uno::XInterface>& document) {
            const Reference<css::sheet::XCalculatable> workbook(document, UNO_QUERY);
            if (workbook.is()) workbook->calculateAll();
            return true;
          });
        });
  }

 protected:
  virtual Result<std::shared_ptr<OfficeSession>> NewSession() = 0;

  /// Keeps the session that there is, or makes a new one where the office has ended meanwhile.
  Status MakeReady() {
    if (session_ && session_->IsAlive()) return {};
    session_.reset();
    auto made = NewSession();
    if (!made) return made.Failure();
    session_ = *made;
    return {};
  }

  /// Calls the visitor with each open document until it returns false. Runs inside an exchange.
  template <class Visitor>
  void ForEachDocument(Visitor visit) {
    const Reference<css::container::XEnumeration> documents =
        session_->Desktop()->getComponents()->createEnumeration();
    while (documents->hasMoreElements()) {
      const Reference<css::uno::XInterface> document(documents->nextElement(), UNO_QUERY);
      if (document.is() && !visit(document)) return;
    }
  }

  OfficeLimits limits_;
  std::shared_ptr<OfficeSession> session_;
};

class UnattendedSpreadsheet final : public OfficeSpreadsheet {
 public:
  using OfficeSpreadsheet::OfficeSpreadsheet;
  bool HasOpenWindow() override { return false; }

  Status Quit() override {
    const std::shared_ptr<OfficeSession> session = std::exchange(session_, nullptr);
    return session ? session->EndOffice() : Status();
  }

 protected:
  Result<std::shared_ptr<OfficeSession>> NewSession() override {
    auto office = PrivateOffice::Start();
    if (!office) return office.Failure();
    return OfficeSession::Own(std::move(*office), limits_);
  }
};

class InteractiveSpreadsheet final : public OfficeSpreadsheet {
 public:
  using OfficeSpreadsheet::OfficeSpreadsheet;

  bool HasOpenWindow() override {
    if (!OperatorOfficeRuns()) return false;
    // An office that runs and cannot be asked counts as one with windows: better to stop than to disturb it.
    if (!MakeReady()) return true;
    bool open = false;
    const Status asked = session_->Ask({}, {}, [&] {
      ForEachDocument([&open](const Reference<css::uno::XInterface>& document) {
        const Reference<css::sheet::XSpreadsheetDocument> workbook(document, UNO_QUERY);
        const Reference<css::frame::XModel> model(document, UNO_QUERY);
        open = workbook.is() && model.is() && HasVisibleWindow(model);
        return !open;
      });
    });
    return open || !asked;
  }

  /// Ends the operator's office only when no document is open in it.
  Status Quit() override {
    if (!session_) return {};
    bool hasDocuments = false;
    const Status asked = session_->Ask(kOfficeDoesNotEnd, {}, [&] {
      ForEachDocument([&hasDocuments](const Reference<css::uno::XInterface>& document) {
        hasDocuments = Reference<css::frame::XModel>(document, UNO_QUERY).is();
        return !hasDocuments;
      });
    });
    if (!asked || hasDocuments) return asked;
    const std::shared_ptr<OfficeSession> session = std::exchange(session_, nullptr);
    return session->EndOffice();
  }

 protected:
  Result<std::shared_ptr<OfficeSession>> NewSession() override { return OfficeSession::Bind(limits_); }
};

}  // namespace

std::unique_ptr<Spreadsheet> MakeInteractiveSpreadsheet(const OfficeLimits& limits) {
  return std::make_unique<InteractiveSpreadsheet>(limits);
}

std::unique_ptr<Spreadsheet> MakeUnattendedSpreadsheet(const OfficeLimits& limits) {
  return std::make_unique<UnattendedSpreadsheet>(limits);
}

}  // namespace vesk
