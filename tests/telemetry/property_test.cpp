#include "telemetry/property.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumowatt {

TEST(SignedNumber, ReturnsAPositiveNumberUnchanged) {
  const PropertyValue value = PropertyValue::number(5);
  EXPECT_EQ(signedNumber(&value), 5);
}

TEST(SignedNumber, DecodesTwosComplementOf64Bits) {
  const PropertyValue value = PropertyValue::number(-1);
  EXPECT_EQ(value.asNumber(), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(signedNumber(&value), -1);
  const PropertyValue thousand = PropertyValue::number(-1000);
  EXPECT_EQ(thousand.asNumber(), 18446744073709550616U);
  EXPECT_EQ(signedNumber(&thousand), -1000);
}

TEST(SignedNumber, DoesNotTruncateTo32Bits) {
  const PropertyValue value = PropertyValue::number(0xFFFF'FFFF);
  EXPECT_EQ(signedNumber(&value), 4294967295);
}

TEST(SignedNumber, ReturnsNothingForNullAndForOtherTypes) {
  const PropertyValue text = PropertyValue::text("5");
  const PropertyValue dictionary = PropertyValue::dictionary({});
  const PropertyValue other;
  EXPECT_EQ(signedNumber(nullptr), std::nullopt);
  EXPECT_EQ(signedNumber(&text), std::nullopt);
  EXPECT_EQ(signedNumber(&dictionary), std::nullopt);
  EXPECT_EQ(signedNumber(&other), std::nullopt);
}

TEST(PropertyValue, IsAccessibleOnlyAsItsOwnType) {
  const PropertyValue text = PropertyValue::text("name");
  ASSERT_NE(text.asText(), nullptr);
  EXPECT_EQ(*text.asText(), "name");
  EXPECT_EQ(text.asNumber(), std::nullopt);
  EXPECT_EQ(text.asDictionary(), nullptr);
}

TEST(PropertyDictionary, FindsItsOwnKeysButNotNestedKeys) {
  PropertyDictionary inner;
  inner.set("Watts", PropertyValue::number(96));
  PropertyDictionary properties;
  properties.set("AdapterDetails", PropertyValue::dictionary(inner));
  const PropertyValue* found = properties.find("AdapterDetails");
  ASSERT_NE(found, nullptr);
  ASSERT_NE(found->asDictionary(), nullptr);
  EXPECT_EQ(signedNumber(found->asDictionary()->find("Watts")), 96);
  EXPECT_EQ(properties.find("Watts"), nullptr);
}

TEST(PropertyDictionary, ReplacesTheValueOfAnExistingKey) {
  PropertyDictionary properties;
  EXPECT_TRUE(properties.empty());
  properties.set("Voltage", PropertyValue::number(1));
  properties.set("Voltage", PropertyValue::number(2));
  EXPECT_EQ(signedNumber(properties.find("Voltage")), 2);
  EXPECT_EQ(std::distance(properties.begin(), properties.end()), 1);
}

}  // namespace lumowatt
