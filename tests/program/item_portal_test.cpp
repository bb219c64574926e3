#include <array>
#include <set>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "program/message_json.h"
#include "support/picture.h"

namespace lumowatt {

namespace {

constexpr auto portalName = "org.freedesktop.portal.Desktop";
constexpr auto portalObject = "/org/freedesktop/portal/desktop";
constexpr auto settingsInterface = "org.freedesktop.portal.Settings";

/// Red, green and blue, from 0 to 1.
using Accent = std::array<double, 3>;

/// Fake settings portal. Omits settings without a value.
class Portal : public BusPeer {
 public:
  explicit Portal(const SessionBus& session, const char* name = portalName) : BusPeer(session) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("ReadAll", "as", "a{sa{sv}}", readAll, 0),
        SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
        SD_BUS_VTABLE_END,
    };
    sd_bus_add_object_vtable(bus(), nullptr, portalObject, settingsInterface, table, this);
    own(name);
  }

  std::optional<unsigned> reducedMotion;
  std::optional<unsigned> colorScheme;
  std::optional<Accent> accent;
  std::optional<bool> animations;
  std::optional<std::string> plasmaFactor;
  bool wasRead = false;  ///< whether ReadAll was called

  /// Emits SettingChanged with these values.
  template <typename... Values>
  void emit(const char* types, Values... values) const {
    sd_bus_emit_signal(bus(), portalObject, settingsInterface, "SettingChanged", types, values...);
    sd_bus_flush(bus());
  }

  template <typename T>
  void change(const char* group, const char* key, const char* type, T value) const {
    emit("ssv", group, key, type, value);
  }

  void changeAccent(const Accent& color) const {
    emit("ssv", "org.freedesktop.appearance", "accent-color", "(ddd)", color[0], color[1],
         color[2]);
  }

 private:
  /// Adds a group of settings to the reply if the caller requested the group. `settings` appends
  /// the settings.
  template <typename Settings>
  static void add(sd_bus_message* reply, const std::set<std::string>& requested, const char* group,
                  const Settings& settings) {
    if (!requested.contains(group)) return;
    sd_bus_message_open_container(reply, 'e', "sa{sv}");
    sd_bus_message_append(reply, "s", group);
    sd_bus_message_open_container(reply, 'a', "{sv}");
    settings();
    sd_bus_message_close_container(reply);
    sd_bus_message_close_container(reply);
  }

  static int readAll(sd_bus_message* call, void* object, sd_bus_error*) {
    auto& self = *static_cast<Portal*>(object);
    self.wasRead = true;
    const Json groups = readValue(call);
    const std::set<std::string> requested(groups.begin(), groups.end());
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    sd_bus_message_open_container(reply, 'a', "{sa{sv}}");
    add(reply, requested, "org.freedesktop.appearance", [&] {
      sd_bus_message_append(reply, "{sv}", "contrast", "u", 0U);
      if (self.accent) {
        const auto [red, green, blue] = *self.accent;
        sd_bus_message_append(reply, "{sv}", "accent-color", "(ddd)", red, green, blue);
      }
      if (self.colorScheme) {
        sd_bus_message_append(reply, "{sv}", "color-scheme", "u", *self.colorScheme);
      }
      if (self.reducedMotion) {
        sd_bus_message_append(reply, "{sv}", "reduced-motion", "u", *self.reducedMotion);
      }
    });
    add(reply, requested, "org.gnome.desktop.interface", [&] {
      sd_bus_message_append(reply, "{sv}", "font-name", "s", "Cantarell 11");
      if (self.animations) {
        sd_bus_message_append(reply, "{sv}", "enable-animations", "b",
                              static_cast<int>(*self.animations));
      }
    });
    add(reply, requested, "org.kde.kdeglobals.KDE", [&] {
      sd_bus_message_append(reply, "{sv}", "LookAndFeelPackage", "s", "org.kde.breeze.desktop");
      if (self.plasmaFactor) {
        sd_bus_message_append(reply, "{sv}", "AnimationDurationFactor", "s",
                              self.plasmaFactor->c_str());
      }
    });
    sd_bus_message_close_container(reply);
    const int status = sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
    return status;
  }
};

/// Fixture for the item on a charging machine, in a session with a settings portal.
class DesktopSettings : public ItemTest {
 protected:
  explicit DesktopSettings(const char* panelProcess = "ayatana-indicat")
      : ItemTest("", panelProcess) {}

  void SetUp() override {
    machine.set("AC/online", "1");
    machine.set("BAT0/status", "Charging");
    machine.set("BAT0/capacity", "30");
    install("xdg-open",
            "echo \"$@\" > $traces/arguments.new\n"
            "mv $traces/arguments.new $traces/arguments\n");
  }

  void startWithPortal() {
    start();
    waitForReply();
  }
  void startWithPortalAndStoppedClock() {
    item = startProcess(LUMOWATT_STOPPED_CLOCK);
    panel->waitForItem();
    waitForReply();
  }
  void startWithPortalAndChart() {
    startWithChart();
    waitForReply();
  }

