#include "fakes/fake_desktop.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <variant>

namespace lumowatt {

/// Handle of an active timer. Removes the timer on destruction.
class FakeDesktop::TimerHandle : public Timer {
 public:
  TimerHandle(std::list<ActiveTimer>& timers, std::list<ActiveTimer>::iterator timer)
      : timers_(timers), timer_(timer) {}
  TimerHandle(const TimerHandle&) = delete;
  TimerHandle& operator=(const TimerHandle&) = delete;
  ~TimerHandle() override { timers_.erase(timer_); }

 private:
  std::list<ActiveTimer>& timers_;
  std::list<ActiveTimer>::iterator timer_;
};

Result<> FakeDesktop::run(std::shared_ptr<ApplicationDelegate> delegate) {
  delegate->applicationDidFinishLaunching();
  return {};
}

std::unique_ptr<Timer> FakeDesktop::startTimer(double interval, std::function<void()> tick) {
  recordCall("timer");
  scheduledTicks.push_back(tick);
  timers_.push_back({interval, time + interval, std::move(tick)});
  return std::make_unique<TimerHandle>(timers_, std::prev(timers_.end()));
}

void FakeDesktop::watchPowerSources(std::function<void()> onChanged) {
  recordCall("watch power sources");
  if (canWatchPowerSources) onPowerSourceChanged_ = std::move(onChanged);
}

void FakeDesktop::reportPowerSourceChange() const {
  if (onPowerSourceChanged_) onPowerSourceChanged_();
}

std::vector<std::optional<StoredPreference>> FakeDesktop::preferences(
    const std::vector<std::string_view>& keys) {
  ++preferenceReads;
  std::vector<std::optional<StoredPreference>> values;
  for (const std::string_view key : keys) {
    const auto entry = store.find(key);
    auto& value = values.emplace_back(StoredPreference{});
    if (entry == store.end()) {
      // The zeros remain in the storage of the empty optional. They differ from the defaults, so
      // tests detect code that reads an empty optional by mistake.
      value.reset();
      continue;
    }
    const std::string& text = entry->second;
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
  recordCall(isRegistered ? "register login item" : "unregister login item");
  if (isLoginItemReadOnly) return false;
  loginItem = isRegistered ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
  return true;
}

void FakeDesktop::show(ButtonContents contents) {
  recordCall("contents");
  buttonContents = std::move(contents);
}

void FakeDesktop::setImage(const std::optional<Image>& newImage) {
  recordCall("image");
  buttonContents.image = newImage;
}

void FakeDesktop::setTitle(std::string_view newTitle) {
  recordCall("title");
  buttonContents.title = {.text = {{std::string(newTitle), systemFont(0.0)}}, .tiles = {}};
}

void FakeDesktop::advanceTime(double seconds) {
  const double end = time + seconds;
  for (;;) {
    const auto due = std::ranges::min_element(timers_, {}, &ActiveTimer::nextTick);
    if (due == timers_.end() || due->nextTick > end) break;
    time = due->nextTick;
    due->nextTick += due->interval;
    const std::function<void()> tick = due->tick;  // a copy, because the call may destroy the timer
    tick();
  }
  time = end;
}

std::string FakeDesktop::symbol() const {
  if (!buttonContents.image) return "none";
  const auto& glyph = std::get<Symbol>(buttonContents.image->content);
  std::string text = glyph.name;
  if (glyph.isTemplate) text += " template";
  if (glyph.tint == std::optional(systemGreen)) text += " green";
  if (glyph.tint == std::optional(systemOrange)) text += " orange";
  if (glyph.tint == std::optional(systemRed)) text += " red";
  return text;
}

std::string FakeDesktop::plainTitle() const {
  std::string text;
  for (const TextRun& run : buttonContents.title.text) text += run.text;
  return text;
}

std::vector<double> FakeDesktop::timerIntervals() const {
  std::vector<double> all;
  all.reserve(timers_.size());
  for (const ActiveTimer& timer : timers_) all.push_back(timer.interval);
  return all;
}

}  // namespace lumowatt
