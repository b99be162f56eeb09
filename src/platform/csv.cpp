#include "platform/csv.h"

#include <algorithm>

namespace vesk {
namespace {

bool BeginsLikeAFormula(const QString& text) {
  return !text.isEmpty() && QStringLiteral("=+-@\t\r").contains(text.front());
}

/// Digits with a sign before and one point or comma among them.
bool IsNumber(QStringView text) {
  if (!text.isEmpty() && (text.front() == u'-' || text.front() == u'+')) text = text.mid(1);
  qsizetype digits = 0;
  qsizetype points = 0;
  for (const QChar c : text) {
    if (c >= u'0' && c <= u'9')
      ++digits;
    else if (c == u'.' || c == u',')
      ++points;
    else
      return false;
  }
  return digits > 0 && points <= 1;
}

}  // namespace

QString HarmlessCell(const QString& text) {
  return BeginsLikeAFormula(text) && !IsNumber(text) ? QLatin1Char('\'') + text : text;
}

QByteArray& CsvLines::Plain() {
  if (!first_) text_ += ',';
  first_ = false;
  return text_;
}

void CsvLines::EndLine() {
  text_ += '\n';
  first_ = true;
}

void AppendCsv(QByteArray& line, const QString& text) {
  const QByteArray bytes = HarmlessCell(text).toUtf8();
  const bool plain = std::none_of(bytes.cbegin(), bytes.cend(),
                                  [](char c) { return c == ',' || c == '"' || c == '\n' || c == '\r'; });
  line += plain ? bytes : '"' + QByteArray(bytes).replace("\"", "\"\"") + '"';
}

}  // namespace vesk
