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

Result<> FakeDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  delegate->applicationDidFinishLaunching();
  return {};
}

std::unique_ptr<Timer> FakeDesktop::startTimer(double interval, std::function<void()> tick) {
  note("timer");
  allTicks.push_back(tick);
  timers_.push_back({interval, time + interval, std::move(tick)});
  return std::make_unique<RunningTimer>(timers_, std::prev(timers_.end()));
}

void FakeDesktop::watchPowerSources(std::function<void()> changed) {
  note("watch power sources");
  if (watchesPower) powerChanged_ = std::move(changed);
}

void FakeDesktop::changePower() const {
  if (powerChanged_) powerChanged_();
}

std::vector<std::optional<StoredPreference>> FakeDesktop::preferences(
    const std::vector<std::string_view>& keys) {
  ++preferenceReadings;
  std::vector<std::optional<StoredPreference>> values;
  for (const std::string_view key : keys) {
    const auto found = store.find(key);
    auto& value = values.emplace_back(StoredPreference{});
    if (found == store.end()) {
      value.reset();  // whoever reads it all the same finds zeros, which are not the defaults
      continue;
    }
    const std::string& text = found->second;
    value = {.integer = 0, .boolean = text == "true"};
    std::from_chars(text.data(), text.data() + text.size(), value->integer);
  }
  return values;
}

void FakeDesktop::setPreference(std::string_view key, PreferenceValue value) {
  const auto* const isOn = std::get_if<bool>(&value);
  store[std::string(key)] = isOn == nullptr ? std::to_string(std::get<std::int64_t>(value))
                            : *isOn         ? "true"
                                            : "false";
}

bool FakeDesktop::setLoginItem(bool isRegistered) {
  note(isRegistered ? "register login item" : "unregister login item");
  if (refusesLogin) return false;
  loginItem = isRegistered ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
  return true;
}

void FakeDesktop::show(ButtonContents contents) {
  note("contents");
  shown = std::move(contents);
}

void FakeDesktop::setImage(const std::optional<Image>& newImage) {
  note("image");
  shown.image = newImage;
}

void FakeDesktop::setTitle(std::string_view newTitle) {
  note("title");
  shown.title = {.text = {{std::string(newTitle), systemFont(0.0)}}, .tiles = {}};
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
  if (!shown.image) return "none";
  const auto& glyph = std::get<Symbol>(shown.image->content);
  std::string text = glyph.name;
  if (glyph.isTemplate) text += " template";
  if (glyph.tint == std::optional(systemGreen)) text += " green";
  if (glyph.tint == std::optional(systemOrange)) text += " orange";
  if (glyph.tint == std::optional(systemRed)) text += " red";
  return text;
}

std::string FakeDesktop::plainTitle() const {
  std::string text;
  for (const TextRun& run : shown.title.text) text += run.text;
  return text;
}

std::vector<double> FakeDesktop::intervals() const {
  std::vector<double> all;
  all.reserve(timers_.size());
  for (const Running& running : timers_) all.push_back(running.interval);
  return all;
}

}  // namespace lumowatt
