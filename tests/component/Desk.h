#pragma once

#include <deque>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/form/Screen.h"
#include "platform/form/UserInput.h"
#include "platform/object/ClassRegistry.h"
#include "tests/component/Spell.h"

namespace component {

// Answers message boxes and drives forms by scripts. The progress box runs as hosts run it: it is activated,
// and closed when it is still up afterwards.
class FakeScreen final : public platform::Screen {
 public:
  // What the user does in a form. A form that the script leaves open is closed by its window button.
  using Script = std::function<void(platform::Form& form, platform::UserInput& user)>;

  explicit FakeScreen(std::vector<std::string>& journal) : journal_(journal) {}

  std::deque<Script> scripts;
  std::deque<platform::Answer> answers;  // the default button once there are none
  int pendingRuns = 0;
  std::function<void()> onPending;

  void ShowModal(platform::Form& form) override;
  platform::Answer Ask(const platform::MessageBox& box) override;
  void RunPendingEvents() override;
  void SetPointer(platform::Pointer pointer) override;
  void TellProgress(std::string_view operation, const platform::Variant& value) override;

 private:
  std::vector<std::string>& journal_;
};

// What stands around the component in a test: the screen, and services by programmatic id that answer by
// member name. Every creation, call and end is a line of the journal:
//   new ID | call ID.Member(arguments) | get ID.Member(arguments) | put ID.Member(arguments) | end ID
//   ask 'text' 'title' buttons icon default -> answer | show form 'caption' | closed form | bar
//   operation(value)
class Desk {
 public:
  using Reply = std::function<platform::Variant(std::span<platform::Variant> arguments)>;

  // Installs the session services, the profile, the ledger and security services with plain answers. A desk
  // made inside a test stands in front of the fixture's until it ends.
  Desk();
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;
  Desk(Desk&&) = delete;
  Desk& operator=(Desk&&) = delete;
  ~Desk();

  void On(std::string_view id, std::string_view member, Reply reply);
  void Answer(std::string_view id, std::string_view member, const platform::Variant& value);
  void Fail(std::string_view id, std::string_view member, const std::string& text);
  // A class of the test's own.
  void Serve(std::string_view id, platform::ClassRegistry::Factory factory);
  // As if the class were not installed.
  void Withdraw(std::string_view id);
  // The rows that a statement answers which holds `part`; null makes it fail.
  void AnswerSql(const std::string& part, const platform::Ref<platform::Recordset>& rows);
  // An object of a class that answers as its members were told.
  platform::Ref<platform::Object> Make(std::string_view id);

  void Note(const std::string& line) { journal.push_back(line); }
  // The journal's lines that hold `part`.
  std::vector<std::string> Lines(std::string_view part = "") const;
  int Count(std::string_view part) const { return static_cast<int>(Lines(part).size()); }
  // The texts that were executed.
  std::vector<std::string> sqlTexts;
  // Objects made here that are still alive.
  int living = 0;

  std::vector<std::string> journal;
  FakeScreen screen{journal};
  platform::Variant outerLogin = 0;
  platform::Ref<platform::Dictionary> session = Keys({{"PropsString", "UserID=12;"}});
  platform::Ref<platform::Dictionary> profile = Keys({});

 private:
  friend class Scripted;
  void Install();
  platform::Variant Execute(std::span<platform::Variant> arguments);

  Desk* previous_;
  std::map<std::string, std::map<std::string, Reply>> classes_;
  std::map<std::string, platform::ClassRegistry::Factory> factories_;
  std::vector<std::pair<std::string, platform::Ref<platform::Recordset>>> sqlAnswers_;
};

}  // namespace component
