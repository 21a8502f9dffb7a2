#include "player/PlayScreen.h"

#include <array>

#include "desk/HeadlessScreen.h"
#include "desk/filter/FilterControl.h"
#include "player/FormActions.h"

namespace player {
namespace {

using platform::Answer;
using platform::Form;
using platform::MessageButtons;

constexpr std::array kAnswers = {Answer::kOk, Answer::kCancel, Answer::kYes, Answer::kNo};

Answer AnswerFromText(const std::string& text) {
  for (const Answer answer : kAnswers) {
    if (platform::ToString(answer) == text) return answer;
  }
  return Answer::kOk;
}

bool Offers(MessageButtons buttons, Answer answer) {
  switch (buttons) {
    case MessageButtons::kOk:
      return answer == Answer::kOk;
    case MessageButtons::kOkCancel:
      return answer == Answer::kOk || answer == Answer::kCancel;
    case MessageButtons::kYesNo:
      return answer == Answer::kYes || answer == Answer::kNo;
  }
  return false;
}

}  // namespace

void PlayScreen::Write(const char* key, Json value) {
  Json line = Json::object();
  line[key] = std::move(value);
  transcript_.Write(line);
}

void PlayScreen::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) {
    return desk::RunProgressBox(form, [&] { Write("abandoned", form.Name()); });
  }
  struct WriteClosed {
    PlayScreen& screen;
    Form& form;
    ~WriteClosed() { screen.Write("closed", form.Name()); }
  };
  const WriteClosed closed{*this, form};
  Serve(form);
}

void PlayScreen::Serve(Form& form) {
  Json actions = Json::array();
  if (!dialogs_.empty()) {
    actions = std::move(dialogs_.front());
    dialogs_.pop_front();
  }
  // A form's first activation sets its caption, which its line shows; the line still comes first.
  struct FormLine {
    Transcript& transcript;
    Form& form;
    std::size_t place = transcript.KeepPlace();
    ~FormLine() {
      Json line = Json::object();
      line["form"] = form.Name();
      line["caption"] = form.Caption();
      transcript.Fill(place, line);
    }
  };
  {
    const FormLine line{.transcript = transcript_, .form = form};
    form.Activate();
  }
  FormActions user(form, transcript_, desk_, names_, fault_);
  for (const Json& action : actions) {
    if (!form.IsVisible()) return;
    user.Perform(action);
  }
  if (!form.IsVisible()) return;
  Write("abandoned", form.Name());
  desk::CloseByUser(form);
}

Answer PlayScreen::Ask(const platform::MessageBox& box) {
  Answer answer = box.standard;
  if (!answers_.empty()) {
    const Answer queued = AnswerFromText(answers_.front());
    answers_.pop_front();
    if (Offers(box.buttons, queued)) {
      answer = queued;
    } else {
      fault_("the message box '" + box.text + "' has no button '" + std::string(platform::ToString(queued)) +
             "'");
    }
  }
  Json message = Json::object();
  message["text"] = box.text;
  message["title"] = box.title;
  message["buttons"] = std::string(platform::ToString(box.buttons));
  message["icon"] = std::string(platform::ToString(box.icon));
  message["default"] = std::string(platform::ToString(box.standard));
  Json line = Json::object();
  line["message"] = std::move(message);
  line["answer"] = std::string(platform::ToString(answer));
  transcript_.Write(line);
  return answer;
}

void PlayScreen::SetPointer(platform::Pointer pointer) {
  Write("pointer", std::string(platform::ToString(pointer)));
}

void PlayScreen::TellProgress(std::string_view operation, const platform::Variant& value) {
  Json line = Json::object();
  line["bar"] = std::string(operation);
  if (!value.IsMissing()) line["value"] = ToJson(value, &names_);
  transcript_.Write(line);
}

}  // namespace player
