#include "menubar/app.h"

#include <utility>

#include "format/details.h"
#include "format/figures.h"
#include "graphics/symbol.h"
#include "menubar/status_menu.h"
#include "render/glyph.h"
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

/// Returns the details of the reading as one text, joined by line feeds.
std::string joinedDetails(const Reading& reading) {
  std::string text;
  for (const std::string& line : details(reading)) text += line + "\n";
  text.pop_back();
  return text;
}

std::string accessibilityLabel(const Reading& reading) {
  return "Battery " + std::to_string(reading.percent) + " percent, " + statusLine(reading) + ", " +
         watts(reading.batteryWatts, true);
}

Title title(const Reading& reading, const Preferences& preferences) {
  const TitleExtras extras = titleExtras(preferences.mode);
  return {.text = titleText(reading, extras, preferences.useColor),
          .tiles = tiles(reading, extras, preferences.useColor)};
}

}  // namespace

std::shared_ptr<App> App::make(Desktop& desktop, BatteryService& battery,
                               std::string_view version) {
  return std::shared_ptr<App>(new App(desktop, battery, version));
}

App::App(Desktop& desktop, BatteryService& battery, std::string_view version)
    : desktop_(desktop), battery_(battery), version_(version) {}

void App::applicationDidFinishLaunching() {
  desktop_.attachMenu("Lumowatt");
  refresh();
  refreshTimer_ = startTimer(refreshInterval, &App::refresh);
  desktop_.watchPowerSources([app = weak_from_this()] {
    if (const auto self = app.lock()) self->refresh();
  });
}

std::unique_ptr<Timer> App::startTimer(double interval, void (App::*action)()) {
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
  addSample(*reading);
  if (button == nullptr) return;
  const Preferences currentPreferences = preferences();
  button->show({.image = symbolImage(*reading, currentPreferences),
                .title = title(*reading, currentPreferences),
                .toolTip = joinedDetails(*reading),
                .accessibilityLabel = accessibilityLabel(*reading)});
  updateAnimation(currentPreferences);
}

void App::addSample(const Reading& reading) {
  if (!history_.empty() && desktop_.now() - history_.back().time < sampleInterval) return;
  history_.push_back({desktop_.now(), reading.percent});
  std::erase_if(history_, [this](const Sample& sample) {
    return desktop_.now() - sample.time > historyLength;
  });
}

// The animation

bool App::shouldAnimate(const Preferences& preferences) const {
  return preferences.animate && last_ && last_->charging && last_->percent < 100 &&
         !desktop_.reducesMotion();
}

void App::updateAnimation(const Preferences& preferences) {
  const bool isNeeded = shouldAnimate(preferences);
  if (isNeeded && !animationTimer_) {
    animationTimer_ = startTimer(animationInterval, &App::advanceAnimation);
  } else if (!isNeeded && animationTimer_) {
    animationTimer_.reset();
    frame_ = 0;
  }
}

void App::advanceAnimation() {
  frame_ = nextFrame(frame_);
  if (StatusButton* const button = desktop_.button()) {
    button->setImage(symbolImage(*last_, preferences()));
  }
}

std::optional<Image> App::symbolImage(const Reading& reading,
                                      const Preferences& preferences) const {
  const std::optional<Color> color = preferences.useColor ? accent(reading) : std::nullopt;
  const std::string description = "Battery " + std::to_string(reading.percent) + " percent";
  if (shouldAnimate(preferences)) {
    return tinted(animatedSymbol(reading.percent, frame_), color.value_or(systemGreen),
                  description);
  }
  const bool hasBolt = reading.charging || (reading.external && reading.full);
  return tinted(hasBolt ? symbol::battery100Bolt : levelSymbol(reading.percent), color,
                description);
}

// The preferences

Preferences App::preferences() const {
  const auto stored = desktop_.preferences({modeKey, colorKey, animateKey});
  Preferences result;
  if (const auto& mode = stored[0]) result.mode = modeOf(mode->integer).value_or(result.mode);
  if (const auto& color = stored[1]) result.useColor = color->boolean;
  if (const auto& animate = stored[2]) result.animate = animate->boolean;
  return result;
}

void App::setMode(Mode mode) { desktop_.setPreference(modeKey, static_cast<std::int64_t>(mode)); }
void App::setUseColor(bool value) { desktop_.setPreference(colorKey, value); }
void App::setAnimate(bool value) { desktop_.setPreference(animateKey, value); }

// The menu

Menu App::menuWillOpen() {
  refresh();
  return menu();
}

Menu App::menu() {
  if (!last_) return statusMenuWithoutBattery();
  return statusMenu({.reading = *last_,
                     .history = history_,
                     .preferences = preferences(),
                     .opensAtLogin = desktop_.loginItemStatus() == LoginItemStatus::enabled,
                     .version = version_});
}

void App::perform(const Choice& choice) {
  switch (choice.action) {
    case Action::pick:
      return pick(choice.tag);
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
    case Action::showChart:
    case Action::terminate:
      return;
  }
}

void App::pick(std::int64_t tag) {
  const auto mode = modeOf(tag);
  if (!mode) return;
  setMode(*mode);
  refresh();
}

void App::toggleColor() {
  setUseColor(!preferences().useColor);
  refresh();
}

void App::toggleAnimate() {
  setAnimate(!preferences().animate);
  refresh();
}

void App::copyDetails() {
  if (last_) desktop_.copyText(joinedDetails(*last_));
}

void App::toggleLogin() {
  const bool isEnabled = desktop_.loginItemStatus() == LoginItemStatus::enabled;
  if (!desktop_.setLoginItem(!isEnabled)) desktop_.beep();
}

void App::openSettings() { desktop_.openBatterySettings(); }

}  // namespace lumowatt
