// A file whose name is no UTF-8, as an old machine or a foreign disk leaves it.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <unistd.h>

namespace vesk::test {

/// Lives as long as this object: Qt can neither make nor remove it.
class InvalidName {
 public:
  /// folder: with or without its trailing separator; name: bytes.
  InvalidName(const QString& folder, const QByteArray& name) : path_(folder.toUtf8() + '/' + name) {
    const int handle = ::open(path_.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    EXPECT_GE(handle, 0);
    ::close(handle);
  }
  ~InvalidName() { ::unlink(path_.constData()); }
  InvalidName(const InvalidName&) = delete;
  InvalidName& operator=(const InvalidName&) = delete;

 private:
  QByteArray path_;
};

}  // namespace vesk::test
