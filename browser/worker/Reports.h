#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browser/protocol/Command.h"
#include "browser/wire/Wire.h"
#include "browser/worker/ItemList.h"
#include "browser/worker/LedgerPages.h"
#include "browser/worker/PageScreen.h"
#include "browser/worker/View.h"
#include "desk/Host.h"
#include "platform/rows/Vector.h"

namespace browser {

// A report object that a page has open, and what it handed back last.
struct OpenReport {
  std::int32_t id = 0;
  std::int32_t parent = 0;  // the report whose detail it is, 0 for none
  std::string programmaticId;
  platform::Ref<platform::Object> object;
  desk::FilterSettings fields;  // of its dialog as it was confirmed
  std::optional<View> view;     // nothing before the first rows
  Json told;                    // the reportReady of these rows
  // Of a report with item navigation: the list that it walks, standing on the item shown.
  platform::Ref<platform::Recordset> items;
  std::optional<LedgerPages> pages;  // of all items, since they were asked for
};

// What became of a wish for all pages.
struct MadePages {
  std::string_view outcome;            // in the words of the protocol
  const LedgerPages* pages = nullptr;  // null unless they are ready
};

// The columns of a heading as the protocol's Column.
Json ColumnsOf(const platform::Vector& header, const platform::Recordset& rows);

// A new report object. A class that the component names but does not make raises RefusedMessage with a
// clerk's words.
platform::Ref<platform::Object> MakeReport(const platform::ComponentClass& served);

// The report objects of a session. What becomes of a report is told to the page; a command that cannot be
// carried out raises RefusedMessage or platform::Error.
class Reports {
 public:
  // All borrowed.
  Reports(const desk::Host& host, PageScreen& screen, desk::SchemeStore& schemes, const Wire& wire)
      : host_(host), screen_(screen), schemes_(schemes), wire_(wire) {}

  // The classes by subsystem, as the protocol's ReportGroup.
  Json Groups() const;
  void Open(const Command& command);
  void ShowFilter(const Command& command);
  void Refresh(const Command& command);
  void Close(const Command& command);
  void OpenDetail(const Command& command);
  void MoveItem(const Command& command);
  void FindItem(const Command& command);
  MadePages MakePages(const Command& command);
  // All pages of the report that a command names; refused before they were made.
  const LedgerPages& PagesOf(const Command& command);

  // A data component as the report that is being fetched gets it.
  platform::Ref<platform::Object> Watched(platform::Ref<platform::Object> data);

  // The report that a command names; one without rows is refused.
  OpenReport& WithRows(const Command& command);
  void TellAll() const;

 private:
  OpenReport& Named(const Command& command);
  // One with rows and item navigation.
  OpenReport& WithItems(const Command& command);
  OpenReport& Add(const std::string& programmaticId, platform::Ref<platform::Object> object);
  platform::ComponentClass ClassOf(std::string_view programmaticId) const;
  // True when the report has a filter afterwards; otherwise what went wrong is told.
  bool RunDialog(OpenReport& report);
  void Fetch(OpenReport& report, const char* operation);
  // Reads the report's members and tells them.
  void Publish(OpenReport& report);
  Json Describe(const OpenReport& report) const;
  void TellFailure(const OpenReport& report, const std::string& error, bool cancelled);
  // The same for a report that never showed anything, which goes.
  void Drop(OpenReport& report, const std::string& error, bool cancelled);

  const desk::Host& host_;
  PageScreen& screen_;
  desk::SchemeStore& schemes_;
  const Wire& wire_;
  std::map<std::int32_t, OpenReport> reports_;
  std::int32_t lastId_ = 0;
  OpenReport* awaitingItems_ = nullptr;  // while it fetches anew
};

}  // namespace browser
