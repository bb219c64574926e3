#include "support/mock_machine.h"

#include "platform/linux/power_supply/service.h"

namespace lumowatt {

namespace {

void writeDevice(const TemporaryFolder& folder, const std::string& device,
                 const Attributes& attributes) {
  for (const auto& [name, value] : attributes) {
    if (value != missing) folder.write(std::filesystem::path(device) / name, value);
  }
}

Attributes withChanges(Attributes attributes, const Attributes& changes) {
  for (const auto& [name, value] : changes) attributes[name] = value;
  return attributes;
}

}  // namespace

void MockMachine::supply(const std::string& name, const Attributes& attributes) const {
  writeDevice(folder_, "power_supply/" + name, attributes);
}

void MockMachine::sensors(const std::string& name, const Attributes& attributes) const {
  writeDevice(folder_, "hwmon/" + name, attributes);
}

nlohmann::json MockMachine::properties() const {
  power_supply::Service service(powerSupplyFolder(), hwmonFolder());
  const auto properties = service.properties();
  return properties ? jsonFromProperties(*properties) : nlohmann::json(nullptr);
}

Attributes chargePack(const Attributes& changes) {
  return withChanges({{"type", "Battery\n"},
                      {"present", "1\n"},
                      {"status", "Discharging\n"},
                      {"capacity", "50\n"},
                      {"charge_full", "4000000\n"},
                      {"charge_full_design", "5000000\n"},
                      {"charge_now", "2000000\n"},
                      {"current_now", "500000\n"},
                      {"voltage_min_design", "11000000\n"},
                      {"voltage_now", "12000000\n"}},
                     changes);
}

Attributes energyPack(const Attributes& changes) {
  return withChanges({{"type", "Battery\n"},
                      {"present", "1\n"},
                      {"status", "Discharging\n"},
                      {"capacity", "50\n"},
                      {"energy_full", "50000000\n"},
                      {"energy_full_design", "60000000\n"},
                      {"energy_now", "25000000\n"},
                      {"power_now", "5000000\n"},
                      {"voltage_min_design", "10000000\n"},
                      {"voltage_now", "12500000\n"}},
                     changes);
}

}  // namespace lumowatt
