#include "platform/libreoffice/office_session.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <thread>
#include <utility>

#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include "platform/libreoffice/office_reason.h"

namespace vesk {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr std::chrono::milliseconds kPause{20};  // between two attempts to reach a starting office
constexpr Wording kNoAnswer{u"zamanında yanıt yok", u"no answer in time"};

/// Our own side of the bridge. Made once: the office's libraries keep it for the process anyway.
Reference<css::uno::XComponentContext> LocalContext() {
  static const Reference<css::uno::XComponentContext> context = [] {
    rtl::Bootstrap::set(ToOffice("URE_BOOTSTRAP"),
                        ToOffice("vnd.sun.star.pathname:" VESK_OFFICE_PROGRAM "/fundamentalrc"));
    return cppu::defaultBootstrap_InitialComponentContext();
  }();
  return context;
}

/// Nothing while nobody listens on that pipe.
Reference<css::connection::XConnection> TryToConnect(const QString& pipeName) {
  try {
    return css::connection::Connector::create(LocalContext())
        ->connect(ToOffice(QStringLiteral("pipe,name=") + pipeName));
  } catch (const css::connection::NoConnectException&) {
    return {};
  }
}

QString OperatorPipe() {
  return QStringLiteral("vesk4-%1").arg(QCoreApplication::applicationPid());
}

}  // namespace

OfficeSession::OfficeSession(std::unique_ptr<PrivateOffice> office, const OfficeLimits& limits)
    : office_(std::move(office)), limits_(limits), watchdog_([this] { GiveUp(); }) {}

OfficeSession::~OfficeSession() {
  if (office_) {
    (void)EndOffice();
  } else if (bridge_.is()) {
    (void)Ask({}, {}, [this] { Reference<css::lang::XComponent>(bridge_, UNO_QUERY_THROW)->dispose(); });
  }
}

Result<std::shared_ptr<OfficeSession>> OfficeSession::Own(std::unique_ptr<PrivateOffice> office,
                                                          const OfficeLimits& limits) {
  const QString pipe = office->PipeName();
  std::shared_ptr<OfficeSession> session(new OfficeSession(std::move(office), limits));
  if (const Status connected = session->Connect(pipe); !connected) return connected.Failure();
  return session;
}

Result<std::shared_ptr<OfficeSession>> OfficeSession::Bind(const OfficeLimits& limits) {
  std::shared_ptr<OfficeSession> session(new OfficeSession(nullptr, limits));
  if (const Status listens = LetOperatorOfficeListen(OperatorPipe()); !listens) return listens.Failure();
  if (const Status connected = session->Connect(OperatorPipe()); !connected) return connected.Failure();
  return session;
}

Status OfficeSession::Connect(const QString& pipeName) {
  const Message what =
      Wording{u"Tablolama programına ulaşılamıyor", u"The spreadsheet application cannot be reached"};
  QElapsedTimer waiting;
  waiting.start();
  runningLimit_ = limits_.start;
  for (;;) {
    Reference<css::connection::XConnection> made;
    const Status tried = Ask(what, QString(), [&] { made = TryToConnect(pipeName); });
    if (!tried) return tried;
    connection_ = made;  // the watchdog sleeps now, and it reads this
    if (made.is()) break;
    if (office_ && !office_->IsRunning())
      return Failure(what, QString(), Wording{u"başlarken kapandı", u"it ended at its start"});
    if (waiting.hasExpired(limits_.start.count())) return Failure(what, QString(), kNoAnswer);
    std::this_thread::sleep_for(kPause);
  }
  const Status reached = Ask(what, QString(), [this] {
    bridge_ = css::bridge::BridgeFactory::create(LocalContext())
                  ->createBridge(rtl::OUString(), ToOffice("urp"), connection_, nullptr);
    const Reference<css::uno::XComponentContext> context(
        bridge_->getInstance(ToOffice("StarOffice.ComponentContext")), UNO_QUERY_THROW);
    desktop_ = css::frame::Desktop::create(context);
  });
  runningLimit_ = limits_.call;
  return reached;
}

void OfficeSession::GiveUp() {
  if (office_) office_->Kill();
  try {
    if (connection_.is()) connection_->close();  // wakes the call that waits for an answer
  } catch (const css::uno::Exception&) {
    return;  // closed already: the waiting call wakes all the same
  }
}

Error OfficeSession::Failure(const Message& what, const QString& path, const Message& reason) const {
  if (!watchdog_.TimedOut()) return {what, path, reason};
  return {what, path, kNoAnswer};
}

Status OfficeSession::Ask(const Message& what, const QString& path, const std::function<void()>& exchange) {
  if (watchdog_.TimedOut()) return Failure(what, path, {});
  Message reason;
  bool done = false;
  watchdog_.Arm(runningLimit_);
  try {
    exchange();
    done = true;
  } catch (const css::lang::DisposedException&) {
    reason = Wording{u"tablolama programı kapandı", u"the spreadsheet application has ended"};
  } catch (const css::uno::Exception& exception) {
    reason = WordOfficeReason(FromOffice(exception.Message), path);
  } catch (const std::exception& exception) {
    reason = Message::Verbatim(QString::fromLocal8Bit(exception.what()));
  }
  watchdog_.Disarm();
  if (done) return {};
  return Failure(what, path,
                 reason.IsEmpty() ? Message(Wording{u"tablolama programı kabul etmedi",
                                                    u"the spreadsheet application refused"})
                                  : reason);
}

bool OfficeSession::IsAlive() {
  if (office_ && !office_->IsRunning()) return false;
  return desktop_.is() && Ask({}, QString(), [this] { (void)desktop_->getCurrentFrame(); }).Ok();
}

Status OfficeSession::EndOffice() {
  runningLimit_ = limits_.end;
  bool agreed = true;
  Status asked;
  if (desktop_.is()) {
    asked = Ask(kOfficeDoesNotEnd, QString(), [&] {
      try {
        agreed = desktop_->terminate();
      } catch (const css::lang::DisposedException&) {
        agreed = true;  // it ended before it could answer
      }
    });
  }
  if (bridge_.is()) {
    (void)Ask({}, {}, [this] { Reference<css::lang::XComponent>(bridge_, UNO_QUERY_THROW)->dispose(); });
  }
  desktop_.clear();
  if (office_) {
    office_->End(asked && agreed ? limits_.end : std::chrono::milliseconds(0));
    return {};
  }
  if (asked && !agreed)
    return Failure(kOfficeDoesNotEnd, QString(),
                   Wording{u"başka açık belgeleri var", u"it has other work open"});
  return asked;
}

}  // namespace vesk
