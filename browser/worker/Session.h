#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "browser/protocol/Command.h"
#include "browser/wire/Wire.h"
#include "browser/worker/ExportFile.h"
#include "browser/worker/ExportJob.h"
#include "browser/worker/PageScreen.h"
#include "browser/worker/Reports.h"
#include "browser/worker/Windows.h"
#include "browser/worker/Worker.h"
#include "desk/DataBackend.h"
#include "desk/Host.h"
#include "desk/Witness.h"
#include "desk/filter/FilterControl.h"

namespace browser {

// One session: the component with its host, what is open in front of the user, and the loop over what the
// page sends. Everything runs on one thread; a modal form runs the loop again inside itself. Only the writing
// of a file goes on beside it.
class Session {
 public:
  explicit Session(const WorkerOptions& options);

  void Run();

 private:
  void ServeUntil(const std::function<bool()>& over);
  void ServePending();
  // The next frame; meanwhile a file that is being written is followed.
  Frame NextFrame();
  void Handle(const Frame& frame);
  void HandleText(const std::string& text);
  // An error that must leave through the form that is up comes out, after the page was told.
  void Carry(const Command& command);
  void RequireState(const Command& command) const;
  // Carries the command out; what comes back is its answer, nothing for a plain done, an empty text for an
  // answer that comes later.
  std::optional<std::string> Perform(const Command& command);
  void Attach(const std::string& text);
  void Tell(const Json& message) const { wire_.Send(FrameKind::kMessage, ToText(message)); }

  // Commands to the topmost form, in FormCommands.cpp.
  void SetValue(const Command& command);
  void Click(const Command& command);
  void PressKey(const Command& command);
  void Enter(const Command& command);
  void Leave(const Command& command);
  void Step(const Command& command);
  void CloseForm(const Command& command);
  void FilterAction(const Command& command);
  void LookUp(const Command& command);
  void SchemeAction(const Command& command);
  desk::FilterControl& TopFilter(const Command& command) const;
  void Answer(const Command& command);

  // Reading, in RowCommands.cpp.
  std::string FetchRows(const Command& command);
  std::string SetView(const Command& command);
  std::string Find(const Command& command);
  std::string Sum(const Command& command);
  std::string Explain(const Command& command);
  Json Rights();

  // All pages of a ledger, in PageCommands.cpp.
  std::string AllPages(const Command& command);
  std::string FetchSheet(const Command& command);
  std::string FindPage(const Command& command);

  // Files, in ExportCommands.cpp.
  std::string ExportReport(const Command& command);
  std::string ExportPages(const Command& command);
  // Of a sheet that lives as long as the call.
  std::string BeginExport(const Command& command, const exports::Sheet& sheet);
  // Begins to write a file beside the session; `exported` answers the command once it is written. One at a
  // time: raises RefusedMessage while another one is being written.
  void StartExport(const Command& command, std::int32_t report, const ExportJob::Write& write);
  // Tells what is new of the file that is being written.
  void FollowExport();
  void TellExported(std::int32_t file, std::size_t size);
  std::string ReadExport(const Command& command);
  void CancelExport();
  void DropExport();

  // Base data and preferences, in DataCommands.cpp.
  std::string ListReports(const Command& command);
  std::string QueryLookup(const Command& command);
  std::string GetPreference(const Command& command);
  void SetPreference(const Command& command);

  WorkerOptions options_;
  Wire wire_;
  std::unique_ptr<desk::DataBackend> book_;
  std::unique_ptr<desk::DataBackend> unrestricted_;  // opened when it is first asked what all is
  desk::Witness witness_;
  Windows windows_;
  PageScreen screen_;
  desk::Host host_;
  Reports reports_;
  std::deque<Frame> deferred_;                      // came while no form could look at it
  std::chrono::steady_clock::time_point lookedAt_;  // for frames, amid work
  bool busy_ = false;                               // an idle command is under way
  std::optional<ExportFile> export_;
  struct RunningExport {
    RunningExport(const Command& asked, std::int32_t ofReport, ExportFile file, const ExportJob::Write& write,
                  int foreign)
        : command(asked.id), report(ofReport), job(std::move(file), write, foreign) {}

    std::optional<std::int64_t> command;
    std::int32_t report;
    ExportJob job;
  };
  std::unique_ptr<RunningExport> running_;
  std::int32_t lastExport_ = 0;
};

}  // namespace browser
