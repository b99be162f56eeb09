// A connection to an office. Every exchange with it runs under a time limit and comes back as a Status.
#pragma once

#include <QString>

#include <functional>
#include <memory>

#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/connection/XConnection.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <rtl/ustring.hxx>

#include "platform/libreoffice/office.h"
#include "platform/libreoffice/office_process.h"
#include "platform/libreoffice/watchdog.h"
#include "platform/result.h"

namespace vesk {

inline rtl::OUString ToOffice(const QString& text) {
  return {reinterpret_cast<const sal_Unicode*>(text.utf16()), static_cast<sal_Int32>(text.size())};
}
inline rtl::OUString ToOffice(const char* ascii) {
  return rtl::OUString::createFromAscii(ascii);
}
inline QString FromOffice(const rtl::OUString& text) {
  return QString(reinterpret_cast<const QChar*>(text.getStr()), static_cast<qsizetype>(text.getLength()));
}

inline constexpr Wording kOfficeDoesNotEnd{u"Tablolama programı kapanmıyor",
                                           u"The spreadsheet application does not end"};

class OfficeSession {
 public:
  /// Connects to a private office, which the session then owns and ends.
  static Result<std::shared_ptr<OfficeSession>> Own(std::unique_ptr<PrivateOffice> office,
                                                    const OfficeLimits& limits);
  /// Connects to the operator's office, starting it when it does not run.
  static Result<std::shared_ptr<OfficeSession>> Bind(const OfficeLimits& limits);
  ~OfficeSession();
  OfficeSession(const OfficeSession&) = delete;
  OfficeSession& operator=(const OfficeSession&) = delete;

  [[nodiscard]] bool IsPrivate() const { return office_ != nullptr; }
  /// False once the office has ended or was given up.
  [[nodiscard]] bool IsAlive();
  [[nodiscard]] const css::uno::Reference<css::frame::XDesktop2>& Desktop() const { return desktop_; }

  /// Runs an exchange with the office; whatever it throws becomes an error with that what and path.
  Status Ask(const Message& what, const QString& path, const std::function<void()>& exchange);
  /// Asks the office to end. A private one is ended for sure.
  Status EndOffice();

 private:
  OfficeSession(std::unique_ptr<PrivateOffice> office, const OfficeLimits& limits);
  Status Connect(const QString& pipeName);
  void GiveUp();
  [[nodiscard]] Error Failure(const Message& what, const QString& path, const Message& reason) const;

  std::unique_ptr<PrivateOffice> office_;
  OfficeLimits limits_;
  css::uno::Reference<css::connection::XConnection> connection_;
  css::uno::Reference<css::bridge::XBridge> bridge_;
  css::uno::Reference<css::frame::XDesktop2> desktop_;
  std::chrono::milliseconds runningLimit_{0};
  Watchdog watchdog_;
};

}  // namespace vesk
