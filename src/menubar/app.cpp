#include "menubar/app.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "base/fatal.h"
#include "format/details.h"
#include "format/figures.h"
#include "graphics/symbol.h"
#include "menubar/status_menu.h"
#include "render/block_chart.h"
#include "render/chart_picture.h"
#include "render/glyph.h"
#include "render/sparkline.h"
#include "render/tiles.h"
#include "telemetry/read.h"

namespace lumowatt {

namespace {

constexpr double refreshInterval = 5.0;
constexpr double animationInterval = 0.7;
constexpr double sampleInterval = 30.0;
constexpr double historyLength = 3600.0;

constexpr std::string_view modeKey = "mode";
constexpr std::string_view colorKey = "color";
constexpr std::string_view animateKey = "animate";

/// The report as one text.
std::string lines(const Reading& reading) {
  std::string text;
  for (const std::string& line : details(reading)) text += line + "\n";
  text.pop_back();
  return text;
}

std::string accessibilityLabel(const Reading& reading) {
  return "Battery " + std::to_string(reading.percent) + " percent, " + statusLine(reading) + ", " +
         watts(reading.batteryWatts, true);
}

/// The level that the animation shows of a battery at `percent`: from the lowest one above the
/// charge less 12 points up to full, and again.
std::string_view animatedSymbol(std::int64_t percent, std::int64_t frame) {
  constexpr std::int64_t below = 12;
  if (percent < std::numeric_limits<std::int64_t>::min() + below) {
    fatal("the percentage is too small for the animation");
  }
  std::array<std::int64_t, 4> levels{25, 50, 75, 100};
  const auto first = std::ranges::find_if(
      levels, [percent](std::int64_t level) { return level > percent - below; });
  const auto count = levels.end() - first;
  if (count == 0) return symbol::battery100;
  return levelSymbol(first[frame % count]);
}

}  // namespace

std::shared_ptr<App> App::make(Desktop& desktop, BatteryService& battery,
                               std::string_view version) {
  return std::shared_ptr<App>(new App(desktop, battery, version));
}

App::App(Desktop& desktop, BatteryService& battery, std::string_view version)
    : desktop_(desktop), battery_(battery), version_(version) {}

void App::applicationDidFinishLaunching() {
  desktop_.setAutosaveName("Lumowatt");
  desktop_.attachMenu();
  refresh();
  timer_ = repeat(refreshInterval, &App::refresh);
  // Where the changes are not told, the timer sees them.
  desktop_.watchPowerSources([app = weak_from_this()] {
    if (const auto self = app.lock()) self->refresh();
  });
}

std::unique_ptr<Timer> App::repeat(double interval, void (App::*action)()) {
  return desktop_.startTimer(interval, [app = weak_from_this(), action] {
    if (const auto self = app.lock()) (self.get()->*action)();
  });
}

void App::refresh() {
  StatusButton* const button = desktop_.button();
  const std::optional<Reading> reading = read(battery_);
  if (!reading) {
    if (button != nullptr) button->setTitle("No battery");
    return;
  }
  last_ = reading;
  remember(*reading);
  if (button == nullptr) return;
  button->setImage(symbolImage(*reading));
  button->setImageLeading();
  button->setAttributedTitle(titleText(*reading));
  button->setToolTip(lines(*reading));
  button->setAccessibilityLabel(accessibilityLabel(*reading));
  updateAnimation();
}

void App::remember(const Reading& reading) {
  if (!history_.empty() && desktop_.now() - history_.back().time < sampleInterval) return;
  history_.push_back({desktop_.now(), reading.percent});
  std::erase_if(history_, [this](const Sample& sample) {
    return desktop_.now() - sample.time > historyLength;
  });
}

// The animation

bool App::shouldAnimate() const {
  return animate() && !desktop_.reducesMotion() && last_ && last_->charging && last_->percent < 100;
}

void App::updateAnimation() {
  const bool should = shouldAnimate();
  if (should && !animationTimer_) {
    animationTimer_ = repeat(animationInterval, &App::advanceAnimation);
  } else if (!should && animationTimer_) {
    animationTimer_.reset();
    frame_ = 0;
  }
}

void App::advanceAnimation() {
  if (!last_) return;
  if (frame_ == std::numeric_limits<std::int64_t>::max()) fatal("the animation has no next frame");
  ++frame_;
  if (StatusButton* const button = desktop_.button()) button->setImage(symbolImage(*last_));
}

// What the item shows

std::optional<Image> App::symbolImage(const Reading& reading) const {
  const std::optional<Color> color = useColor() ? accent(reading) : std::nullopt;
  const std::string description = "Battery " + std::to_string(reading.percent) + " percent";
  if (shouldAnimate()) {
    return tinted(animatedSymbol(reading.percent, frame_), color.value_or(systemGreen),
                  description);
  }
  const bool bolt = reading.charging || (reading.external && reading.full);
  return tinted(bolt ? symbol::battery100Bolt : levelSymbol(reading.percent), color, description);
}

AttributedString App::titleText(const Reading& reading) const {
  return title(reading, titleExtras(mode()), useColor());
}

std::vector<Tile> App::titleTiles() const {
  return last_ ? tiles(*last_, titleExtras(mode()), useColor()) : std::vector<Tile>{};
}

// The preferences

Mode App::mode() const {
  if (!desktop_.hasPreference(modeKey)) return Mode::percentPower;
  return modeOf(desktop_.integerPreference(modeKey)).value_or(Mode::percentPower);
}

void App::setMode(Mode mode) {
  desktop_.setIntegerPreference(modeKey, static_cast<std::int64_t>(mode));
}

bool App::booleanPreference(std::string_view key) const {
  return !desktop_.hasPreference(key) || desktop_.booleanPreference(key);
}

bool App::useColor() const { return booleanPreference(colorKey); }
void App::setUseColor(bool value) { desktop_.setBooleanPreference(colorKey, value); }
bool App::animate() const { return booleanPreference(animateKey); }
void App::setAnimate(bool value) { desktop_.setBooleanPreference(animateKey, value); }

// The menu

void App::menuWillOpen() {
  refresh();
  updateMenu();
}

void App::updateMenu() {
  menu_ = last_
              ? statusMenu({.reading = *last_,
                            .history = history_,
                            .mode = mode(),
                            .useColor = useColor(),
                            .animate = animate(),
                            .opensAtLogin = desktop_.loginItemStatus() == LoginItemStatus::enabled,
                            .version = version_})
              : statusMenuWithoutBattery();
}

std::string App::chartText() const { return blockChart(history_); }

Drawing App::chartPicture(Appearance appearance) const {
  const Color color = chartColor(last_.value_or(Reading{}), useColor());
  return lumowatt::chartPicture(history_, color, appearance);
}

void App::perform(const MenuItem& item) {
  switch (item.action) {
    case Action::pick:
      return pick(item);
    case Action::toggleColor:
      return toggleColor();
    case Action::toggleAnimate:
      return toggleAnimate();
    case Action::copyDetails:
      return copyDetails();
    case Action::toggleLogin:
      return toggleLogin();
    case Action::openSettings:
      return openSettings();
    case Action::terminate:
    case Action::none:
      return;
  }
}

void App::pick(const MenuItem& sender) {
  const auto picked = modeOf(sender.tag);
  if (!picked) return;
  setMode(*picked);
  refresh();
}

void App::toggle(std::string_view key) {
  desktop_.setBooleanPreference(key, !booleanPreference(key));
  refresh();
}

void App::toggleColor() { toggle(colorKey); }
void App::toggleAnimate() { toggle(animateKey); }

void App::copyDetails() {
  if (last_) desktop_.copyText(lines(*last_));
}

void App::toggleLogin() {
  const bool enabled = desktop_.loginItemStatus() == LoginItemStatus::enabled;
  const bool done = enabled ? desktop_.unregisterLoginItem() : desktop_.registerLoginItem();
  if (!done) desktop_.beep();
}

void App::openSettings() { desktop_.openBatterySettings(); }

}  // namespace lumowatt
