#include "platform/linux/power_supply/charger.h"

#include <gtest/gtest.h>

#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

/// Reads a charger with these attributes. It is online unless the attributes specify otherwise.
Charger chargerOf(Attributes attributes, std::string_view type) {
  attributes.emplace("online", "1");
  const MockMachine machine;
  machine.supply("port", attributes);
  const sysfs::Class supplies(machine.powerSupplyFolder());
  sysfs::Device device(supplies, "port");
  return readCharger(device, type);
}

}  // namespace

TEST(IsCharger, DependsOnTheType) {
  for (const char* type : {"Mains", "Wireless", "USB", "USB_PD", "USB_C", "USB_DCP"}) {
    EXPECT_TRUE(isCharger(type, "port")) << type;
  }
  for (const char* type : {"Battery", "UPS", "BMS", "Unknown", "", "MUSB", "mains"}) {
    EXPECT_FALSE(isCharger(type, "port")) << type;
  }
}

TEST(IsCharger, RejectsTheSmartBatterySystemsCharger) {
  EXPECT_FALSE(isCharger("Mains", "sbs-charger"));
}

TEST(Charger, IsOnlineIfTheAttributeIsPositive) {
  const auto online = [](const std::string& value) {
    return chargerOf({{"online", value}}, "USB").online;
  };
  EXPECT_FALSE(online("0"));
  EXPECT_TRUE(online("1"));
  EXPECT_TRUE(online("2")) << "a programmable supply";
  EXPECT_FALSE(online("-1"));
  EXPECT_FALSE(online(""));
  EXPECT_FALSE(online(missing));
}

TEST(Charger, HasNoRatingAndNoProductWhileOffline) {
  const Charger charger =
      chargerOf({{"online", "0"}, {"input_power_limit", "45000000"}, {"model_name", "X"}}, "USB");
  EXPECT_EQ(charger.ratedWatts, 0);
  EXPECT_EQ(charger.product, "");
}

TEST(Charger, HasTheHighestReportedPowerAsUsbRating) {
  const Attributes contract = {{"voltage_now", "20000000"}, {"current_now", "3250000"}};
  EXPECT_DOUBLE_EQ(chargerOf(contract, "USB").ratedWatts, 65);
  Attributes both = contract;
  both.insert({{"voltage_max", "20000000"}, {"current_max", "5000000"}});
  EXPECT_DOUBLE_EQ(chargerOf(both, "USB_PD").ratedWatts, 100);
  both.insert({"input_power_limit", "140000000"});
  EXPECT_DOUBLE_EQ(chargerOf(both, "USB").ratedWatts, 140);
}

TEST(Charger, ComputesTheRatingExactly) {
  EXPECT_EQ(chargerOf({{"input_power_limit", "64499999"}}, "Mains").ratedWatts, 64.499999);
  const auto contract = [](const std::string& microvolts, const std::string& microamps) {
    return chargerOf({{"voltage_max", microvolts}, {"current_max", microamps}}, "USB").ratedWatts;
  };
  EXPECT_EQ(contract("5000000", "550000"), 2.75);
  EXPECT_EQ(contract("9000000", "3300000"), 29.7);
}

TEST(Charger, RatingOfANonUsbChargerIsTheInputLimit) {
  EXPECT_EQ(
      chargerOf({{"voltage_max", "20000000"}, {"current_max", "5000000"}}, "Mains").ratedWatts, 0);
  EXPECT_DOUBLE_EQ(chargerOf({{"input_power_limit", "45000000"}}, "Wireless").ratedWatts, 45);
}

TEST(Charger, HasNoRatingFromIncompleteOrNegativeValues) {
  EXPECT_EQ(chargerOf({{"input_power_limit", "-5000000"}}, "USB").ratedWatts, 0);
  EXPECT_EQ(chargerOf({{"current_now", "3000000"}}, "USB").ratedWatts, 0);
  EXPECT_EQ(chargerOf({{"voltage_now", "5000000"}}, "USB").ratedWatts, 0);
  EXPECT_EQ(chargerOf({{"voltage_now", "-5000000"}, {"current_now", "-3000000"}}, "USB").ratedWatts,
            0);
}

TEST(Charger, HasManufacturerAndModelAsProduct) {
  EXPECT_EQ(chargerOf({{"manufacturer", "Acme\n"}, {"model_name", "Brick 96\n"}}, "USB").product,
            "Acme Brick 96");
  EXPECT_EQ(chargerOf({{"manufacturer", "Acme"}}, "USB").product, "Acme");
  EXPECT_EQ(chargerOf({{"manufacturer", "  "}, {"model_name", "Brick 96"}}, "USB").product,
            "Brick 96");
  EXPECT_EQ(chargerOf({}, "USB").product, "");
}

TEST(Charger, HasAProductOfOnePrintableLine) {
  EXPECT_EQ(chargerOf({{"manufacturer", "\xFF\x01"}, {"model_name", "Bri\nck\x80"}}, "USB").product,
            "Bri ck");
}

}  // namespace lumowatt::power_supply
