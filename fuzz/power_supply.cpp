/// Fuzz target: a folder of power supplies and a folder of sensors, read as a laptop's battery. An
/// input describes a machine (see machine.h).

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <map>
#include <set>

#include "machine.h"
#include "platform/linux/power_supply/printable.h"
#include "platform/linux/power_supply/service.h"
#include "reading_rules.h"
#include "support.h"
#include "telemetry/read.h"

namespace lumowatt::fuzz {

namespace {

/// Attributes of the supplies, according to the kernel's documentation. Parsed without the code
/// under test.
class Supplies {
 public:
  explicit Supplies(const std::vector<Entry>& entries) {
    for (const auto& [path, value] : entries) {
      const auto [device, attribute] = split(split(path, '/').after, '/');
      if (path.starts_with("hwmon/") || device.starts_with('.')) continue;
      auto& attributes = devices_[std::string(device)];
      if (value && value->size() < 1024) attributes[std::string(attribute)] = trimmed(*value);
    }
  }

  /// Returns the names of the laptop's packs. Omits the packs of peripherals and absent packs.
  std::vector<std::string> packs() const {
    std::vector<std::string> names;
    for (const auto& [name, attributes] : devices_) {
      const bool isPeripheral = ::strcasecmp(attribute(name, "scope").c_str(), "device") == 0;
      const bool isPresent = !isZero(attribute(name, "present"));
      if (attribute(name, "type") == "Battery" && !isPeripheral && isPresent) {
        names.push_back(name);
      }
    }
    return names;
  }

  /// Returns an attribute; empty if the supply does not have the attribute.
  std::string attribute(const std::string& name, const std::string& key) const {
    const auto& attributes = devices_.at(name);
    const auto found = attributes.find(key);
    return found == attributes.end() ? "" : found->second;
  }

 private:
  static std::string trimmed(std::string text) {
    text.erase(0, std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    text.erase(text.find_last_not_of(" \t\n\v\f\r") + 1);
    return text;
  }

  /// Returns whether the text is a zero such as "0" or "-00".
  static bool isZero(std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of('0') == std::string_view::npos;
  }

  std::map<std::string, std::map<std::string, std::string>> devices_;
};

/// Inclusive range of a number.
struct Range {
  std::int64_t min;
  std::int64_t max;
};
constexpr Range boolean{0, 1};
constexpr Range minutes{1, 65535};
constexpr Range nonNegative{0, INT64_MAX};
constexpr Range positive{1, INT64_MAX};
constexpr Range any{INT64_MIN, INT64_MAX};

/// Valid ranges of the numbers in a dictionary, by key.
using Ranges = std::map<std::string_view, Range>;
const Ranges batteryNumbers{{"MaxCapacity", {100, 100}},
                            {"CurrentCapacity", {0, 100}},
                            {"AppleRawCurrentCapacity", nonNegative},
                            {"AppleRawMaxCapacity", nonNegative},
                            {"DesignCapacity", nonNegative},
                            {"CycleCount", positive},
                            {"Voltage", nonNegative},
                            {"Amperage", any},
                            {"ExternalConnected", boolean},
                            {"IsCharging", boolean},
                            {"FullyCharged", boolean},
                            {"Temperature", any},
                            {"AvgTimeToEmpty", minutes},
                            {"AvgTimeToFull", minutes},
                            {"TimeRemaining", minutes}};
const Ranges adapterNumbers{{"Watts", positive}};
const Ranges telemetryNumbers{{"BatteryPower", any},
                              {"SystemLoad", any},
                              {"SystemPowerIn", any},
                              {"SystemVoltageIn", any},
                              {"SystemCurrentIn", any}};

void requirePrintable(const std::string& text) {
  require(!text.empty() && text == printable(text), "a name that is not printable", text);
  require(!text.starts_with(' ') && !text.ends_with(' '), "a name with a leading or trailing space",
          text);
  std::mbstate_t state{};
  for (std::size_t at = 0; at < text.size();) {
    wchar_t letter = 0;
    const std::size_t length = std::mbrtowc(&letter, &text[at], text.size() - at, &state);
    require(length - 1 < 4, "a name that is not UTF-8", text);
    require(std::iswcntrl(static_cast<wint_t>(letter)) == 0, "a control character in a name", text);
    at += length;
  }
}

/// Requires that the dictionary contains only known keys, each at most once and with a valid value.
void requireKnown(const PropertyDictionary& properties, const Ranges& numbers) {
  std::set<std::string> keys;
  for (const auto& [key, value] : properties) {
    require(keys.insert(key).second, "a duplicate key", key);
    if (const auto range = numbers.find(key); range != numbers.end()) {
      const auto number = signedNumber(&value);
      require(number.has_value(), "a value that is not a number", key);
      require(*number >= range->second.min && *number <= range->second.max, "a number out of range",
              key);
    } else if (&numbers == &adapterNumbers && key == "Name") {
      require(value.asText() != nullptr, "a value that is not text", key);
      requirePrintable(*value.asText());
    } else if (&numbers == &batteryNumbers && key == "AdapterDetails") {
      require(value.asDictionary() != nullptr && !value.asDictionary()->empty(),
              "an empty dictionary or another type", key);
      requireKnown(*value.asDictionary(), adapterNumbers);
    } else if (&numbers == &batteryNumbers && key == "PowerTelemetryData") {
      require(value.asDictionary() != nullptr, "a value that is not a dictionary", key);
      requireKnown(*value.asDictionary(), telemetryNumbers);
    } else {
      require(false, "an unknown key", key);
    }
  }
}

std::int64_t number(const PropertyDictionary& properties, std::string_view key) {
  return signedNumber(properties.find(key)).value_or(0);
}

/// Requires that the power values of a dictionary are consistent with each other and with the
/// statuses of the packs.
void requireAgreement(const PropertyDictionary& properties,
                      const std::vector<std::string>& statuses) {
  const auto* const telemetryValue = properties.find("PowerTelemetryData");
  require(telemetryValue != nullptr, "a dictionary without telemetry");
  const PropertyDictionary& telemetry = *telemetryValue->asDictionary();
  const bool charging = number(properties, "IsCharging") != 0;
  const bool external = number(properties, "ExternalConnected") != 0;
  const std::int64_t amps = number(properties, "Amperage");
  const std::int64_t watts = number(telemetry, "BatteryPower");
  require(external || !charging, "charging without external power");
  require(external || properties.find("AdapterDetails") == nullptr,
          "adapter details without external power");
  require(!(amps > 0 && watts < 0) && !(amps < 0 && watts > 0),
          "current and power of opposite signs");
  require(!charging || (amps >= 0 && watts >= 0), "charging with a negative current or power");
  const bool discharging = statuses.size() == 1 && statuses.front() == "Discharging";
  require(!discharging || (amps <= 0 && watts <= 0 && !charging),
          "discharging with a positive current or power");
  if (!external && telemetry.find("SystemLoad") != nullptr) {
    require(number(telemetry, "SystemLoad") == -watts, "a load other than the battery power");
    require(number(telemetry, "SystemPowerIn") == 0, "input power without external power");
  }
  const auto toEmpty = number(properties, "AvgTimeToEmpty");
  const auto toFull = number(properties, "AvgTimeToFull");
  require(toEmpty == minutes.max || toFull == minutes.max,
          "both a time to empty and a time to full");
  require(number(properties, "TimeRemaining") == (charging ? toFull : toEmpty),
          "a wrong remaining time");
}

/// Returns the contents of a dictionary as text for comparison.
std::string serialize(const PropertyDictionary& properties) {
  std::string text;
  for (const auto& [key, value] : properties) {
    text += key + "=";
    if (const auto figure = signedNumber(&value)) text += std::to_string(*figure);
    if (value.asText() != nullptr) text += "\"" + *value.asText();
    if (value.asDictionary() != nullptr) text += "{" + serialize(*value.asDictionary()) + "}";
    text += "\n";
  }
  return text;
}

/// Battery service that returns a given dictionary.
class FixedProperties : public BatteryService {
 public:
  explicit FixedProperties(const PropertyDictionary& given) : given_(given) {}
  std::optional<PropertyDictionary> properties() override { return given_; }

