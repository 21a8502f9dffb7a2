// The system profile and the accounting periods. Periods come first: the profile's start and current period
// must be among them, and calendar months are made for the years that no file describes.
#include <array>
#include <map>

#include "books/import/Run.h"
#include "books/posting/Periods.h"
#include "books/schema/Schema.h"
#include "platform/value/Convert.h"

namespace books::importer {
namespace {

constexpr std::string_view kProfile = "profile.csv";
constexpr std::string_view kPeriods = "periods.csv";

struct PeriodRow {
  std::optional<std::int32_t> year;
  std::optional<std::int32_t> number;
  std::optional<platform::Date> firstDay;
  std::optional<platform::Date> lastDay;
};

const std::vector<Column<PeriodRow>>& PeriodColumns() {
  static const std::vector<Column<PeriodRow>> kColumns = {
      {.name = "year",
       .caption = "年度",
       .target = &PeriodRow::year,
       .needed = true,
       .least = 1990,
       .most = 2100},
      {.name = "number",
       .caption = "期间",
       .target = &PeriodRow::number,
       .needed = true,
       .least = 1,
       .most = 12},
      {.name = "first_day", .caption = "开始日期", .target = &PeriodRow::firstDay, .needed = true},
      {.name = "last_day", .caption = "结束日期", .target = &PeriodRow::lastDay, .needed = true},
  };
  return kColumns;
}

struct ProfileRow {
  std::string_view category;
  std::string_view key;
  std::string_view value;
};

const std::vector<Column<ProfileRow>>& ProfileColumns() {
  static const std::vector<Column<ProfileRow>> kColumns = {
      {.name = "category", .caption = "类别", .target = &ProfileRow::category, .needed = true},
      {.name = "key", .caption = "键", .target = &ProfileRow::key, .needed = true},
      {.name = "value", .caption = "值", .target = &ProfileRow::value, .needed = true},
  };
  return kColumns;
}

void TakePeriod(Run& run, const PeriodRow& row, const Place& place) {
  const std::int32_t period = schema::PeriodOf(*row.year, *row.number);
  if (*row.firstDay > *row.lastDay) {
    run.findings.Add(place, "last_day", row.lastDay->ToText(), "the period ends before it begins",
                     "correct it");
    return;
  }
  ImportCount& count = run.Count(kPeriods);
  database::Statement known =
      run.connection.Query("SELECT first_day, last_day FROM accounting_period WHERE period = ?", period);
  if (known.Step()) {
    ++count.known;
    if (known.GetDate(0) == *row.firstDay && known.GetDate(1) == *row.lastDay) return;
    run.findings.Add(
        place, "first_day", row.firstDay->ToText(),
        "the period runs from " + known.GetDate(0).ToText() + " to " + known.GetDate(1).ToText() + " already",
        "leave it as it is; periods are not changed by an import");
    return;
  }
  ++count.added;
  run.connection.Execute(
      "INSERT INTO accounting_period (period, year, number, first_day, last_day) VALUES (?, ?, ?, ?, ?)",
      period, *row.year, *row.number, *row.firstDay, *row.lastDay);
}

void ReadPeriods(Run& run) {
  run.Read<PeriodRow>(kPeriods, PeriodColumns(), [&](const PeriodRow& row, const Place& place, bool sound) {
    ++run.Count(kPeriods).rows;
    if (sound) TakePeriod(run, row, place);
  });
  database::Statement gap = run.connection.Query(
      "SELECT b.year, b.number FROM accounting_period a JOIN accounting_period b ON b.period = (SELECT "
      "MIN(period) FROM accounting_period WHERE period > a.period) WHERE b.first_day <> a.last_day + 1");
  while (gap.Step()) {
    run.findings.Add(
        {kPeriods}, {}, {},
        "period " + gap.Text(0) + "-" + gap.Text(1) + " does not begin on the day after the period before it",
        "periods follow each other without gaps; correct their days");
  }
}

// The four numbers of the profile that say where accounting stands.
enum Mark { kStartYear, kStartPeriod, kCurrentYear, kCurrentPeriod, kMarkCount };
constexpr std::array<std::string_view, kMarkCount> kMarks = {"StartYear", "StartPeriod", "CurrentYear",
                                                             "CurrentPeriod"};

struct Marks {
  std::array<std::int32_t, kMarkCount> values{};
  std::int64_t line = 0;  // of the last of them, for what is wrong with them together

