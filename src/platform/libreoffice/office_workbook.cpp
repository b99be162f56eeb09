#include "platform/libreoffice/office_workbook.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <array>
#include <cerrno>
#include <utility>

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/XEmbeddedScripts.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionDisapprove.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <cppuhelper/implbase1.hxx>

#include "platform/libreoffice/office_worksheet.h"
#include "platform/system_reason.h"

namespace vesk {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

css::beans::PropertyValue Setting(const char* name, const Any& value) {
  css::beans::PropertyValue setting;
  setting.Name = ToOffice(name);
  setting.Value = value;
  return setting;
}

/// Answers what the office asks while it opens a workbook: no. Without it a visible office shows a box, such
/// as the one that macros are off, and the call waits for somebody to see it.
class Declines : public cppu::WeakImplHelper1<css::task::XInteractionHandler> {
 public:
  void SAL_CALL handle(const Reference<css::task::XInteractionRequest>& request) override {
    for (const Reference<css::task::XInteractionContinuation>& way : request->getContinuations()) {
      if (Reference<css::task::XInteractionAbort>(way, UNO_QUERY).is() ||
          Reference<css::task::XInteractionDisapprove>(way, UNO_QUERY).is()) {
        way->select();
        return;
      }
    }
  }
};

/// Where the office's settings want its user asked, nobody is: no dialog belongs into an exchange with a time
/// limit, and unasked macros stay off.
sal_Int16 MacroMode(Macros macros) {
  return macros == Macros::MayRun ? css::document::MacroExecMode::ALWAYS_EXECUTE_NO_WARN
                                  : css::document::MacroExecMode::USE_CONFIG_REJECT_CONFIRMATION;
}

Reference<css::frame::XFrame> FrameOf(const Reference<css::sheet::XSpreadsheetDocument>& document) {
  const Reference<css::frame::XModel> model(document, UNO_QUERY_THROW);
  const Reference<css::frame::XController> controller(model->getCurrentController(), css::uno::UNO_SET_THROW);
  return controller->getFrame();
}

/// True when a module's source holds a procedure of that name.
bool HoldsProcedure(const QString& source, const QString& name) {
  const QString opening = QStringLiteral("Sub ") + name;
  qsizetype at = source.indexOf(opening, 0, Qt::CaseInsensitive);
  while (at >= 0) {
    const qsizetype behind = at + opening.size();
    if (behind == source.size() || !source.at(behind).isLetterOrNumber()) return true;
    at = source.indexOf(opening, behind, Qt::CaseInsensitive);
  }
  return false;
}

/// Address of a workbook's procedure, whichever library and module holds it; empty when none does.
QString MacroAddress(const Reference<css::sheet::XSpreadsheetDocument>& document, const QString& name) {
  const Reference<css::document::XEmbeddedScripts> scripts(document, UNO_QUERY_THROW);
  const Reference<css::script::XLibraryContainer> libraries(scripts->getBasicLibraries(), UNO_QUERY_THROW);
  for (const rtl::OUString& libraryName : libraries->getElementNames()) {
    if (!libraries->isLibraryLoaded(libraryName)) libraries->loadLibrary(libraryName);
    const Reference<css::container::XNameAccess> modules(libraries->getByName(libraryName), UNO_QUERY_THROW);
    for (const rtl::OUString& moduleName : modules->getElementNames()) {
      rtl::OUString source;
      modules->getByName(moduleName) >>= source;
      if (!HoldsProcedure(FromOffice(source), name)) continue;
      return QStringLiteral("vnd.sun.star.script:%1.%2.%3?language=Basic&location=document")
          .arg(FromOffice(libraryName), FromOffice(moduleName), name);
    }
  }
  return {};
}

/// The office refuses a file without a word; this tells the usual causes apart.
Error Unreadable(const Message& what, const QString& path) {
  const QFileInfo file(path);
  if (!file.exists()) return {what, path, SystemReason(ENOENT)};
  const QString lock = file.dir().filePath(QStringLiteral(".~lock.%1#").arg(file.fileName()));
  if (QFileInfo::exists(lock))
    return {what, lock,
            Wording{u"başka yerde açık; kilidi bu dosya", u"it is open elsewhere; this is its lock"}};
  return {what, path,
          Wording{u"tablo dosyası değil veya okunamıyor", u"it is no workbook, or it cannot be read"}};
}

}  // namespace

OfficeWorkbook::OfficeWorkbook(std::shared_ptr<OfficeSession> session, const QString& path)
    : session_(std::move(session)), path_(path) {}

OfficeWorkbook::~OfficeWorkbook() {
  if (session_->IsPrivate()) (void)Close();  // nobody else can close it; an operator's window stays as it is
}

