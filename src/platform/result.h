// A value, or an error that names what failed, where and why.
#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <variant>

#include "platform/wording.h"

namespace vesk {

/// What went wrong, in words an operator can act on.
struct Error {
  Message what;    ///< what failed, e.g. "The level table could not be saved"
  QString path;    ///< file or folder concerned; empty when there is none
  Message reason;  ///< why, e.g. "No space left on device"

  /// "what: path: reason", leaving out what is empty.
  [[nodiscard]] Message Said() const {
    return Message::Joined({what, Message::Verbatim(path), reason}, QStringLiteral(": "));
  }
  [[nodiscard]] QString In(LanguageChoice language) const { return Said().In(language); }
  /// As the command line and the tests read it.
  [[nodiscard]] QString English() const { return In(LanguageChoice::English); }
};

/// Either a T or a failure: an Error, unless a caller has to tell more kinds of failure apart than it can
/// say. Callers test it before they look inside.
template <class T, class E = Error>
class [[nodiscard]] Result {
 public:
  Result(T value) : content_(std::in_place_index<0>, std::move(value)) {}  // NOLINT: implicit on purpose
  Result(E error) : content_(std::in_place_index<1>, std::move(error)) {}  // NOLINT: implicit on purpose

  [[nodiscard]] bool Ok() const { return content_.index() == 0; }
  explicit operator bool() const { return Ok(); }

  [[nodiscard]] T& Value() & { return std::get<0>(content_); }
  [[nodiscard]] const T& Value() const& { return std::get<0>(content_); }
  [[nodiscard]] T&& Value() && { return std::get<0>(std::move(content_)); }
  [[nodiscard]] const E& Failure() const { return std::get<1>(content_); }

  T& operator*() & { return Value(); }
  const T& operator*() const& { return Value(); }
  T* operator->() { return &Value(); }
  const T* operator->() const { return &Value(); }

 private:
  std::variant<T, E> content_;
};

/// Success, or an Error.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)) {}  // NOLINT: implicit on purpose

  [[nodiscard]] bool Ok() const { return !error_; }
  explicit operator bool() const { return Ok(); }
  [[nodiscard]] const Error& Failure() const { return *error_; }

 private:
  std::optional<Error> error_;
};

using Status = Result<void>;

}  // namespace vesk
