// Lines of cells as spreadsheets and people write them: CSV with commas or semicolons, or what a spreadsheet
// puts on the clipboard, tab-separated.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vesk {

/// A text file's characters: UTF-8 or UTF-16 by its byte order mark, else UTF-8 where it is that, else
/// Windows-1254. Nothing for bytes that are no text: a NUL is among them.
std::optional<QString> DecodeText(QByteArrayView bytes);

/// A line, or several where a quoted cell holds line breaks.
struct CellLine {
  int number = 0;        ///< of the text's lines, from 1: where it begins
  QStringList cells;     ///< without their quotes, blanks kept
  bool quotesOk = true;  ///< false: an opening quote without a closing one, or text behind the closing one
  bool ended = true;     ///< false: the text ends without a line end behind it
};

/// Takes a text apart, quotes as in RFC 4180; a quote inside a cell that does not begin with one stands for
/// itself. Line ends are LF, CRLF or CR. Lines without any character but blanks and separators are left out.
/// A line with wrong quotes ends with its own line end, so that those behind it are read.
std::vector<CellLine> TakeCellsApart(QStringView text, QChar separator);

}  // namespace vesk
