/// A folder of power supplies and one of sensors, read as the battery of a laptop. An input is a
/// machine (machine.h).

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

/// The attributes of the supplies, as the kernel's documentation has them, read anew.
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

  /// The names of the laptop's own packs.
  std::vector<std::string> packs() const {
    std::vector<std::string> names;
    for (const auto& [name, attributes] : devices_) {
      const bool isPeripheral = ::strcasecmp(of(name, "scope").c_str(), "device") == 0;
      if (of(name, "type") == "Battery" && !isPeripheral && !isZero(of(name, "present"))) {
        names.push_back(name);
      }
    }
    return names;
  }

  /// An attribute; empty without one.
  std::string of(const std::string& name, const std::string& attribute) const {
    const auto& attributes = devices_.at(name);
    const auto found = attributes.find(attribute);
    return found == attributes.end() ? "" : found->second;
  }

 private:
  static std::string trimmed(std::string text) {
    text.erase(0, std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    text.erase(text.find_last_not_of(" \t\n\v\f\r") + 1);
    return text;
  }

  /// "0", "-00" and the like.
  static bool isZero(std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of('0') == std::string_view::npos;
  }

  std::map<std::string, std::map<std::string, std::string>> devices_;
};

/// The numbers that a dictionary may have, with the range of each.
struct Range {
  std::int64_t least;
  std::int64_t most;
};
constexpr Range truth{0, 1};
constexpr Range minutes{1, 65535};
constexpr Range natural{0, INT64_MAX};
constexpr Range positive{1, INT64_MAX};
constexpr Range any{INT64_MIN, INT64_MAX};

using Ranges = std::map<std::string_view, Range>;
const Ranges batteryNumbers{{"MaxCapacity", {100, 100}},
                            {"CurrentCapacity", {0, 100}},
                            {"AppleRawCurrentCapacity", natural},
                            {"AppleRawMaxCapacity", natural},
                            {"DesignCapacity", natural},
                            {"CycleCount", positive},
                            {"Voltage", natural},
                            {"Amperage", any},
                            {"ExternalConnected", truth},
                            {"IsCharging", truth},
                            {"FullyCharged", truth},
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
  require(!text.starts_with(' ') && !text.ends_with(' '), "a blank at the end of a name", text);
  std::mbstate_t state{};
  for (std::size_t at = 0; at < text.size();) {
    wchar_t letter = 0;
    const std::size_t length = std::mbrtowc(&letter, &text[at], text.size() - at, &state);
    require(length - 1 < 4, "a name that is no UTF-8", text);
    require(std::iswcntrl(static_cast<wint_t>(letter)) == 0, "a control character", text);
    at += length;
  }
}

/// Requires that the dictionary has these keys at most, each once, and each with what belongs
/// there.
void requireKnown(const PropertyDictionary& properties, const Ranges& numbers) {
  std::set<std::string> keys;
  for (const auto& [key, value] : properties) {
    require(keys.insert(key).second, "a key is there twice", key);
    if (const auto range = numbers.find(key); range != numbers.end()) {
      const auto number = signedNumber(&value);
      require(number.has_value(), "no number", key);
      require(*number >= range->second.least && *number <= range->second.most, "out of range", key);
    } else if (&numbers == &adapterNumbers && key == "Name") {
      require(value.asText() != nullptr, "no text", key);
      requirePrintable(*value.asText());
    } else if (&numbers == &batteryNumbers && key == "AdapterDetails") {
      require(value.asDictionary() != nullptr && !value.asDictionary()->empty(), "empty", key);
      requireKnown(*value.asDictionary(), adapterNumbers);
    } else if (&numbers == &batteryNumbers && key == "PowerTelemetryData") {
      require(value.asDictionary() != nullptr, "no dictionary", key);
      requireKnown(*value.asDictionary(), telemetryNumbers);
    } else {
      require(false, "a key that is not read", key);
    }
  }
}

std::int64_t number(const PropertyDictionary& properties, std::string_view key) {
  return signedNumber(properties.find(key)).value_or(0);
}