 private:
  const PropertyDictionary& given_;
};

int countOpenFiles() {
  constexpr int max = 128;  // this process opens only a few files
  int count = 0;
  for (int file = 0; file < max; ++file) count += ::fcntl(file, F_GETFD) >= 0 ? 1 : 0;
  return count;
}

}  // namespace

void tryInput(std::string_view input) {
  static const ScratchFolder folder;
  static const bool prepared = ::mkdir((folder.path() + "/supplies").c_str(), 0700) == 0 &&
                               ::mkdir((folder.path() + "/hwmon").c_str(), 0700) == 0 &&
                               std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
  require(prepared, "cannot create the folders or set the locale", folder.path());

  std::vector<Entry> files = parseEntries(input);
  power_supply::Service service(folder.path() + "/supplies", folder.path() + "/hwmon");
  std::optional<PropertyDictionary> properties;
  {
    const Machine machine(folder.path(), files);
    const int before = countOpenFiles();
    properties = service.properties();
    require(countOpenFiles() == before, "a file that was not closed");
    const auto repeated = service.properties();
    require(properties.has_value() == repeated.has_value(), "a battery in only one of two reads");
    require(!repeated || serialize(*properties) == serialize(*repeated),
            "two different reads of one machine");
  }
  // Reverse the order of creation, but create folders before their contents.
  std::stable_sort(files.begin(), files.end(), [](const Entry& a, const Entry& b) {
    const auto depth = [](const Entry& e) { return std::count(e.path.begin(), e.path.end(), '/'); };
    return depth(a) != depth(b) ? depth(a) < depth(b) : a.path > b.path;
  });
  {
    const Machine machine(folder.path(), files);
    const auto reordered = service.properties();
    require(properties.has_value() == reordered.has_value(),
            "a battery in only one order of files");
    require(!reordered || serialize(*properties) == serialize(*reordered),
            "different properties in another order of files");
  }

  const Supplies supplies(files);
  const auto packs = supplies.packs();
  require(properties.has_value() == !packs.empty(),
          "a battery without a pack, or a pack without a battery");
  if (!properties) return;
  std::vector<std::string> statuses;
  statuses.reserve(packs.size());
  for (const std::string& pack : packs) statuses.push_back(supplies.attribute(pack, "status"));
  requireKnown(*properties, batteryNumbers);
  requireAgreement(*properties, statuses);

  FixedProperties battery(*properties);
  const auto reading = read(battery);
  require(reading.has_value(), "properties without a reading");
  requireText(*reading);
}

}  // namespace lumowatt::fuzz
