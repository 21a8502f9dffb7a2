// A script is read and checked as a whole, then played step by step. What a step sets in motion is written
// while it happens; the step's own line comes last.
#include "player/Player.h"

#include <array>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "desk/Host.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/ProcessStore.h"
#include "platform/value/Clock.h"
#include "player/NameTable.h"
#include "player/PlayScreen.h"
#include "player/PlayWitness.h"
#include "player/Script.h"
#include "player/ScriptedClasses.h"

namespace player {
namespace {

using platform::CallKind;
using platform::Dictionary;
using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::Ref;
using platform::Variant;

std::string Text(const Json& body, const char* key) { return body[key].get<std::string>(); }

class Player {
 public:
  Player(std::ostream& out, const PlayOptions& options)
      : options_(options),
        transcript_(out),
        witness_(transcript_, names_),
        desk_(names_, [this](const std::string& text) { fault_ = text; }),
        screen_(transcript_, desk_, names_, [this](const std::string& text) { fault_ = text; }),
        host_(desk_, witness_, screen_, options.component),
        scripted_(host_.GetDesk(), names_) {
    host_.SetFirst([this](std::string_view id) { return scripted_.Create(id, ScriptedClasses::Told::kYes); });
    host_.GetDesk()->SetReplacement(
        [this](std::string_view id) { return scripted_.Create(id, ScriptedClasses::Told::kNo); });
    host_.SetDataComponents([this](std::string_view id) {
      return desk_.Book() == nullptr ? Ref<Object>() : desk_.Book()->CreateComponent(id);
    });
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  Player(Player&&) = delete;
  Player& operator=(Player&&) = delete;
  ~Player() {
    // The script is over: what goes now is no part of it.
    transcript_.End();
    names_.Clear();
    platform::Clock::Fix(std::nullopt);
  }

  void Run(const std::vector<Step>& steps) {
    for (std::size_t number = 0; number < steps.size(); ++number) RunStep(number, steps[number]);
  }

 private:
  // What a step yields; without a value its line has none.
  using Result = std::optional<Variant>;
  struct StepKind {
    std::string_view name;
    Result (Player::*run)(const Json& body);
  };
  static const std::array<StepKind, 20> kKinds;

  void RunStep(std::size_t number, const Step& step) {
    Json line = Json::object();
    line["step"] = number;
    fault_.clear();
    try {
      for (const StepKind& kind : kKinds) {
        if (kind.name != step.kind) continue;
        if (const Result result = (this->*kind.run)(step.body)) line["value"] = ToJson(*result, &names_);
      }
    } catch (const std::exception& error) {
      line["raised"] = error.what();
    }
    // A mistake in the script is told even when the component has made nothing of it.
    if (!fault_.empty()) {
      line.erase("value");
      line["raised"] = fault_;
    }
    transcript_.Write(line);
  }

  Result Process(const Json& body) {
    const Json& entries = body["process"];
    if (entries.is_null()) {
      platform::SetProcessStore(nullptr);
      return {};
    }
    if (!platform::ProcessStore()) platform::SetProcessStore(platform::MakeRef<Dictionary>());
    for (const auto& [key, value] : entries.items()) {
      platform::ProcessStore()->Set(key, FromJson(value, &names_));
    }
    return {};
  }

  Result GetProcess(const Json& body) {
    const Ref<Dictionary> store = platform::ProcessStore();
    return store ? store->Value(Text(body, "get_process")) : Variant();
  }

  Result Session(const Json& body) {
    desk_.AddSession(body["session"]);
    return {};
  }

  Result OuterLogin(const Json& body) {
    desk_.SetOuterLogin(body["outer_login"]);
    return {};
  }

  Result Profile(const Json& body) {
    desk_.AddProfile(body["profile"]);
    return {};
  }

  Result NeedRight(const Json& body) {
    desk_.SetNeedRight(body["need_right"].get<bool>());
    return {};
  }

  Result RightClasses(const Json& body) {
    desk_.SetRightClasses(Text(body, "right_classes"));
    return {};
  }

  Result Sql(const Json& body) {
    desk_.SetSqlAnswers(body["sql"]);
    return {};
  }

  Result Component(const Json& body) {
    scripted_.Define(body);
    return {};
  }

  Result Book(const Json& body) {
    if (!options_.openBook) throw Error(ErrorNumber::kInvalidCall, "player", "this player opens no books");
    desk_.SetBook(options_.openBook(Text(body, "book"), [this] { return desk_.UserID(); }));
    return {};
  }

  Result Clock(const Json& body) {
    platform::Clock::Fix(platform::Date::FromText(Text(body, "clock")));
    return {};
  }

  Result Scheme(const Json& body) {
    desk_.AddScheme(body);
    return {};
  }

  Result New(const Json& body) {
    names_.Set(Text(body, "new"), platform::CreateObject(Text(body, "class")));
    return {};
  }

  Result Call(const Json& body) {
    const Ref<Object> object = names_.Need(Text(body, "call"));
    std::vector<Variant> arguments;
    if (body.contains("args")) {
      for (const Json& argument : body["args"]) arguments.push_back(FromJson(argument, &names_));
    }
    const Variant value = object->Invoke(Text(body, "method"), CallKind::kMethod, arguments);
    NameResult(body, value);
    return value.IsEmpty() ? Result() : Result(value);
  }

  Result Get(const Json& body) {
    const Ref<Object> object = names_.Need(Text(body, "get"));
    const Variant value = object->Invoke(Text(body, "property"), CallKind::kGet, {});
    NameResult(body, value);
    return value;
  }

  Result Put(const Json& body) {
    const auto name = Text(body, "put");
    const Ref<Object> object = names_.Need(name);
    Variant value = FromJson(body["value"], &names_);
    if (body.contains("property")) {
      object->Invoke(Text(body, "property"), CallKind::kPut, std::span(&value, 1));
      return {};
    }
    auto* dictionary = dynamic_cast<Dictionary*>(object.Get());
    if (dictionary == nullptr) {
      throw Error(ErrorNumber::kTypeMismatch, "player", name + " is no dictionary, and only one has keys");
    }
    dictionary->Set(Text(body, "key"), std::move(value));
    return {};
  }

  Result Release(const Json& body) {
    names_.Release(Text(body, "release"));
    return {};
  }

  Result Dialog(const Json& body) {
    screen_.QueueActions(body["dialog"]);
    return {};
  }

  Result Answer(const Json& body) {
    screen_.QueueAnswer(Text(body, "answer"));
    return {};
  }

  Result Pick(const Json& body) {
    desk_.QueuePick(body["pick"]);
    return {};
  }

  void NameResult(const Json& body, const Variant& value) {
    if (body.contains("as")) names_.Set(Text(body, "as"), value);
  }

  const PlayOptions& options_;
  Transcript transcript_;
  NameTable names_;
  std::string fault_;
  PlayWitness witness_;
  ScriptDesk desk_;
  PlayScreen screen_;
  desk::Host host_;
  ScriptedClasses scripted_;
};

const std::array<Player::StepKind, 20> Player::kKinds = {{
    {"process", &Player::Process},
    {"get_process", &Player::GetProcess},
    {"session", &Player::Session},
    {"outer_login", &Player::OuterLogin},
    {"profile", &Player::Profile},
    {"need_right", &Player::NeedRight},
    {"right_classes", &Player::RightClasses},
    {"sql", &Player::Sql},
    {"component", &Player::Component},
    {"book", &Player::Book},
    {"clock", &Player::Clock},
    {"scheme", &Player::Scheme},
    {"new", &Player::New},
    {"call", &Player::Call},
    {"get", &Player::Get},
    {"put", &Player::Put},
    {"release", &Player::Release},
    {"dialog", &Player::Dialog},
    {"answer", &Player::Answer},
    {"pick", &Player::Pick},
}};

}  // namespace

int Play(std::istream& in, std::ostream& out, std::ostream& err, const PlayOptions& options) {
  const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  try {
    const std::vector<Step> steps = ReadScript(text);
    Player(out, options).Run(steps);
    out.flush();
    return 0;
  } catch (const ScriptError& error) {
    err << "line " << error.Line() << ": " << error.what() << '\n';
    return 2;
  } catch (const Error& error) {
    err << error.Description() << '\n';
    return 1;
  }
}

}  // namespace player