  std::int32_t Start() const { return schema::PeriodOf(values[kStartYear], values[kStartPeriod]); }
  std::int32_t Current() const { return schema::PeriodOf(values[kCurrentYear], values[kCurrentPeriod]); }
  bool HasStart() const { return values[kStartYear] != 0 && values[kStartPeriod] != 0; }
  bool HasCurrent() const { return values[kCurrentYear] != 0 && values[kCurrentPeriod] != 0; }
};

// True when the row is one of the marks.
bool TakeMark(Run& run, const ProfileRow& row, const Place& place, Marks& marks) {
  if (!platform::EqualsIgnoreCase(row.category, "IC")) return false;
  for (std::size_t i = 0; i < kMarks.size(); ++i) {
    if (!platform::EqualsIgnoreCase(row.key, kMarks[i])) continue;
    const bool year = i == kStartYear || i == kCurrentYear;
    const std::optional<std::int32_t> number = ReadWhole(row.value);
    if (!number || *number < (year ? 1990 : 1) || *number > (year ? 2100 : 12)) {
      run.findings.Add(place, "value", row.value, year ? "this is no year" : "this is no period",
                       year ? "write a year from 1990 to 2100" : "write a number from 1 to 12");
    } else {
      marks.values[i] = *number;
    }
    marks.line = place.line;
    return true;
  }
  return false;
}

Marks ReadProfile(Run& run) {
  Marks marks;
  run.Read<ProfileRow>(
      kProfile, ProfileColumns(), [&](const ProfileRow& row, const Place& place, bool sound) {
        ImportCount& count = run.Count(kProfile);
        ++count.rows;
        if (!sound) return;
        database::Statement known = run.connection.Query(
            "SELECT 1 FROM system_profile WHERE category = ? AND key = ?", row.category, row.key);
        ++(known.Step() ? count.known : count.added);
        if (TakeMark(run, row, place, marks)) return;
        run.connection.Execute(
            "INSERT INTO system_profile (category, key, value) VALUES (?, ?, ?) "
            "ON CONFLICT (category, key) DO UPDATE SET value = excluded.value",
            row.category, row.key, row.value);
      });
  return marks;
}

bool HasBegun(Run& run) {
  return run.connection.Query("SELECT 1 FROM system_profile WHERE category = 'IC' AND key = 'StartYear'")
      .Step();
}

// Calendar months for the years in which no period is known yet.
void AddMissingYears(Run& run, std::int32_t firstYear, std::int32_t lastYear) {
  for (std::int32_t year = firstYear; year <= lastYear; ++year) {
    if (run.connection.Query("SELECT 1 FROM accounting_period WHERE year = ?", year).Step()) continue;
    schema::AddCalendarYears(run.connection, year, year);
  }
}

void Begin(Run& run, const Marks& marks) {
  const Place place{kProfile, marks.line};
  if (!marks.HasStart()) {
    if (marks.HasCurrent()) {
      run.findings.Add(place, "key", {}, "the start of accounting is missing",
                       "add the rows IC, StartYear and IC, StartPeriod");
    }
    return;
  }
  const std::int32_t current = marks.HasCurrent() ? marks.Current() : marks.Start();
  if (current < marks.Start()) {
    run.findings.Add(place, "key", {}, "the current period lies before the start", "correct it");
    return;
  }
  AddMissingYears(run, marks.values[kStartYear], schema::YearOf(current) + 1);
  posting::BeginAccounting(run.connection, marks.values[kStartYear], marks.values[kStartPeriod],
                           marks.values[kStartYear]);
  run.accounting = Accounting{.start = marks.Start(), .openFrom = marks.Start(), .wanted = current};
}

void GoOn(Run& run, const Marks& marks) {
  const Place place{kProfile, marks.line};
  const posting::Calendar calendar = posting::ReadCalendar(run.connection);
  run.accounting =
      Accounting{.start = calendar.start, .openFrom = calendar.current, .wanted = calendar.current};
  if (marks.HasStart() && marks.Start() != calendar.start) {
    run.findings.Add(place, "key", "StartPeriod", "accounting has begun in another period already",
                     "take the rows StartYear and StartPeriod out");
  }
  if (!marks.HasCurrent()) return;
  if (marks.Current() < calendar.current) {
    run.findings.Add(place, "key", "CurrentPeriod", "the book stands in a later period already",
                     "take the rows CurrentYear and CurrentPeriod out");
    return;
  }
  run.accounting->wanted = marks.Current();
  AddMissingYears(run, schema::YearOf(calendar.current), schema::YearOf(marks.Current()) + 1);
}

}  // namespace

void ImportAccounting(Run& run) {
  ReadPeriods(run);
  const Marks marks = ReadProfile(run);
  const std::int64_t before = run.findings.Count();
  if (HasBegun(run)) {
    GoOn(run, marks);
  } else {
    Begin(run, marks);
  }
  if (run.findings.Count() > before) run.known.AddFaultyFile(kProfile, false);
}

}  // namespace books::importer
