// The connection of an open register to its database.
#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariantList>

#include <optional>

#include "platform/wording.h"
#include "stations/station_register.h"

namespace vesk {

inline constexpr Wording kOpenFailed{u"İstasyon veri tabanı açılamadı",
                                     u"The station register could not be opened"};
inline constexpr Wording kReadFailed{u"İstasyon veri tabanı okunamadı",
                                     u"The station register could not be read"};
inline constexpr Wording kWriteFailed{u"Değişiklik istasyon veri tabanına yazılamadı",
                                      u"The station register could not be changed"};

/// For a statement's place: the value, or NULL.
inline QVariant Stored(const std::optional<double>& value) {
  return value ? QVariant(*value) : QVariant(QMetaType::fromType<double>());
}

/// A field that is null is nothing. An error names table and field that hold something else than a number.
Result<std::optional<double>> NumberIn(const QSqlQuery& query, int field, const char* table, const char* name,
                                       const QString& path);

/// Of a query for rowid, No, Ad.
Station StationOf(const QSqlQuery& query);

/// A connection of its own name, closed and forgotten with the register.
class StationRegister::Connection {
 public:
  Connection(QString path, Access access);
  ~Connection();
  Q_DISABLE_COPY_MOVE(Connection)

  /// A reading and writing that nobody else comes between; taken back unless it is committed.
  class Transaction {
   public:
    explicit Transaction(const Connection& connection) : connection_(connection) {}
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)
    Status Begin();
    Status Commit();

   private:
    const Connection& connection_;
    bool open_ = false;
  };

  [[nodiscard]] QSqlDatabase Database() const { return QSqlDatabase::database(name_, false); }
  [[nodiscard]] const QString& Path() const { return path_; }

  Status Open();
  Status Run(QSqlQuery& query, const QString& sql, const QVariantList& values, const Wording& what) const;
  /// Whether the register has a table of that name: those beside IstNoAd are made when they are first needed.
  [[nodiscard]] Result<bool> HasTable(const char* name) const;
  /// The row of that key; nothing when there is none.
  [[nodiscard]] Result<std::optional<Station>> RowOf(qint64 key) const;
  [[nodiscard]] Error Failure(const Wording& what, const QSqlError& error) const;

 private:
  QString path_;
  QString name_;
};

}  // namespace vesk