  /// Returns whether the glyph is animated. An animated glyph shows other levels than the
  /// battery's.
  bool isAnimated() const { return icon() != "lumowatt-battery-100percent-bolt-green"; }
  std::string icon() const { return panel->property("IconName"); }

  /// Chooses the chart and returns its picture.
  Picture chart() const {
    const std::string id = std::to_string(item->id());
    panel->waitUntil(  // until the process that drew the previous chart has exited
        [&id] { return fileContents("/proc/" + id + "/task/" + id + "/children").empty(); });
    std::filesystem::remove(traces() / "arguments");
    chooseChart();
    waitForTrace("arguments");
    return Picture(fileContents(user.path() / "runtime/lumowatt-chart.png"));
  }

  /// Returns the color of the chart's background.
  Pixel background() const { return chart().at(2, 2); }

  /// Returns the color of the dot at the end of the chart's line: at 30 percent, on an axis from 24
  /// to 34 percent.
  Pixel dot() const { return chart().at(2 * 660, 2 * 200); }

  std::unique_ptr<Portal> portal = std::make_unique<Portal>(session);

 private:
  void waitForReply() const {
    portal->waitUntil([this] { return portal->wasRead; });
    panel->open();  // refreshes the item, after the reply has arrived
  }
};

/// Fixture like `DesktopSettings`, with a panel that shows only icons.
class IconPanelSettings : public DesktopSettings {
 protected:
  IconPanelSettings() : DesktopSettings("lxqt-panel") {}

  /// Waits until the title's icon contains this color. The icon may be replaced meanwhile.
  void waitForInk(const std::string& color) const {
    panel->waitUntil([&] {
      const std::string name = panel->property("IconName", panel->registered.at(1).c_str());
      const auto file = user.path() / "runtime/lumowatt" / (name + ".svg");
      return std::filesystem::exists(file) && fileContents(file).find(color) != std::string::npos;
    });
  }
};

/// Fixture like `DesktopSettings`, with colors switched off, so that the chart has the accent
/// color.
class UserAccent : public DesktopSettings {
 protected:
  void SetUp() override {
    DesktopSettings::SetUp();
    user.write("config/lumowatt/preferences", "color=false\n");
  }
};

constexpr Pixel light{250, 250, 250, 255};  // 98% of white
constexpr Pixel dark{36, 36, 36, 255};      // 14% of white
constexpr Pixel blue{0, 122, 255, 255};     // the default accent color

}  // namespace

TEST_F(DesktopSettings, ColorSchemeSelectsTheInkOfTheGlyph) {
  machine.set("AC/online", "0");
  machine.set("BAT0/status", "Discharging");
  portal->colorScheme = 1;
  startWithPortal();
  const std::string glyph = "lumowatt-battery-25percent-";
  EXPECT_EQ(icon(), glyph + "light-symbolic") << "light ink on a dark panel";
  for (const auto& [scheme, ink] : {std::pair{2U, "dark-symbolic"}, std::pair{0U, "symbolic"}}) {
    panel->clearSignals();
    portal->change("org.freedesktop.appearance", "color-scheme", "u", scheme);
    panel->waitForSignal("NewIcon");
    EXPECT_EQ(icon(), glyph + ink);
  }
}

TEST_F(IconPanelSettings, ColorSchemeSetsTheTitleInkBeforeTheNextReading) {
  portal->colorScheme = 1;
  startWithPortalAndStoppedClock();
  icon();  // the tile is registered once the panel has read the glyph
  panel->waitForItems(2);
  waitForInk("#e8e8e8");
  for (const auto& [scheme, ink] : {std::pair{2U, "#303030"}, std::pair{0U, "#909090"}}) {
    portal->change("org.freedesktop.appearance", "color-scheme", "u", scheme);
    waitForInk(ink);
  }
}

TEST_F(DesktopSettings, DefaultToAnAnimatedGlyphAndALightChart) {
  startWithPortalAndChart();
  EXPECT_TRUE(isAnimated());
  EXPECT_EQ(background(), light);
}

TEST_F(DesktopSettings, ReducedMotionDisablesTheAnimation) {
  portal->reducedMotion = 1;
  startWithPortal();
  EXPECT_FALSE(isAnimated());
}

TEST_F(DesktopSettings, GnomesSwitchDisablesTheAnimationIfMotionIsNotReduced) {
  portal->reducedMotion = 0;
  portal->animations = false;
  startWithPortal();
  EXPECT_FALSE(isAnimated());
}

TEST_F(DesktopSettings, ReducedMotionOverridesGnomesSwitch) {
  portal->reducedMotion = 1;
  portal->animations = true;
  startWithPortal();
  EXPECT_FALSE(isAnimated());
}

