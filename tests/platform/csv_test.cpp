#include "platform/csv.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

TEST(Csv, TextsAreQuotedAndNoFormulas) {
  const struct {
    const char* text;
    const char* cell;
  } rows[] = {{"plain", "plain"},
              {"a,b", "\"a,b\""},
              {"a\"b", "\"a\"\"b\""},
              {"-12.5", "-12.5"},
              {"+3,5", "\"+3,5\""},
              {"=1+1", "'=1+1"},
              {"-1+cmd", "'-1+cmd"},
              {"@SUM(A1)", "'@SUM(A1)"},
              {"\t=1", "'\t=1"},
              {"=A1,\"x\"", "\"'=A1,\"\"x\"\"\""},
              {"", ""},
              {"1.2.3", "1.2.3"}};
  for (const auto& row : rows) {
    QByteArray text;
    CsvLines csv(text);
    csv.Plain() += "1";
    csv.Cell(QString::fromUtf8(row.text));
    csv.EndLine();
    csv.Plain();
    csv.Plain();
    EXPECT_EQ(text.toStdString(), std::string("1,") + row.cell + "\n,");
  }
}

}  // namespace
}  // namespace vesk
