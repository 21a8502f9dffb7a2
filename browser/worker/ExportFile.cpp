#include "browser/worker/ExportFile.h"

#include <algorithm>
#include <fstream>

#include "exports/Csv.h"
#include "exports/Pdf.h"
#include "exports/Xlsx.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace browser {
namespace {

int Decimals(desk::Backend& book, const char* key, int standard) {
  const platform::Variant value = book.Profile("IC", key);
  if (!platform::IsNumeric(value)) return standard;
  const int decimals = platform::ToInt32(value);
  return decimals < 0 || decimals > 8 ? standard : decimals;
}

[[noreturn]] void CannotWrite() {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "browser",
                        "导出没有成功：服务器的临时目录写不进去，可能空间不足。请联系管理员。");
}

}  // namespace

exports::Decimals DecimalsOf(desk::Backend& book) {
  const exports::Decimals standard;
  return {.quantity = Decimals(book, "QtyDecimal", standard.quantity),
          .price = Decimals(book, "PriceDecimal", standard.price),
          .amount = Decimals(book, "AmountDecimal", standard.amount)};
}

ExportFile::ExportFile(std::int32_t id) : id_(id), file_(std::tmpfile()) {
  if (!file_) CannotWrite();
}

bool ExportFile::Write(std::string_view format, const exports::Sheet& sheet,
                       const exports::Progress& progress, const exports::PageSetup& setup) {
  // The writers take a path; this one leads to the file that is open already.
  const std::string path = "/proc/self/fd/" + std::to_string(fileno(file_.get()));
  bool written = false;
  try {
    if (format == "csv") {
      std::ofstream out(path, std::ios::binary | std::ios::trunc);
      written = exports::WriteCsv(out, sheet, progress);
      out.close();
      if (!out) CannotWrite();
    } else {
      written = format == "pdf" ? exports::WritePdf(path, sheet, progress, setup)
                                : exports::WriteXlsx(path, sheet, progress);
    }
  } catch (const platform::Error&) {
    CannotWrite();
  }
  if (!Measure()) CannotWrite();
  return written;
}

bool ExportFile::Measure() {
  const bool measured = std::fseek(file_.get(), 0, SEEK_END) == 0;
  const long size = measured ? std::ftell(file_.get()) : -1;
  if (size < 0) return false;
  size_ = static_cast<std::size_t>(size);
  return true;
}

std::string ExportFile::Read(std::size_t start) const {
  std::string bytes(std::min(kPart, size_ - std::min(start, size_)), '\0');
  if (std::fseek(file_.get(), static_cast<long>(start), SEEK_SET) != 0 ||
      std::fread(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
    CannotWrite();
  }
  return bytes;
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      group = (group << 8U) | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    }
    for (std::size_t j = 0; j < 4; ++j) {
      text += j <= count ? kDigits[(group >> (18U - 6U * j)) & 63U] : '=';
    }
  }
  return text;
}

}  // namespace browser
