#include "tests/books/reports/stock/StockBook.h"

#include <cmath>
#include <random>
#include <system_error>

#include <gtest/gtest.h>

#include "books/schema/Schema.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::test {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

namespace {

std::string TextOf(const Variant& value) {
  if (value.IsNull()) return "-";
  if (value.GetKind() == Variant::Kind::kDouble) {
    constexpr double kMillion = 1e6;
    const double rounded = std::round(platform::ToDouble(value) * kMillion) / kMillion;
    return platform::NumberToText(rounded == 0 ? 0 : rounded);
  }
  const std::string text = platform::ToText(value);
  return text.empty() ? "''" : text;
}

Ref<Recordset> RowsIn(const Variant& answer) {
  if (const Ref<Recordset> rows = answer.AsRef<Recordset>()) return rows;
  const Ref<platform::Vector> list = answer.AsRef<platform::Vector>();
  EXPECT_TRUE(list && list->Count() == 1);
  return list->Item(0).AsRef<Recordset>();
}

}  // namespace

BookFile::BookFile(const std::function<void(database::Connection&)>& write) {
  std::random_device random;
  folder_ = std::filesystem::temp_directory_path() /
            ("stock-book-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directories(folder_);
  file_ = folder_ / "stock.book";
  database::Connection connection = schema::CreateBook(file_);
  write(connection);
}

BookFile::~BookFile() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

database::Connection BookFile::Write() const { return schema::OpenBook(file_, database::Access::kReadWrite); }

Variant FilterOf(const FilterEntries& entries) {
  const auto filter = platform::MakeRef<platform::Dictionary>();
  for (const auto& [key, value] : entries) filter->Set(key, value);
  return Variant(filter);
}

FilterEntries With(FilterEntries entries, const FilterEntries& others) {
  entries.insert(entries.end(), others.begin(), others.end());
  return entries;
}

Ref<Recordset> Fetch(const Book& book, std::string_view component, std::string_view method,
                     const FilterEntries& filter) {
  Variant argument = FilterOf(filter);
  return RowsIn(book.CreateComponent(component)->Call(method, "UserID=7;", argument));
}

Bands FetchBands(const Book& book, const FilterEntries& filter) {
  Variant argument = FilterOf(filter);
  Variant fields("");
  Variant names("");
  Variant types("");
  Bands bands;
  bands.rows = RowsIn(book.CreateComponent("TOVMStockRpt.Data302")
                          ->Call("GetRptData", "UserID=7;", argument, fields, names, types));
  bands.fields = platform::ToText(fields);
  bands.names = platform::ToText(names);
  bands.types = platform::ToText(types);
  return bands;
}

std::string LineOf(const Recordset& rows, std::size_t row, const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields) {
    const std::optional<std::size_t> column = rows.FindField(field);
    line += (line.empty() ? "" : " ") + (column ? TextOf(rows.ValueAt(*column, rows.RowAt(row))) : "?");
  }
  return line;
}

std::vector<std::string> LinesOf(const Recordset& rows, const std::vector<std::string>& fields) {
  std::vector<std::string> lines;
  for (std::size_t row = 0; row < rows.ViewCount(); ++row) lines.push_back(LineOf(rows, row, fields));
  return lines;
}

std::string RightsOf(std::string_view user, std::string_view alias) {
  const std::string as(alias);
  return " (CharIndex('" + std::string(user) + "'," + as + ".FRightUserID)>0 OR ISNULL(" + as +
         ".FItemID,0)=0) ";
}

std::string RefusalOf(const std::function<void()>& fetch) {
  try {
    fetch();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
    return error.Description();
  }
  ADD_FAILURE() << "it was accepted";
  return {};
}

}  // namespace books::test
