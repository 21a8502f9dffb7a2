#include "tests/component/Desk.h"

#include <utility>

#include "platform/system/Process.h"

namespace component {

using platform::CallKind;
using platform::Error;
using platform::ErrorNumber;
using platform::Form;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::ToLowerAscii;
using platform::UserInput;
using platform::Variant;

void FakeScreen::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) {
    form.Activate();
    if (form.IsVisible()) {
      journal_.push_back("abandoned " + form.Name());
      form.CloseByUser();
    }
    return;
  }
  form.Activate();
  journal_.push_back("show " + form.Name() + " '" + form.Caption() + "'");
  if (!scripts.empty()) {
    const Script script = scripts.front();
    scripts.pop_front();
    UserInput user(form);
    script(form, user);
  }
  if (form.IsVisible()) form.CloseByUser();
  journal_.push_back("closed " + form.Name());
}

platform::Answer FakeScreen::Ask(const platform::MessageBox& box) {
  platform::Answer answer = box.standard;
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  }
  std::string line = "ask '" + box.text + "' '" + box.title + "'";
  for (const std::string_view word : {ToString(box.buttons), ToString(box.icon), ToString(box.standard),
                                      std::string_view("->"), ToString(answer)}) {
    line += " " + std::string(word);
  }
  journal_.push_back(line);
  return answer;
}

void FakeScreen::RunPendingEvents() {
  ++pendingRuns;
  if (onPending) onPending();
}

void FakeScreen::SetPointer(platform::Pointer pointer) {
  journal_.push_back("pointer " + std::string(ToString(pointer)));
}

void FakeScreen::TellProgress(std::string_view operation, const Variant& value) {
  journal_.push_back("bar " + std::string(operation) +
                     (value.IsMissing() ? std::string() : "(" + Spell(value) + ")"));
}

namespace {

Desk* current = nullptr;  // the desk in use

}  // namespace

// Looks its members up in the desk at each call, so that a test may change an answer while it runs.
class Scripted final : public Object {
 public:
  Scripted(Desk& desk, std::string_view id) : desk_(desk), id_(id) {
    ++desk_.living;
    desk_.Note("new " + id_);
  }
  Scripted(const Scripted&) = delete;
  Scripted& operator=(const Scripted&) = delete;
  Scripted(Scripted&&) = delete;
  Scripted& operator=(Scripted&&) = delete;
  ~Scripted() override {
    --desk_.living;
    desk_.Note("end " + id_);
  }

  std::string ClassName() const override { return id_; }
  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override {
    const char* const verb = kind == CallKind::kMethod ? "call " : kind == CallKind::kGet ? "get " : "put ";
    std::string spelled = Spell(arguments);
    // The process's number differs from run to run.
    const std::string number = std::to_string(platform::ProcessId());
    if (id_ == "TOVMtsCacheService.CacheFacade" || id_ == "TOVPropsMgr.ShareProps") {
      if (spelled.starts_with("(" + number + ",")) spelled.replace(1, number.size(), "pid");
    }
    desk_.Note(verb + id_ + "." + std::string(member) + spelled);
    const auto& members = desk_.classes_[ToLowerAscii(id_)];
    const auto found = members.find(ToLowerAscii(member));
    if (found != members.end()) return found->second(arguments);
    if (kind == CallKind::kPut) return {};
    throw Error(ErrorNumber::kUnknownMember, id_, id_ + "." + std::string(member) + " is not told");
  }

 private:
  Desk& desk_;
  std::string id_;
};

void Desk::Install() {
  platform::ClassRegistry::Process().SetOverride([this](std::string_view id) {
    if (const auto own = factories_.find(ToLowerAscii(id)); own != factories_.end()) return own->second();
    return classes_.contains(ToLowerAscii(id)) ? Make(id) : Ref<Object>();
  });
  platform::Screen::Use(&screen);
}

Desk::Desk() : previous_(std::exchange(current, this)) {
  Install();
  On("TOVMtsCacheService.CacheFacade", "GetItem", [this](std::span<Variant> arguments) {
    const std::string key = platform::ToText(arguments[1]);
    return key == "IsOuterLogin" ? outerLogin : session->Value(key);
  });
  On("TOVPropsMgr.ShareProps", "GetProperty",
     [this](std::span<Variant> arguments) { return session->Value(platform::ToText(arguments[1])); });
  Answer("TOVEBSBase.SystemProfile", "GetProfile", platform::Null());
  On("TOVEBSBase.SystemProfile", "GetSystemProfile", [this](std::span<Variant> arguments) {
    return profile->Lookup(platform::ToText(arguments[0]) + "/" + platform::ToText(arguments[1]),
                           arguments[2]);
  });
  On("TOVEBCGLView.GLData", "SystemProfile",
     [this](std::span<Variant>) { return Variant(Make("TOVEBSBase.SystemProfile")); });
  Answer("TOVEBCGLView.GLData", "AccessCheck", true);
  Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "");
  Answer("TOVEBCGLView.GLData", "Refresh", {});
  Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", false);
  On("TOVMAppConnection.AppConnection", "Execute",
     [this](std::span<Variant> arguments) { return Execute(arguments); });
}

Desk::~Desk() {
  current = previous_;
  if (previous_ != nullptr) {
    previous_->Install();
  } else {
    platform::ClassRegistry::Process().SetOverride({});
    platform::Screen::Use(nullptr);
  }
}

void Desk::On(std::string_view id, std::string_view member, Reply reply) {
  classes_[ToLowerAscii(id)][ToLowerAscii(member)] = std::move(reply);
}

void Desk::Answer(std::string_view id, std::string_view member, const Variant& value) {
  On(id, member, [value](std::span<Variant>) { return value; });
}

void Desk::Fail(std::string_view id, std::string_view member, const std::string& text) {
  On(id, member, [id = std::string(id), text](std::span<Variant>) -> Variant {
    throw Error(ErrorNumber::kUserDefined, id, text);
  });
}

void Desk::Serve(std::string_view id, platform::ClassRegistry::Factory factory) {
  factories_[ToLowerAscii(id)] = std::move(factory);
}

void Desk::Withdraw(std::string_view id) {
  classes_.erase(ToLowerAscii(id));
  factories_.erase(ToLowerAscii(id));
}

void Desk::AnswerSql(const std::string& part, const Ref<Recordset>& rows) {
  sqlAnswers_.emplace_back(part, rows);
}

Variant Desk::Execute(std::span<Variant> arguments) {
  sqlTexts.push_back(platform::ToText(arguments[1]));
  for (const auto& [part, rows] : sqlAnswers_) {
    if (sqlTexts.back().find(part) != std::string::npos && rows) return rows->Clone();
  }
  throw Error(ErrorNumber::kUserDefined, "Desk", "the database refuses");
}

Ref<Object> Desk::Make(std::string_view id) { return Ref<Object>(platform::MakeRef<Scripted>(*this, id)); }

std::vector<std::string> Desk::Lines(std::string_view part) const {
  std::vector<std::string> lines;
  for (const std::string& line : journal) {
    if (line.find(part) != std::string::npos) lines.push_back(line);
  }
  return lines;
}

}  // namespace component
