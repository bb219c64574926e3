#include "platform/linux/power_supply/power_state.h"

#include <gtest/gtest.h>

namespace lumowatt::power_supply {

namespace {

/// Returns a pack with this power, in W.
Pack pack(Status status, double watts = 0) {
  Pack result;
  result.status = status;
  result.battery.picowatts = watts * 1e12;
  return result;
}

Pack packAt(Status status, std::optional<std::int64_t> capacity) {
  Pack result = pack(status);
  result.battery.capacity = capacity;
  return result;
}

Charger charger(bool usb, bool online, double ratedWatts = 0, const std::string& product = "") {
  return {usb, online, ratedWatts, product};
}

const Charger mains = charger(false, true);
const Charger mainsOff = charger(false, false);
const Charger usb = charger(true, true);
const Charger usbOff = charger(true, false);

/// Combines the chargers with an online mains charger, so that external power is present and their
/// ratings count.
PowerState combineOnMains(std::vector<Charger> chargers) {
  chargers.push_back(mains);
  return combine({pack(Status::notCharging)}, chargers);
}

}  // namespace

TEST(ExternalPower, IsPresentIfMainsIsOnline) {
  EXPECT_TRUE(combine({pack(Status::unknown)}, {mains}).external);
  EXPECT_TRUE(combine({pack(Status::discharging, -5)}, {mains}).external) << "a weak charger";
  EXPECT_FALSE(combine({pack(Status::unknown)}, {mainsOff}).external);
}

TEST(ExternalPower, IsPresentIfUsbIsOnlineAndNoPackDischarges) {
  EXPECT_TRUE(combine({pack(Status::notCharging)}, {mainsOff, usb}).external);
  EXPECT_FALSE(combine({pack(Status::discharging)}, {mainsOff, usb}).external) << "stale";
  EXPECT_FALSE(combine({pack(Status::unknown), pack(Status::discharging, -5)}, {usb}).external);
}

TEST(ExternalPower, IsPresentIfAPackChargesAndTotalFlowIsNotOutward) {
  EXPECT_TRUE(combine({pack(Status::charging, 5)}, {mainsOff}).external);
  EXPECT_TRUE(combine({pack(Status::charging, 0)}, {mainsOff}).external);
  EXPECT_FALSE(
      combine({pack(Status::charging, 4), pack(Status::discharging, -9)}, {mainsOff}).external)
      << "from the other pack";
}

TEST(ExternalPower, IsDerivedFromThePacksIfNoChargerIsListed) {
  EXPECT_TRUE(combine({pack(Status::charging, 5)}, {}).external);
  EXPECT_TRUE(combine({pack(Status::full)}, {}).external);
  EXPECT_TRUE(combine({pack(Status::notCharging)}, {}).external);
  EXPECT_TRUE(combine({pack(Status::charging, 4), pack(Status::unknown, -9)}, {}).external);
  EXPECT_FALSE(combine({pack(Status::unknown)}, {}).external);
  EXPECT_FALSE(combine({pack(Status::discharging, -5)}, {}).external);
  EXPECT_FALSE(combine({pack(Status::full), pack(Status::discharging, -5)}, {}).external);
}

TEST(ExternalPower, IsNotDerivedFromIdlePacksIfAChargerIsListed) {
  EXPECT_FALSE(combine({pack(Status::full)}, {mainsOff}).external);
  EXPECT_FALSE(combine({pack(Status::notCharging)}, {usbOff}).external);
}

TEST(ExternalPower, IsAbsentIfNothingIsKnown) {
  EXPECT_FALSE(combine({Pack()}, {}).external);
  EXPECT_FALSE(combine({Pack()}, {Charger()}).external);
}

TEST(ChargingState, IsSetIfAPackChargesAndTotalFlowIsNotOutward) {
  EXPECT_TRUE(combine({pack(Status::charging, 5)}, {}).charging);
  EXPECT_TRUE(combine({pack(Status::charging, 0)}, {}).charging);
  EXPECT_TRUE(combine({pack(Status::charging, 9), pack(Status::discharging, -4)}, {}).charging);
  EXPECT_FALSE(combine({pack(Status::charging, 4), pack(Status::discharging, -9)}, {}).charging);
  EXPECT_FALSE(combine({pack(Status::notCharging)}, {mains}).charging);
}

TEST(DischargingState, IsSetIfAPackDischargesOrTotalFlowIsOutward) {
  EXPECT_TRUE(combine({pack(Status::discharging, 0)}, {}).discharging);
  EXPECT_TRUE(combine({pack(Status::unknown, -5)}, {}).discharging);
  EXPECT_TRUE(combine({pack(Status::charging, 4), pack(Status::discharging, -9)}, {}).discharging);
  EXPECT_FALSE(combine({pack(Status::charging, 9), pack(Status::discharging, -4)}, {}).discharging);
  EXPECT_FALSE(combine({pack(Status::unknown, 5)}, {}).discharging);
}

TEST(DischargingState, IsSetIfTotalFlowIsMinimallyOutward) {
  const std::vector<Pack> packs = {pack(Status::charging), pack(Status::notCharging, -1e-12)};
  EXPECT_FALSE(combine(packs, {mains}).charging);
  EXPECT_TRUE(combine(packs, {mains}).discharging);
}

TEST(DischargingState, IsDerivedFromTheCurrentIfThePowerIsUnknown) {
  Pack voltless = pack(Status::unknown);
  voltless.battery.microamps = -0.5e6;
  EXPECT_TRUE(combine({voltless}, {}).discharging);
}

TEST(FullState, IsSetIfAllPacksAreFull) {
  EXPECT_TRUE(combine({packAt(Status::full, 97)}, {}).full);
  EXPECT_TRUE(combine({packAt(Status::full, std::nullopt), packAt(Status::full, 100)}, {}).full);
  EXPECT_FALSE(combine({packAt(Status::full, 100), packAt(Status::charging, 100)}, {}).full);
}

TEST(FullState, IsSetForAnIdlePackFrom99Percent) {
  for (const Status status : {Status::unknown, Status::notCharging}) {
    EXPECT_TRUE(combine({packAt(status, 99)}, {}).full);
    EXPECT_FALSE(combine({packAt(status, 98)}, {}).full);
    EXPECT_FALSE(combine({packAt(status, std::nullopt)}, {}).full);
  }
  EXPECT_FALSE(combine({packAt(Status::discharging, 100)}, {}).full);
  EXPECT_FALSE(combine({packAt(Status::charging, 100)}, {}).full);
}

TEST(Adapter, IsDescribedOnlyOnExternalPower) {
  const PowerState state =
      combine({pack(Status::discharging)}, {charger(true, true, 65, "Acme Brick")});
  EXPECT_FALSE(state.external);
  EXPECT_EQ(state.adapterWatts, 0);
  EXPECT_EQ(state.adapterName, "");
}

TEST(Adapter, HasTheHighestRatingOfTheOnlineChargers) {
  EXPECT_EQ(combineOnMains({charger(true, true, 65), charger(false, true, 45)}).adapterWatts, 65);
  EXPECT_EQ(combineOnMains({charger(true, true, 65), charger(true, false, 100)}).adapterWatts, 65);
}

TEST(Adapter, RoundsTheRatingToWholeWatts) {
  EXPECT_EQ(combineOnMains({charger(true, true, 77.586)}).adapterWatts, 78);
  EXPECT_EQ(combineOnMains({charger(true, true, 44.4)}).adapterWatts, 44);
}

TEST(Adapter, HasNoRatingBelowOneWatt) {
  EXPECT_EQ(combineOnMains({charger(true, true, 0.99)}).adapterWatts, 0);
  EXPECT_EQ(combineOnMains({charger(true, true, 0.99)}).adapterName, "");
  EXPECT_EQ(combineOnMains({charger(true, true, 1.0)}).adapterWatts, 1);
}

TEST(Adapter, HasNoRatingThatExceeds64Bits) {
  EXPECT_EQ(combineOnMains({charger(true, true, 1e19)}).adapterWatts, 0);
  EXPECT_EQ(combineOnMains({charger(true, true, 1e19)}).adapterName, "");
}

TEST(Adapter, HasTheNameOfTheFirstOnlineChargerWithAName) {
  EXPECT_EQ(combineOnMains({charger(true, false, 0, "Offline"), charger(true, true),
                            charger(true, true, 0, "A"), charger(true, true, 65, "B")})
                .adapterName,
            "A");
}

TEST(Adapter, HasTheNameOfAMainsCharger) {
  EXPECT_EQ(combineOnMains({charger(false, true, 0, "Acme Brick")}).adapterName, "Acme Brick");
}

TEST(Adapter, IsNamedByItsRatingIfAUsbChargerHasNoName) {
  EXPECT_EQ(combineOnMains({charger(true, true, 65)}).adapterName, "65W USB-C Power Adapter");
  EXPECT_EQ(combineOnMains({charger(false, true, 45), charger(true, true, 65)}).adapterName,
            "65W USB-C Power Adapter");
}

TEST(Adapter, HasNoNameIfTheHighestRatedChargerIsUnnamedMains) {
  EXPECT_EQ(combineOnMains({charger(false, true, 65)}).adapterName, "");
  EXPECT_EQ(combineOnMains({charger(false, true, 65), charger(true, true, 45)}).adapterName, "");
  EXPECT_EQ(combineOnMains({charger(true, true, 45), charger(false, true, 65)}).adapterName, "");
  EXPECT_EQ(combineOnMains({charger(true, false, 65), charger(false, true, 65)}).adapterName, "");
}

TEST(Adapter, HasNoNameIfAChargerOfUnknownTypeHasNone) {
  Charger charger;
  charger.online = true;
  charger.ratedWatts = 65;
  EXPECT_EQ(combineOnMains({charger}).adapterName, "");
}

TEST(Adapter, IsUnknownIfNoChargerDescribesIt) {
  const PowerState state = combineOnMains({usb});
  EXPECT_EQ(state.adapterWatts, 0);
  EXPECT_EQ(state.adapterName, "");
}

}  // namespace lumowatt::power_supply