/// Requires that what the dictionary says of the power fits together, and fits the packs' statuses.
void requireAgreement(const PropertyDictionary& properties,
                      const std::vector<std::string>& statuses) {
  const auto* const telemetryValue = properties.find("PowerTelemetryData");
  require(telemetryValue != nullptr, "a dictionary without telemetry");
  const PropertyDictionary& telemetry = *telemetryValue->asDictionary();
  const bool charging = number(properties, "IsCharging") != 0;
  const bool external = number(properties, "ExternalConnected") != 0;
  const std::int64_t amps = number(properties, "Amperage");
  const std::int64_t watts = number(telemetry, "BatteryPower");
  require(external || !charging, "charging from nothing");
  require(external || properties.find("AdapterDetails") == nullptr, "an adapter that is away");
  require(!(amps > 0 && watts < 0) && !(amps < 0 && watts > 0), "current against power");
  require(!charging || (amps >= 0 && watts >= 0), "charging while current flows out");
  const bool discharging = statuses.size() == 1 && statuses.front() == "Discharging";
  require(!discharging || (amps <= 0 && watts <= 0 && !charging), "discharging into the battery");
  if (!external && telemetry.find("SystemLoad") != nullptr) {
    require(number(telemetry, "SystemLoad") == -watts, "on battery, the load is what it gives");
    require(number(telemetry, "SystemPowerIn") == 0, "on battery, nothing comes in");
  }
  const auto toEmpty = number(properties, "AvgTimeToEmpty");
  const auto toFull = number(properties, "AvgTimeToFull");
  require(toEmpty == minutes.most || toFull == minutes.most, "to empty and to full at once");
  require(number(properties, "TimeRemaining") == (charging ? toFull : toEmpty), "time remaining");
}

/// All of a dictionary as text, to be compared.
std::string written(const PropertyDictionary& properties) {
  std::string text;
  for (const auto& [key, value] : properties) {
    text += key + "=";
    if (const auto figure = signedNumber(&value)) text += std::to_string(*figure);
    if (value.asText() != nullptr) text += "\"" + *value.asText();
    if (value.asDictionary() != nullptr) text += "{" + written(*value.asDictionary()) + "}";
    text += "\n";
  }
  return text;
}

class GivenProperties : public BatteryService {
 public:
  explicit GivenProperties(const PropertyDictionary& given) : given_(given) {}
  std::optional<PropertyDictionary> properties() override { return given_; }

 private:
  const PropertyDictionary& given_;
};

int openFiles() {
  constexpr int most = 128;  // of a process that has a few
  int count = 0;
  for (int file = 0; file < most; ++file) count += ::fcntl(file, F_GETFD) >= 0 ? 1 : 0;
  return count;
}

}  // namespace

void tryInput(std::string_view input) {
  static const ScratchFolder folder;
  static const bool prepared = ::mkdir((folder.path() + "/supplies").c_str(), 0700) == 0 &&
                               ::mkdir((folder.path() + "/hwmon").c_str(), 0700) == 0 &&
                               std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
  require(prepared, "nothing can be prepared", folder.path());

  std::vector<Entry> files = entries(input);
  power_supply::Service service(folder.path() + "/supplies", folder.path() + "/hwmon");
  std::optional<PropertyDictionary> properties;
  {
    const Machine machine(folder.path(), files);
    const int before = openFiles();
    properties = service.properties();
    require(openFiles() == before, "a file is left open");
    const auto again = service.properties();
    require(properties.has_value() == again.has_value(), "a battery comes or goes");
    require(!again || written(*properties) == written(*again), "read again, it differs");
  }
  // Folders before what is in them, and otherwise the other way round.
  std::stable_sort(files.begin(), files.end(), [](const Entry& a, const Entry& b) {
    const auto depth = [](const Entry& e) { return std::count(e.path.begin(), e.path.end(), '/'); };
    return depth(a) != depth(b) ? depth(a) < depth(b) : a.path > b.path;
  });
  {
    const Machine machine(folder.path(), files);
    const auto other = service.properties();
    require(properties.has_value() == other.has_value(), "a battery by the order of files");
    require(!other || written(*properties) == written(*other), "the order of files matters");
  }

  const Supplies supplies(files);
  const auto packs = supplies.packs();
  require(properties.has_value() == !packs.empty(), "a battery is there when a pack is listed");
  if (!properties) return;
  std::vector<std::string> statuses;
  statuses.reserve(packs.size());
  for (const std::string& pack : packs) statuses.push_back(supplies.of(pack, "status"));
  requireKnown(*properties, batteryNumbers);
  requireAgreement(*properties, statuses);

  GivenProperties given(*properties);
  const auto reading = read(given);
  require(reading.has_value(), "no reading");
  requireText(*reading);
}

}  // namespace lumowatt::fuzz
