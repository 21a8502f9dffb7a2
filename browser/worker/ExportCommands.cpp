// Files for spreadsheets and paper. A file is written beside the session, from what stood there when it was
// asked for; the user goes on working, and its command is answered when it is whole.
#include <algorithm>
#include <cstdint>
#include <numeric>

#include "browser/worker/Session.h"
#include "platform/rows/Vector.h"

namespace browser {
namespace {

using platform::Ref;
using platform::Vector;

constexpr std::size_t kMostFields = 400;

std::vector<std::string> TitleLines(const OpenReport& report) {
  std::vector<Json> lines(report.told["title"].begin(), report.told["title"].end());
  std::ranges::stable_sort(lines, {}, [](const Json& line) { return line["index"].get<int>(); });
  std::vector<std::string> texts;
  texts.reserve(lines.size());
  for (const Json& line : lines) texts.push_back(line["caption"].get<std::string>());
  return texts;
}

exports::PageSetup SetupOf(const Command& command) {
  exports::PageSetup setup;
  if (command.Has("paper")) {
    const std::string& name = command.Text("paper");
    const std::optional<exports::Paper> paper = exports::FindPaper(name);
    if (!paper) {
      throw RefusedMessage("fields", "there is no paper " + name + ", only " + exports::PaperNames(),
                           command.id);
    }
    setup.paper = *paper;
  }
  if (command.Has("orientation")) {
    setup.orientation = exports::FindOrientation(command.Text("orientation")).value();
  }
  return setup;
}

// Rows as the page shows them.
exports::Grid GridOf(const Vector& header, const platform::Recordset& shown, std::vector<std::uint32_t> rows,
                     const Command& command, const exports::Decimals& decimals) {
  const auto fields = command.body["fields"].get<std::vector<std::string>>();
  if (fields.empty() || fields.size() > kMostFields) {
    throw RefusedMessage("fields", "fields must name from 1 to " + std::to_string(kMostFields) + " columns",
                         command.id);
  }
  const bool emptyForZero = command.Has("emptyForZero") && command.body["emptyForZero"].get<bool>();
  exports::Grid grid(
      header, shown,
      {.fields = fields, .rows = std::move(rows), .decimals = decimals, .emptyForZero = emptyForZero});
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const bool shows = i < grid.Columns().size() && grid.Columns()[i].field == fields[i];
    if (!shows) throw RefusedMessage("failed", "没有这一列：" + fields[i], command.id);
  }
  return grid;
}

}  // namespace

std::string Session::ExportReport(const Command& command) {
  const OpenReport& report = reports_.WithRows(command);
  const Ref<Vector> header = report.object->Get("Header").AsRef<Vector>();
  if (!header) throw RefusedMessage("failed", "这个报表还没有数据。", command.id);
  const exports::Grid grid =
      GridOf(*header, report.view->Rows(), report.view->RowNumbers(), command, DecimalsOf(*book_));
  return BeginExport(command, {.name = report.told["name"].get<std::string>(),
                               .titleLines = TitleLines(report),
                               .grid = grid,
                               .limit = {},
                               .items = nullptr});
}

std::string Session::ExportPages(const Command& command) {
  const LedgerPages& pages = reports_.PagesOf(command);
  if (pages.Items().Count() == 0) throw RefusedMessage("failed", "没有可以导出的账页。", command.id);
  const OpenReport& report = reports_.WithRows(command);
  std::vector<std::uint32_t> rows(pages.Rows().ViewCount());
  std::iota(rows.begin(), rows.end(), 0U);
  const exports::Grid grid =
      GridOf(pages.Header(), pages.Rows(), std::move(rows), command, DecimalsOf(*book_));
  return BeginExport(command, {.name = report.told["name"].get<std::string>(),
                               .titleLines = {},
                               .grid = grid,
                               .limit = {},
                               .items = &pages.Items()});
}

std::string Session::BeginExport(const Command& command, const exports::Sheet& sheet) {
  const exports::PageSetup setup = SetupOf(command);
  StartExport(command, command.Number("report"), [&](ExportFile& file, const exports::Progress& progress) {
    return file.Write(command.Text("format"), sheet, progress, setup);
  });
  return {};
}

void Session::StartExport(const Command& command, std::int32_t report, const ExportJob::Write& write) {
  if (running_) {
    throw RefusedMessage("failed", "另一个文件正在导出，请等它完成，或者先取消它。", command.id);
  }
  export_.reset();
  running_ =
      std::make_unique<RunningExport>(command, report, ExportFile(++lastExport_), write, wire_.Descriptor());
}

void Session::FollowExport() {
  if (!running_) return;
  const auto before = running_->job.LastProgress();
  const ExportJob::State state = running_->job.Follow();
  const auto& progress = running_->job.LastProgress();
  const bool isNew = progress && (!before || before->done != progress->done || before->all != progress->all);
  if (isNew) {
    Json message = Message("exportProgress");
    message["report"] = running_->report;
    message["done"] = progress->done;
    message["all"] = progress->all;
    Tell(message);
  }
  if (state == ExportJob::State::kWriting) return;
  if (state == ExportJob::State::kWritten) {
    export_ = running_->job.TakeFile();
    return TellExported(export_->Id(), export_->Size());
  }
  const std::optional<std::int64_t> command = running_->command;
  running_.reset();
  Tell(ErrorMessage("failed", "导出没有成功：服务器的临时目录写不进去，或者空间、内存不足。请联系管理员。",
                    command));
}

void Session::TellExported(std::int32_t file, std::size_t size) {
  Json message = Message("exported", running_->command);
  message["report"] = running_->report;
  message["export"] = file;
  message["size"] = size;
  running_.reset();
  Tell(message);
}

std::string Session::ReadExport(const Command& command) {
  if (!export_ || command.Number("export") != export_->Id()) {
    throw RefusedMessage("failed", "导出的文件已经不在了，请重新导出。", command.id);
  }
  const std::int32_t start = command.Number("start");
  if (start < 0 || static_cast<std::size_t>(start) > export_->Size()) {
    throw RefusedMessage("fields", "start must lie within the file", command.id);
  }
  const std::string bytes = export_->Read(static_cast<std::size_t>(start));
  const bool more = static_cast<std::size_t>(start) + bytes.size() < export_->Size();
  Json message = Message("exportPart", command.id);
  message["export"] = export_->Id();
  message["start"] = start;
  message["data"] = Base64(bytes);
  message["more"] = more;
  if (!more) export_.reset();
  return ToText(message);
}

void Session::CancelExport() {
  if (running_) TellExported(0, 0);
  DropExport();
}

void Session::DropExport() {
  running_.reset();
  export_.reset();
}

}  // namespace browser
