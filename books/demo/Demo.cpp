// The book is made beside its place, under a name of its own, and moved there when it is whole: an
// interrupted run leaves the old file as it was.
#include "books/demo/Demo.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "books/demo/BaseDataWriter.h"
#include "books/demo/Company.h"
#include "books/demo/Journal.h"
#include "books/demo/Prices.h"
#include "books/demo/Shelves.h"
#include "books/demo/Trade.h"
#include "books/posting/Periods.h"
#include "books/schema/Schema.h"
#include "platform/value/Clock.h"
#include "platform/value/Error.h"

namespace books {
namespace {

using demo::Plan;

struct Scale {
  std::int32_t items = 0;
  std::int32_t warehouses = 0;
  std::int64_t entries = 0;  // in 24 months
};
constexpr Scale kScales[] = {{200, 5, 10'000}, {5'000, 12, 300'000}, {20'000, 60, 2'000'000}};
constexpr std::int32_t kMonths = 24;
constexpr std::int32_t kMostItems = 100'000;
constexpr std::int32_t kMostMonths = 120;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Demo", description);
}

std::string NameOf(const std::filesystem::path& file) {
  const auto utf8 = file.u8string();
  return {utf8.begin(), utf8.end()};
}

std::int32_t InRange(std::int32_t value, std::int32_t most, const char* what) {
  if (value < 1 || value > most) {
    Refuse(std::to_string(value) + ' ' + what + ": give a number from 1 to " + std::to_string(most));
  }
  return value;
}

Plan PlanOf(const DemoOptions& options) {
  const Scale& scale = kScales[static_cast<std::size_t>(options.size)];
  Plan plan;
  plan.items = InRange(options.items.value_or(scale.items), kMostItems, "items");
  plan.months = InRange(options.months.value_or(kMonths), kMostMonths, "months");
  plan.warehouses = scale.warehouses;
  plan.entries = scale.entries * plan.items / scale.items * plan.months / kMonths;
  plan.seed = options.seed;
  plan.today = options.today.value_or(platform::Clock::Today()).DayOnly();
  const platform::CalendarDay day = plan.today.Calendar();
  const std::int32_t first = schema::PeriodOf(day.year, day.month) - plan.months + 1;
  plan.firstDay = platform::Date::Of(schema::YearOf(first), schema::NumberOf(first), 1);
  return plan;
}

void WriteBook(const std::filesystem::path& file, const Plan& plan, const DemoProgress& tell) {
  const auto progress = [&](std::string_view step, double done) {
    if (tell) tell(step, done);
  };
  progress("base data", 0);
  const demo::Company company = FoundCompany(plan);
  const demo::Prices prices(plan, company);
  demo::Shelves shelves(plan, company);
  database::Connection connection = schema::CreateBook(file);
  WriteBaseData(connection, plan, company, shelves, prices);
  posting::BeginAccounting(connection, plan.firstDay.Calendar().year, plan.firstDay.Calendar().month,
                           plan.today.Calendar().year);
  demo::Journal journal(connection);
  PlayTrade(plan, company, shelves, prices, journal,
            [&](double done) { progress("bills", 0.05 + (done * 0.45)); });
  progress("posting", 0.5);
  journal.Finish();
  for (std::int32_t month = 1; month < plan.months; ++month) {
    progress("closing", 0.95 + (0.05 * month / plan.months));
    posting::ClosePeriod(connection);
  }
  progress("done", 1);
}

void Remove(const std::filesystem::path& file) {
  std::error_code ignored;
  for (const char* ending : {"", "-wal", "-shm"}) {
    std::filesystem::path part = file;
    part += ending;
    std::filesystem::remove(part, ignored);
  }
}

}  // namespace

std::optional<DemoSize> DemoSizeOf(std::string_view word) {
  if (word == "small") return DemoSize::kSmall;
  if (word == "medium") return DemoSize::kMedium;
  if (word == "large") return DemoSize::kLarge;
  return std::nullopt;
}

void MakeDemoBook(const std::filesystem::path& file, const DemoOptions& options,
                  const DemoProgress& progress) {
  const Plan plan = PlanOf(options);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) Refuse(NameOf(file) + " is a folder; name a file");
  if (!options.replace && std::filesystem::exists(file, ignored)) {
    Refuse(NameOf(file) + " exists already; choose another file, or replace it with --force");
  }
  std::filesystem::path making = file;
  making += ".making";
  Remove(making);
  try {
    WriteBook(making, plan, progress);
  } catch (...) {
    Remove(making);
    throw;
  }
  Remove(file);
  std::error_code failure;
  std::filesystem::rename(making, file, failure);
  if (failure) {
    Remove(making);
    Refuse(NameOf(file) + " cannot be written (" + failure.message() +
           "); check the path and its permissions");
  }
}

}  // namespace books
