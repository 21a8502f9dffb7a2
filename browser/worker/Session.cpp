// The loop of a session. Commands come one after the other; one that opens a dialog is under way until the
// dialog is gone, and the commands to that dialog are served inside it. While a fetch lets events through,
// only what reads is served, and the rest waits for its turn.
#include "browser/worker/Session.h"

#include <array>
#include <chrono>

#include "browser/worker/FormText.h"
#include "platform/rows/ProcessStore.h"
#include "platform/value/Convert.h"

namespace browser {
namespace {

using platform::Error;

// Amid work: often enough for whoever waits for an answer.
constexpr std::chrono::milliseconds kLookEvery(1);

// Errors of the hands on a form, told apart from errors of the form's own events.
bool IsRefusal(const Error& error) { return error.Source() == "UserInput"; }

}  // namespace

Session::Session(const WorkerOptions& options)
    : options_(options),
      wire_(options.descriptor),
      book_(options.openBook(options.book, [userId = options.userId] { return userId; })),
      windows_(wire_, book_->Schemes()),
      screen_(windows_, book_->Schemes(), wire_,
              {.serveUntil = [this](const std::function<bool()>& over) { ServeUntil(over); },
               .servePending = [this] { ServePending(); }}),
      host_(*book_, witness_, screen_, options.component),
      reports_(host_, screen_, book_->Schemes(), wire_) {
  host_.SetDataComponents(
      [this](std::string_view id) { return reports_.Watched(book_->CreateComponent(id)); });
}

void Session::Run() {
  ServeUntil([] { return false; });
}

void Session::ServeUntil(const std::function<bool()>& over) {
  while (!over()) {
    if (deferred_.empty()) {
      Handle(NextFrame());
    } else {
      const Frame frame = std::move(deferred_.front());
      deferred_.pop_front();
      Handle(frame);
    }
  }
}

Frame Session::NextFrame() {
  while (running_ && !wire_.HasMore()) {
    wire_.WaitBeside(running_->job.Descriptor());
    FollowExport();
  }
  return wire_.Receive();
}

// Work lets events through with every row, and each look at the wire is a call of the system.
void Session::ServePending() {
  const auto now = std::chrono::steady_clock::now();
  if (now - lookedAt_ < kLookEvery) return;
  lookedAt_ = now;
  FollowExport();
  while (wire_.HasMore()) {
    Frame frame = wire_.Receive();
    if (frame.kind == FrameKind::kMessage) {
      try {
        const Command command = ReadCommand(frame.text);
        if (command.when != When::kAny && command.when != When::kProgress) {
          deferred_.push_back(std::move(frame));
          continue;
        }
      } catch (const RefusedMessage&) {
        // Handling it tells the page what is wrong with it.
      }
    }
    Handle(frame);
  }
}

void Session::Handle(const Frame& frame) {
  switch (frame.kind) {
    case FrameKind::kPing:
      return wire_.Send(FrameKind::kPing, frame.text);
    case FrameKind::kAttach:
      return Attach(frame.text);
    case FrameKind::kMessage:
      return HandleText(frame.text);
  }
}

void Session::HandleText(const std::string& text) {
  std::optional<Command> command;
  try {
    command = ReadCommand(text);
  } catch (const RefusedMessage& refused) {
    return Tell(ErrorMessage(refused.Code(), refused.what(), refused.Id()));
  }
  Carry(*command);
}

void Session::RequireState(const Command& command) const {
  switch (command.when) {
    case When::kAny:
      return;
    case When::kFirst:
      throw RefusedMessage("state", "the session has begun", command.id);
    case When::kIdle:
      if (busy_ || !windows_.IsEmpty()) throw RefusedMessage("state", "请先完成当前的窗口。", command.id);
      return;
    default:
      if (!windows_.IsMeant(command)) throw RefusedMessage("state", "这个窗口不在最前面。", command.id);
  }
}

void Session::Carry(const Command& command) {
  const bool idle = command.when == When::kIdle;
  try {
    RequireState(command);
    if (idle) busy_ = true;
    const std::optional<std::string> answer = Perform(command);
    if (idle) busy_ = false;
    windows_.TellChanges();
    const bool comesLater = answer && answer->empty();
    if (!comesLater) wire_.Send(FrameKind::kMessage, answer ? *answer : ToText(Message("done", command.id)));
    return;
  } catch (const RefusedMessage& refused) {
    Tell(ErrorMessage(refused.Code(), refused.what(), command.id));
    if (refused.Code() == "state") return;
  } catch (const Error& error) {
    Tell(ErrorMessage(IsRefusal(error) ? "refused" : "failed", error.Description(), command.id));
    if (command.when == When::kForm && !IsRefusal(error)) throw;
  } catch (const std::exception& error) {
    Tell(ErrorMessage("failed", error.what(), command.id));
  }
  if (idle) busy_ = false;
  windows_.TellChanges();
}

std::optional<std::string> Session::Perform(const Command& command) {
  struct Doer {
    std::string_view type;
    void (*run)(Session& session, const Command& command);
  };
  struct Teller {
    std::string_view type;
    std::string (Session::*run)(const Command& command);
  };
  static constexpr std::array kTellers = {
      Teller{"listReports", &Session::ListReports},
      Teller{"fetchRows", &Session::FetchRows},
      Teller{"setView", &Session::SetView},
      Teller{"find", &Session::Find},
      Teller{"sum", &Session::Sum},
      Teller{"explain", &Session::Explain},
      Teller{"allPages", &Session::AllPages},
      Teller{"fetchSheet", &Session::FetchSheet},
      Teller{"findPage", &Session::FindPage},
      Teller{"exportReport", &Session::ExportReport},
      Teller{"exportPages", &Session::ExportPages},
      Teller{"readExport", &Session::ReadExport},
      Teller{"queryLookup", &Session::QueryLookup},
      Teller{"getPreference", &Session::GetPreference},
  };
  static constexpr std::array kDoers = {
      Doer{"openReport", [](Session& session, const Command& it) { session.reports_.Open(it); }},
      Doer{"showFilter", [](Session& session, const Command& it) { session.reports_.ShowFilter(it); }},
      Doer{"refresh", [](Session& session, const Command& it) { session.reports_.Refresh(it); }},
      Doer{"closeReport", [](Session& session, const Command& it) { session.reports_.Close(it); }},
      Doer{"openDetail", [](Session& session, const Command& it) { session.reports_.OpenDetail(it); }},
      Doer{"moveItem", [](Session& session, const Command& it) { session.reports_.MoveItem(it); }},
      Doer{"findItem", [](Session& session, const Command& it) { session.reports_.FindItem(it); }},
      Doer{"setValue", [](Session& session, const Command& it) { session.SetValue(it); }},
      Doer{"click", [](Session& session, const Command& it) { session.Click(it); }},
      Doer{"pressKey", [](Session& session, const Command& it) { session.PressKey(it); }},
      Doer{"enter", [](Session& session, const Command& it) { session.Enter(it); }},
      Doer{"leave", [](Session& session, const Command& it) { session.Leave(it); }},
      Doer{"step", [](Session& session, const Command& it) { session.Step(it); }},
      Doer{"closeForm", [](Session& session, const Command& it) { session.CloseForm(it); }},
      Doer{"filterAction", [](Session& session, const Command& it) { session.FilterAction(it); }},
      Doer{"lookUp", [](Session& session, const Command& it) { session.LookUp(it); }},
      Doer{"schemeAction", [](Session& session, const Command& it) { session.SchemeAction(it); }},
      Doer{"answer", [](Session& session, const Command& it) { session.Answer(it); }},
      Doer{"cancelProgress", [](Session& session, const Command&) { session.screen_.CancelProgress(); }},
      Doer{"cancelExport", [](Session& session, const Command&) { session.CancelExport(); }},
      Doer{"setPreference", [](Session& session, const Command& it) { session.SetPreference(it); }},
  };
  for (const Teller& teller : kTellers) {
    if (teller.type == command.type) return (this->*teller.run)(command);
  }
  for (const Doer& doer : kDoers) {
    if (doer.type != command.type) continue;
    doer.run(*this, command);
    return std::nullopt;
  }
  // What the parent answers itself never comes here.
  throw RefusedMessage("unknown", "there is no command " + command.type, command.id);
}

// The parent sends what it knows of the page; the worker completes the welcome and tells what is open.
void Session::Attach(const std::string& text) {
  // The page that waited for a file is gone.
  DropExport();
  Json welcome = Json::parse(text);
  const platform::Variant company = book_->Profile("Base", "CompanyName");
  const platform::Ref<platform::Dictionary> store = platform::ProcessStore();
  welcome["companyName"] = company.IsText() ? platform::ToText(company) : std::string();
  welcome["restricted"] = book_->NeedRight();
  const exports::Decimals decimals = DecimalsOf(*book_);
  welcome["quantityDecimals"] = decimals.quantity;
  welcome["priceDecimals"] = decimals.price;
  welcome["amountDecimals"] = decimals.amount;
  welcome["papers"] = Json::array();
  for (const exports::Paper& paper : exports::kPapers) {
    welcome["papers"].push_back({{"name", paper.name}, {"width", paper.width}, {"height", paper.height}});
  }
  welcome["appType"] = store ? platform::ToInt32(store->Lookup("AppType", platform::Variant(2))) : 2;
  wire_.Send(FrameKind::kAttach, ToText(welcome));
  reports_.TellAll();
  windows_.TellAll();
}

void RunWorker(const WorkerOptions& options) {
  Session session(options);
  session.Run();
  std::abort();  // the loop ends with the process
}

}  // namespace browser
