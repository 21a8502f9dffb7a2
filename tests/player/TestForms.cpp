#include "tests/player/TestForms.h"

#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"
#include "platform/object/EventSource.h"

namespace player_tests {
namespace {

using namespace platform;  // NOLINT(google-build-using-namespace): the forms use most of the room

constexpr std::string_view kShower = "Test.Shower";

// One control of each kind. Clicks leave a trace in "log".
class PlainForm : public Form {
 public:
  PlainForm() : Form("frmPlain") {
    SetCaption("before");
    Add<TextBox>("txtItem", 0).onChange = [this] { Log("change"); };
    auto& off = Add<TextBox>("txtItem", 1);
    off.SetEnabled(false);
    auto& frame = Add<Frame>("fraHidden");
    frame.SetCaption("more");
    frame.SetVisible(false);
    Add<CheckBox>("chkInside").PlaceInside(&frame);
    Add<CheckBox>("chkOne").onClick = [this] { Log("check"); };
    Add<OptionButton>("optA").SetOn(true);
    Add<OptionButton>("optB");
    auto& combo = Add<ComboBox>("cboSort");
    combo.AddEntry("first");
    combo.AddEntry("second");
    auto& date = Add<DatePicker>("DtpBDate");
    date.SetDate(Date::Of(2024, 3, 2));
    date.onLostFocus = [this] { Log("left"); };
    auto& tree = Add<TreeView>("tvwStock");
    tree.Add("", "K1", "all").image = "Close";
    tree.Add("K1", "K12", "north").color = 255;
    tree.onNodeCheck = [this](TreeView::Node& node) { Log(node.key); };
    Add<Button>("cmdOK").onClick = [this] { Hide(); };
    Add<Button>("cmdFail").onClick = [] {
      throw Error(ErrorNumber::kUserDefined, "PlainForm", "the button fails");
    };
    Add<Button>("cmdNested").onClick = [this] {
      if (nested) MakeRef<PlainForm>()->Show();
    };
    Add<Label>("log").SetCaption("");
  }

  bool nested = false;

  void OnKeyPress(int& character) override {
    if (character == kKeyQuote) character = 0;
  }

 protected:
  void OnActivate() override {
    SetCaption("after");
    Log("activate");
  }

 private:
  void Log(const std::string& event) {
    Control& log = *Find("log");
    log.SetCaption(log.Caption() + event + ";");
  }
};

// A text field and a filter control; `Result` is what the dialog ends with.
class FilterForm : public Form {
 public:
  explicit FilterForm(std::string_view control)
      : Form(EqualsIgnoreCase(control, "Report") ? "frmReport" : "frmScheme"),
        field_(Add<TextBox>("txtItem", 0)),
        off_(Add<TextBox>("txtItem", 1)) {
    off_.SetEnabled(false);
    const Ref<Object> content = CreateObject(
        EqualsIgnoreCase(control, "Report") ? "VEZ_GRFC.ReportFilter" : "TOVRptFilterCtl.TOVRptFilter");
    Add<EmbeddedControl>("TOVRptFilter", content);
    content->Events()->Listen([this](auto event, auto arguments) { Hear(event, arguments); });
    Add<Button>("cmdOK").onClick = [this] {
      result = Content().Get("FilterInfo").AsObject().Call("FilterResult");
      Hide();
    };
  }

  Variant result = "cancelled";

 private:
  Object& Content() const { return FirstEmbedded()->Content(); }

  void Hear(std::string_view event, std::span<Variant> arguments) {
    if (event == "SaveScheme") {
      Content().Call("WriteValue", arguments[0], "BItemNumber", field_.Text());
    } else if (event == "LoadScheme") {
      field_.SetText(ToText(Content().Call("ReadValue", arguments[0], "BItemNumber")));
    } else if (event == "SchemeActivated") {
      Content().Call("ApplyScheme");
    } else if (event == "SaveFields" || event == "SaveQuery") {
      arguments[0].AsRef<Dictionary>()->Set(event == "SaveQuery" ? "Quick" : "BItemNumber", field_.Text());
    } else if (event == "LoadFields") {
      field_.SetText(ToText(arguments[0].AsRef<Dictionary>()->Value("BItemNumber")));
    } else if (event == "LoadQuery" || event == "SchemeNotice") {
      field_.SetText(field_.Text() + "+" + std::string(event));
    } else if (event == "ResetFields") {
      field_.SetText("reset");
    } else if (event == "GetDataType") {
      arguments[1] = arguments[0].AsObject().Get("Index") == Variant(std::int32_t{0}) ? 4 : 21;
    } else if (event == "FilterDone") {
      if (arguments[0] != Variant(std::int16_t{0})) return;
      result = Content().Call("FilterResult");
      Hide();
    }
  }

  TextBox& field_;
  TextBox& off_;
};

class BoxForm : public Form {
 public:
  explicit BoxForm(bool unloads) : Form("frmProgBar", FormRole::kProgress), unloads_(unloads) {}

 protected:
  void OnActivate() override {
    Screen::Current().TellProgress("SetMsg", "working");
    Screen::Current().TellProgress("HideProgBar", Missing());
    if (!unloads_) return;
    Screen::Current().TellProgress("Unload", Missing());
    Unload();
  }

 private:
  bool unloads_;
};

class Shower final : public Exposed<Shower> {
 public:
  Variant Show(const std::string& name) {
    if (name == "Box" || name == "Stuck") {
      MakeRef<BoxForm>(name == "Box")->Show();
    } else if (name == "Plain" || name == "Nested") {
      if (!kept_) kept_ = MakeRef<PlainForm>();
      kept_->nested = name == "Nested";
      kept_->Show();
    } else {
      const Ref<FilterForm> form = MakeRef<FilterForm>(name);
      form->Show();
      return form->result;
    }
    return {};
  }
  std::string Ask(const std::string& buttons) {
    MessageBox box{.text = "sure?", .title = "title"};
    if (buttons == "yesno") {
      box.buttons = MessageButtons::kYesNo;
      box.icon = MessageIcon::kQuestion;
      box.standard = Answer::kNo;
    }
    return std::string(ToString(Screen::Current().Ask(box)));
  }
  // Calls M of a new object with one argument by reference, and answers what came back in it.
  Variant Relay(const std::string& programmaticId) {
    Variant argument("in");
    SkipErrors([&] { CreateObject(programmaticId)->Call("M", argument); });
    return argument;
  }
  void Point() { Screen::Current().SetPointer(Pointer::kDefault); }

  static constexpr std::string_view kClassName = kShower;
  static constexpr auto kOperations =
      Operations(Method<&Shower::Show>("Show", "Name"), Method<&Shower::Ask>("Ask", "Buttons"),
                 Method<&Shower::Relay>("Relay", "Class"), Method<&Shower::Point>("Point"));

 private:
  Ref<PlainForm> kept_;
};

}  // namespace

RegisteredForms::RegisteredForms() {
  ClassRegistry::Process().Register(kShower, [] { return Ref<Object>(MakeRef<Shower>()); });
}

RegisteredForms::~RegisteredForms() { ClassRegistry::Process().Unregister(kShower); }

}  // namespace player_tests