TEST_F(DesktopSettings, PlasmasFactorOfZeroDisablesTheAnimation) {
  portal->reducedMotion = 0;
  portal->plasmaFactor = "0";
  startWithPortal();
  EXPECT_FALSE(isAnimated());
  portal->change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "s", "0.5");
  panel->waitUntil([this] { return panel->open(), isAnimated(); });
  portal->change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "d", 0.0);
  panel->waitUntil([this] { return panel->open(), !isAnimated(); });
  portal->change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "d", 1.0);
  panel->waitUntil([this] { return panel->open(), isAnimated(); });
}

TEST_F(DesktopSettings, PlasmasFileIsReadIfThePortalLacksTheFactor) {
  user.write("config/kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
  startWithPortal();
  EXPECT_FALSE(isAnimated());
  portal->change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "s", "1");
  panel->waitUntil([this] { return panel->open(), isAnimated(); });
}

TEST_F(DesktopSettings, TakeEffectWhenTheyChange) {
  startWithPortalAndChart();
  portal->change("org.freedesktop.appearance", "reduced-motion", "u", 1U);
  panel->waitUntil([this] { return panel->open(), !isAnimated(); });
  portal->change("org.freedesktop.appearance", "reduced-motion", "u", 0U);
  panel->waitUntil([this] { return panel->open(), isAnimated(); });
  portal->change("org.freedesktop.appearance", "color-scheme", "u", 1U);
  portal->change("org.gnome.desktop.interface", "enable-animations", "b", 0);
  panel->waitUntil([this] { return panel->open(), !isAnimated(); });
  EXPECT_EQ(background(), dark);
}

TEST_F(DesktopSettings, AreReadFromAPortalThatAppearsLater) {
  portal.reset();
  start();
  portal = std::make_unique<Portal>(session);
  portal->reducedMotion = 1;
  portal->waitUntil([this] { return portal->wasRead; });
  panel->waitUntil([this] { return panel->open(), !isAnimated(); });
}

TEST_F(DesktopSettings, AreIgnoredFromOtherGroupsAndSenders) {
  startWithPortal();
  portal->change("org.example.appearance", "reduced-motion", "u", 1U);
  const Portal other(session, "org.example.Portal");
  other.change("org.freedesktop.appearance", "reduced-motion", "u", 1U);
  panel->open();
  EXPECT_TRUE(isAnimated());
}

TEST_F(DesktopSettings, AreIgnoredWithoutAVariant) {
  startWithPortal();
  portal->emit("ssu", "org.freedesktop.appearance", "reduced-motion", 1U);
  portal->emit("ss", "org.freedesktop.appearance", "reduced-motion");
  panel->open();
  EXPECT_TRUE(isAnimated());
  portal->change("org.freedesktop.appearance", "reduced-motion", "u", 1U);
  panel->waitUntil([this] { return !isAnimated(); });
}

TEST_F(DesktopSettings, AreIgnoredIfTheirTypeIsWrong) {
  startWithPortalAndChart();
  portal->change("org.freedesktop.appearance", "reduced-motion", "s", "1");
  portal->change("org.gnome.desktop.interface", "enable-animations", "u", 0U);
  portal->change("org.freedesktop.appearance", "color-scheme", "b", 1);
  portal->change("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "i", 0);
  panel->open();
  EXPECT_TRUE(isAnimated());
  EXPECT_EQ(background(), light);
}

TEST_F(DesktopSettings, DarkSchemeDarkensTheChart) {
  portal->colorScheme = 1;
  startWithPortalAndChart();
  EXPECT_EQ(background(), dark);
}

TEST_F(DesktopSettings, LightSchemeKeepsTheChartLight) {
  portal->colorScheme = 2;
  startWithPortalAndChart();
  EXPECT_EQ(background(), light);
}

TEST_F(UserAccent, ColorsTheChartAndFollowsChanges) {
  portal->accent = {0.2, 0.4, 0.6};
  startWithPortalAndChart();
  EXPECT_EQ(dot(), (Pixel{51, 102, 153, 255}));
  portal->changeAccent({1.0, 0.0, 0.8});
  EXPECT_EQ(dot(), (Pixel{255, 0, 204, 255}));
}

TEST_F(UserAccent, DefaultsToBlue) {
  startWithPortalAndChart();
  EXPECT_EQ(dot(), blue);
}

TEST_F(UserAccent, IsIgnoredIfOutOfRange) {
  for (const Accent& none : {Accent{-1.0, -1.0, -1.0}, Accent{0.2, 1.1, 0.3}}) {
    portal->accent = {0.2, 0.4, 0.6};
    startWithPortalAndChart();
    EXPECT_NE(dot(), blue);
    portal->changeAccent(none);
    EXPECT_EQ(dot(), blue);
    stop();
    portal->wasRead = false;
  }
}

TEST_F(DesktopSettings, AccentIsOverriddenByTheColorOfTheReading) {
  portal->accent = {0.2, 0.4, 0.6};
  startWithPortalAndChart();
  EXPECT_EQ(dot(), (Pixel{40, 205, 65, 255}));
}

}  // namespace lumowatt