Result<std::unique_ptr<OfficeWorkbook>> OfficeWorkbook::Load(std::shared_ptr<OfficeSession> session,
                                                             const QString& path, Macros macros) {
  std::unique_ptr<OfficeWorkbook> workbook(new OfficeWorkbook(std::move(session), path));
  const Message what = Wording{u"Tablo dosyası açılamadı", u"The workbook could not be opened"};
  OfficeSession& office = *workbook->session_;
  const Status loaded = office.Ask(what, path, [&] {
    // Never hidden, a headless office has no screen anyway: a hidden workbook is saved without its active
    // sheet.
    const Reference<css::task::XInteractionHandler> declines(new Declines);
    const std::array how{Setting("MacroExecutionMode", Any(MacroMode(macros))),
                         Setting("InteractionHandler", Any(declines))};
    const Sequence<css::beans::PropertyValue> settings(how.data(), static_cast<sal_Int32>(how.size()));
    const rtl::OUString url = ToOffice(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
    // "_default" gives a workbook that is open already; "_blank" would open a second one, read-only.
    const Reference<css::lang::XComponent> component =
        office.Desktop()->loadComponentFromURL(url, ToOffice("_default"), 0, settings);
    workbook->document_.set(component, UNO_QUERY);
    if (!workbook->document_.is() && component.is()) component->dispose();
  });
  if (!loaded) return loaded.Failure();
  if (!workbook->document_.is()) return Unreadable(what, path);
  return workbook;
}

Result<std::unique_ptr<Worksheet>> OfficeWorkbook::Sheet(const QString& name) {
  Reference<css::sheet::XSpreadsheet> sheet;
  const Status found = session_->Ask(
      Wording{u"Tablo dosyasının sayfası kullanılamıyor", u"The workbook's sheet cannot be used"}, path_,
      [&] {
        const Reference<css::sheet::XSpreadsheets> sheets = document_->getSheets();
        if (sheets->hasByName(ToOffice(name))) sheet.set(sheets->getByName(ToOffice(name)), UNO_QUERY_THROW);
      });
  if (!found) return found.Failure();
  if (!sheet.is()) {
    return Error{Wording{u"Tablo dosyasında bu sayfa yok", u"The workbook has no such sheet"}, path_,
                 Message::Verbatim(name)};
  }
  return std::unique_ptr<Worksheet>(new OfficeWorksheet(session_, document_, sheet, path_));
}

Status OfficeWorkbook::ShowWindow() {
  if (session_->IsPrivate()) return {};
  return session_->Ask(
      Wording{u"Tablo dosyasının penceresi gösterilemedi", u"The workbook's window could not be shown"},
      path_, [&] {
        const Reference<css::awt::XWindow> window = FrameOf(document_)->getContainerWindow();
        window->setVisible(true);
        const Reference<css::awt::XTopWindow> top(window, UNO_QUERY);
        if (top.is()) top->toFront();
      });
}

Status OfficeWorkbook::RunMacro(const QString& name) {
  QString address;
  const Message what =
      Wording{u"Tablo dosyasının makrosu çalıştırılamadı", u"The workbook's macro could not be run"};
  const Status ran = session_->Ask(what, path_, [&] {
    address = MacroAddress(document_, name);
    if (address.isEmpty()) return;
    const Reference<css::script::provider::XScriptProviderSupplier> supplier(document_, UNO_QUERY_THROW);
    const Reference<css::script::provider::XScript> script =
        supplier->getScriptProvider()->getScript(ToOffice(address));
    Sequence<sal_Int16> positions;
    Sequence<Any> results;
    (void)script->invoke({}, positions, results);
  });
  if (ran && address.isEmpty())
    return Error{what, path_, Wording{u"tablo dosyasında bu makro yok", u"the workbook has no such macro"}};
  return ran;
}

Status OfficeWorkbook::Save() {
  return session_->Ask(Wording{u"Tablo dosyası kaydedilemedi", u"The workbook could not be saved"}, path_,
                       [&] { Reference<css::frame::XStorable>(document_, UNO_QUERY_THROW)->store(); });
}

Status OfficeWorkbook::Close() {
  if (!document_.is()) return {};
  const Reference<css::sheet::XSpreadsheetDocument> document = std::exchange(document_, {});
  return session_->Ask(Wording{u"Tablo dosyası kapatılamadı", u"The workbook could not be closed"}, path_,
                       [&] {
                         Reference<css::util::XModifiable>(document, UNO_QUERY_THROW)->setModified(false);
                         Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(true);
                       });
}

}  // namespace vesk
