#include "platform/separated_text.h"

#include <QStringDecoder>

#include <algorithm>

#include "platform/code_page.h"

namespace vesk {
namespace {

bool IsLineEnd(QChar c) {
  return c == u'\n' || c == u'\r';
}

/// Reads cells from a place on.
class CellReader {
 public:
  CellReader(QStringView text, QChar separator) : text_(text), separator_(separator) {}

  [[nodiscard]] bool AtEnd() const { return at_ >= text_.size(); }

  CellLine NextLine() {
    CellLine line{.number = number_, .cells = {}};
    const qsizetype begin = at_;
    while (true) {
      QString cell;
      if (!TakeCell(cell)) return WithWrongQuotes(begin, std::move(line));
      line.cells += cell;
      if (AtEnd() || text_[at_] != separator_) break;
      ++at_;
    }
    line.ended = TakeLineEnd();
    return line;
  }

 private:
  /// False for wrong quotes.
  bool TakeCell(QString& cell) {
    if (AtEnd() || text_[at_] != u'"') {
      const qsizetype begin = at_;
      while (!AtCellEnd()) ++at_;
      cell = text_.mid(begin, at_ - begin).toString();
      return true;
    }
    ++at_;
    while (!AtEnd()) {
      if (text_[at_] != u'"') {
        cell += text_[at_++];
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
        cell += u'"';
        at_ += 2;
      } else {
        ++at_;
        return AtCellEnd();
      }
    }
    return false;
  }

  [[nodiscard]] bool AtCellEnd() const {
    return AtEnd() || text_[at_] == separator_ || IsLineEnd(text_[at_]);
  }

  /// The line ends with the first line end behind its begin, whatever its quotes meant.
  CellLine WithWrongQuotes(qsizetype begin, CellLine line) {
    at_ = begin;
    while (!AtEnd() && !IsLineEnd(text_[at_])) ++at_;
    line.quotesOk = false;
    line.cells = {text_.mid(begin, at_ - begin).toString()};
    line.ended = TakeLineEnd();
    return line;
  }

  bool TakeLineEnd() {
    if (AtEnd()) return false;
    at_ += text_.mid(at_).startsWith(u"\r\n") ? 2 : 1;
    while (counted_ < at_) {
      const bool pair = text_[counted_] == u'\r' && counted_ + 1 < at_ && text_[counted_ + 1] == u'\n';
      if (IsLineEnd(text_[counted_]) && !pair) ++number_;
      ++counted_;
    }
    return true;
  }

  QStringView text_;
  QChar separator_;
  qsizetype at_ = 0;
  qsizetype counted_ = 0;  ///< up to here line ends are in number_
  int number_ = 1;
};

std::optional<QString> WithoutNul(const QString& text) {
  return text.contains(QChar(u'\0')) ? std::nullopt : std::optional(text);
}

}  // namespace

std::optional<QString> DecodeText(QByteArrayView bytes) {
  if (const auto marked = QStringConverter::encodingForData(bytes)) {
    QStringDecoder decoder(*marked);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? std::nullopt : WithoutNul(text);
  }
  QStringDecoder decoder(QStringConverter::Utf8);
  const QString text = decoder.decode(bytes);
  return WithoutNul(decoder.hasError() ? DecodeWindows1254(bytes) : text);
}

std::vector<CellLine> TakeCellsApart(QStringView text, QChar separator) {
  std::vector<CellLine> lines;
  CellReader reader(text, separator);
  while (!reader.AtEnd()) {
    CellLine line = reader.NextLine();
    const bool empty =
        std::ranges::all_of(line.cells, [](const QString& cell) { return cell.trimmed().isEmpty(); });
    if (!empty) lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace vesk
