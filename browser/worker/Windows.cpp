#include "browser/worker/Windows.h"

#include <algorithm>
#include <chrono>

#include "browser/worker/FormText.h"

namespace browser {
namespace {

// Of a progress box a few changes are told as they come, since a long silence may follow; of a flood, as with
// every row of a long ledger, so many in this time.
constexpr std::int64_t kProgressEveryMs = 50;
constexpr int kProgressAtOnce = 8;

std::int64_t NowMs() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

void Windows::Push(Window window) {
  window.id = ++lastId_;
  wire_.Send(FrameKind::kMessage, ToText(window.told));
  windows_.push_back(std::move(window));
}

void Windows::OpenForm(platform::Form& form, std::int32_t report, const std::string& scheme) {
  // What stands below shows what it has become before something covers it.
  TellChanges();
  Json told = Message("formOpened");
  told["form"] = lastId_ + 1;
  told["name"] = form.Name();
  told["caption"] = form.Caption();
  told["report"] = report;
  told["focus"] = FocusOf(form);
  told["controls"] = DescribeControls(form);
  told["filter"] = DescribeFilter(form, schemes_, scheme);
  Push({.kind = Kind::kForm, .id = 0, .form = &form, .scheme = scheme, .told = std::move(told)});
}

void Windows::OpenMessage(const platform::MessageBox& box) {
  TellChanges();
  Json told = Message("messageShown");
  told["message"] = lastId_ + 1;
  told["text"] = box.text;
  told["title"] = box.title;
  told["icon"] = std::string(platform::ToString(box.icon));
  told["buttons"] = std::string(platform::ToString(box.buttons));
  told["standard"] = std::string(platform::ToString(box.standard));
  Push({.kind = Kind::kMessage, .id = 0, .form = nullptr, .scheme = {}, .told = std::move(told)});
}

Json Windows::ProgressState(const platform::Form& form) const {
  Json state = Json::object();
  state["text"] = "";
  state["min"] = 0.0;
  state["max"] = 100.0;
  state["value"] = 0.0;
  state["bar"] = false;
  for (const auto& control : form.Controls()) {
    if (const auto* bar = dynamic_cast<const platform::ProgressBar*>(control.Get())) {
      state["min"] = bar->min;
      state["max"] = bar->max;
      state["value"] = bar->value;
      state["bar"] = bar->Visible();
    } else if (control->GetKind() == platform::ControlKind::kLabel) {
      state["text"] = control->Caption();
    }
  }
  return state;
}

void Windows::OpenProgress(platform::Form& form) {
  TellChanges();
  Json told = Message("progressShown");
  told["progress"] = lastId_ + 1;
  told.update(ProgressState(form));
  Push({.kind = Kind::kProgress, .id = 0, .form = &form, .scheme = {}, .told = std::move(told)});
}

void Windows::Close() {
  const Window& window = windows_.back();
  const char* const word = window.kind == Kind::kForm      ? "form"
                           : window.kind == Kind::kMessage ? "message"
                                                           : "progress";
  Json message = Message(std::string(word) + "Closed");
  message[word] = window.id;
  windows_.pop_back();
  wire_.Send(FrameKind::kMessage, ToText(message));
}

bool Windows::HasProgress() const {
  return std::ranges::any_of(windows_, [](const Window& window) { return window.kind == Kind::kProgress; });
}

bool Windows::IsMeant(const Command& command) const {
  if (windows_.empty()) return false;
  const Window& top = windows_.back();
  switch (command.when) {
    case When::kForm:
      return top.kind == Kind::kForm && top.id == command.Number("form");
    case When::kMessage:
      return top.kind == Kind::kMessage && top.id == command.Number("message");
    case When::kProgress:
      return top.kind == Kind::kProgress && top.id == command.Number("progress");
    default:
      return false;
  }
}

void Windows::TellFormChanges(Window& window) const {
  const platform::Form& form = *window.form;
  Json message = Message("formChanged");
  message["form"] = window.id;
  const std::size_t bare = message.size();
  auto tell = [&](const char* key, Json now) {
    if (window.told[key] == now) return;
    window.told[key] = now;
    message[key] = std::move(now);
  };
  tell("caption", form.Caption());
  tell("focus", FocusOf(form));
  tell("filter", DescribeFilter(form, schemes_, window.scheme));
  Json controls = DescribeControls(form);
  if (Json changes = ControlChanges(window.told["controls"], controls); !changes.empty()) {
    window.told["controls"] = std::move(controls);
    message["controls"] = std::move(changes);
  }
  if (message.size() > bare) wire_.Send(FrameKind::kMessage, ToText(message));
}

void Windows::TellChanges() {
  for (Window& window : windows_) {
    if (window.kind == Kind::kForm && window.form->IsVisible()) TellFormChanges(window);
  }
}

bool Windows::IsFlood() {
  const std::int64_t now = NowMs();
  if (now - progressSince_ >= kProgressEveryMs) {
    progressSince_ = now;
    progressCalls_ = 0;
  }
  return ++progressCalls_ > kProgressAtOnce;
}

void Windows::TellProgress() {
  if (windows_.empty() || windows_.back().kind != Kind::kProgress || IsFlood()) return;
  Window& window = windows_.back();
  Json now = Message("progressShown");
  now["progress"] = window.id;
  now.update(ProgressState(*window.form));
  if (now == window.told) return;
  window.told = now;
  now["type"] = "progressChanged";
  wire_.Send(FrameKind::kMessage, ToText(now));
}

void Windows::TellAll() const {
  for (const Window& window : windows_) wire_.Send(FrameKind::kMessage, ToText(window.told));
}

}  // namespace browser
