#include "fakes/fake_desktop.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <variant>

namespace lumowatt {

/// Takes its timer from the list at the end of its life.
class FakeDesktop::RunningTimer : public Timer {
 public:
  RunningTimer(std::list<Running>& timers, std::list<Running>::iterator running)
      : timers_(timers), running_(running) {}
  RunningTimer(const RunningTimer&) = delete;
  RunningTimer& operator=(const RunningTimer&) = delete;
  ~RunningTimer() override { timers_.erase(running_); }

 private:
  std::list<Running>& timers_;
  std::list<Running>::iterator running_;
};

std::optional<std::string> FakeDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  delegate->applicationDidFinishLaunching();
  return std::nullopt;
}

std::unique_ptr<Timer> FakeDesktop::startTimer(double interval, std::function<void()> tick) {
  note("timer");
  allTicks.push_back(tick);
  timers_.push_back({interval, time + interval, std::move(tick)});
  return std::make_unique<RunningTimer>(timers_, std::prev(timers_.end()));
}

bool FakeDesktop::watchPowerSources(std::function<void()> changed) {
  note("watch power sources");
  if (watchesPower) powerChanged_ = std::move(changed);
  return watchesPower;
}

void FakeDesktop::changePower() const {
  if (powerChanged_) powerChanged_();
}

std::int64_t FakeDesktop::integerPreference(std::string_view key) {
  const std::string& text = preferences.find(key)->second;
  std::int64_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

bool FakeDesktop::booleanPreference(std::string_view key) {
  return preferences.find(key)->second == "true";
}

void FakeDesktop::setIntegerPreference(std::string_view key, std::int64_t value) {
  preferences[std::string(key)] = std::to_string(value);
}

void FakeDesktop::setBooleanPreference(std::string_view key, bool value) {
  preferences[std::string(key)] = value ? "true" : "false";
}

bool FakeDesktop::registerLoginItem() {
  note("register login item");
  if (!refusesLogin) loginItem = LoginItemStatus::enabled;
  return !refusesLogin;
}

bool FakeDesktop::unregisterLoginItem() {
  note("unregister login item");
  if (!refusesLogin) loginItem = LoginItemStatus::notRegistered;
  return !refusesLogin;
}

void FakeDesktop::setImage(const std::optional<Image>& newImage) {
  note("image");
  image = newImage;
}

void FakeDesktop::setTitle(std::string_view newTitle) {
  note("title");
  title = {{std::string(newTitle), systemFont(0.0)}};
}

void FakeDesktop::setAttributedTitle(const AttributedString& newTitle) {
  note("attributed title");
  title = newTitle;
}

void FakeDesktop::setToolTip(std::string_view text) {
  note("tool tip");
  toolTip = text;
}

void FakeDesktop::setAccessibilityLabel(std::string_view text) {
  note("accessibility label");
  accessibilityLabel = text;
}

void FakeDesktop::pass(double seconds) {
  const double end = time + seconds;
  for (;;) {
    const auto due = std::ranges::min_element(timers_, {}, &Running::next);
    if (due == timers_.end() || due->next > end) break;
    time = due->next;
    due->next += due->interval;
    const std::function<void()> tick = due->tick;  // which may stop its own timer
    tick();
  }
  time = end;
}

std::string FakeDesktop::symbol() const {
  if (!image) return "none";
  const auto& shown = std::get<Symbol>(image->content);
  std::string text = shown.name;
  if (shown.isTemplate) text += " template";
  if (shown.tint == std::optional(systemGreen)) text += " green";
  if (shown.tint == std::optional(systemOrange)) text += " orange";
  if (shown.tint == std::optional(systemRed)) text += " red";
  return text;
}

std::string FakeDesktop::plainTitle() const {
  std::string text;
  for (const TextRun& run : title) text += run.text;
  return text;
}

std::vector<double> FakeDesktop::intervals() const {
  std::vector<double> all;
  all.reserve(timers_.size());
  for (const Running& running : timers_) all.push_back(running.interval);
  return all;
}

}  // namespace lumowatt
