#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "component/frame/Bar.h"
#include "component/frame/MRpt.h"

namespace component {

// What a class hands back as rows.
enum class RowsKind : std::uint8_t { kRecordset, kVector, kObject };

// The facts in which one report class differs from the next.
struct ReportFacts {
  std::string_view number;  // the report number it starts with, as text
  std::string_view name;    // for users
  std::int32_t property = 0;
  std::optional<std::int32_t> frozenColumn;
  RowsKind rows = RowsKind::kRecordset;
  // The title is built while the progress box is up, rather than before it.
  bool titleInsideBox = false;
  bool hasTitleObject = true;
  // The title object tells the browser both dates of the filter.
  bool hasDateRange = false;
  std::string_view dataComponent;
  std::string_view dataMethod;
  std::span<const DataRight> dataRights;
};

// What the report classes share: the members that a browser reads, the fetch inside the progress box, and
// failures that never leave but through Result ("OK", "Error"). A class adds its facts, its columns and its
// operation table. Operations return Empty and raise nothing on a handled failure.
class Report : public platform::Object {
 public:
  explicit Report(const ReportFacts& facts);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  Report(Report&&) = delete;
  Report& operator=(Report&&) = delete;
  ~Report() override;

  // Stores the number and sets Property up anew, which drops what the browser has added to it.
  void SetExtFirter(const std::string& number);
  // Fetches unless the filter was refused or cancelled, or the last fetch failed.
  virtual platform::Variant GetReportData();
  // Fetches with the present filter, whatever Result says.
  virtual platform::Variant Refresh();
  platform::Ref<platform::Dictionary> Filter() const { return filter_; }
  // Takes the filter by reference; nothing is refused.
  void SetFilter(const platform::Ref<platform::Dictionary>& filter);
  platform::Ref<platform::Vector> Header() const { return header_; }
  platform::Ref<platform::Dictionary> Property() const { return property_; }
  platform::Ref<platform::Dictionary> Result() const { return result_; }
  std::int32_t RptID() const { return rptId_; }
  void SetRptID(std::int32_t rptId) { rptId_ = rptId; }
  // The rows of the last fetch that succeeded; nothing before it.
  platform::Variant Rows() const { return rows_; }
  platform::Ref<platform::Vector> Title() const { return title_; }

  // Report objects alive in this process.
  static std::int32_t LiveCount();

  // The second half of construction, in which the class's own parts take a share. MakeReport calls it.
  void Initialize();

 protected:
  const ReportFacts& Facts() const { return facts_; }
  // The number that a dialog is opened with.
  std::int32_t DialogNumber() const;

  // Sets the process's long number flag, for each new report object anew.
  virtual void RefreshNumberFlag();
  // Further keys of Property, each time it is set up.
  virtual void SetUpProperty(platform::Dictionary& /*property*/) {}
  // The work inside the progress box.
  virtual void OnBarActive();
  virtual void BuildTitleLines();
  // The fetch, in its order; a class overrides what differs.
  virtual void Fetch();
  virtual void AddReportColumns() = 0;
  virtual platform::Variant CallData(platform::Object& data);
  // Takes the answer as rs; raises when it is of another kind than the class hands back.
  void KeepRows(const platform::Variant& rows);

  void AccessCheck();
  // Makes a new Header and points the shared heading at it.
  void StartHeading();
  void BuildHeading();
  // Writes the user's restriction into the filter, as the fetch asks for it.
  virtual void WriteDataRight();
  // The clause over these tables under a key of the filter, where there is a filter.
  void WriteRightClause(std::string_view key, std::span<const DataRight> rights);
  void SetOutcome(bool ok, const std::string& error);
  void SetOk(bool ok);
  bool IsOk() const;
  // The filter; raises when there is none.
  platform::Dictionary& RequireFilter() const;
  void AcceptFilter(const platform::Ref<platform::Dictionary>& filter) { filter_ = filter; }
  Bar& ProgBar();
  // For a report that makes its rows and title lines itself.
  void SetRows(const platform::Variant& rows) { rows_ = rows; }
  void SetTitle(const platform::Ref<platform::Vector>& title) { title_ = title; }

 private:
  const ReportFacts& facts_;
  platform::Ref<platform::Dictionary> filter_;
  platform::Ref<platform::Vector> header_;
  platform::Ref<platform::Dictionary> result_;
  platform::Ref<platform::Dictionary> property_;
  platform::Ref<platform::Vector> title_;
  platform::Variant rows_ = nullptr;
  std::string extFirter_;
  std::int32_t rptId_ = 0;
  platform::Ref<Bar> bar_;
};

// A report object ready for its caller.
template <class R>
platform::Ref<platform::Object> MakeReport() {
  platform::Ref<R> report = platform::MakeRef<R>();
  report->Initialize();
  return report;
}

}  // namespace component
