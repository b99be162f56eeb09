// Station registers made up for a test.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>

namespace vesk::test {

/// A second hand on the same file: another program, or the maker of a foreign register.
class SqlHand {
 public:
  explicit SqlHand(const QString& path) {
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kName);
    database.setDatabaseName(path);
    EXPECT_TRUE(database.open());
  }
  ~SqlHand() {
    QSqlDatabase::database(kName).close();
    QSqlDatabase::removeDatabase(kName);
  }
  Q_DISABLE_COPY_MOVE(SqlHand)

  void Do(const char* sql) {
    QSqlQuery query(QSqlDatabase::database(kName));
    EXPECT_TRUE(query.exec(QString::fromUtf8(sql))) << sql << ": " << query.lastError().text().toStdString();
  }

 private:
  inline static const QString kName = QStringLiteral("test hand");
};

/// An empty register, as the first start makes it.
inline void MakeRegister(const QString& path) {
  SqlHand(path).Do("CREATE TABLE IstNoAd (No TEXT, Ad TEXT)");
}

inline bool WriteBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace vesk::test
