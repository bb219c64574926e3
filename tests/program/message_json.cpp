#include "program/message_json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace lumowatt {

namespace {

using Json = nlohmann::json;

template <typename T>
Json readBasic(sd_bus_message* message, char type) {
  T value{};
  EXPECT_GT(sd_bus_message_read_basic(message, type, &value), 0);
  return value;
}

std::string keyOf(const Json& key) { return key.is_string() ? key.get<std::string>() : key.dump(); }

Json readContainer(sd_bus_message* message, char type, const char* contents) {
  const bool isDictionary = type == 'a' && *contents == '{';
  EXPECT_GT(sd_bus_message_enter_container(message, type, contents), 0);
  Json value = isDictionary ? Json::object() : Json::array();
  while (sd_bus_message_at_end(message, 0) == 0) {
    Json element = readValue(message);
    if (isDictionary) {
      value[keyOf(element.at(0))] = element.at(1);
    } else {
      value.push_back(std::move(element));
    }
  }
  EXPECT_GE(sd_bus_message_exit_container(message), 0);
  return type == 'v' ? value.at(0) : value;
}

}  // namespace

Json readValue(sd_bus_message* message) {
  char type = 0;
  const char* contents = nullptr;
  EXPECT_GT(sd_bus_message_peek_type(message, &type, &contents), 0);
  switch (type) {
    case 's':
    case 'o':
      return readBasic<const char*>(message, type);
    case 'b':
      return readBasic<int>(message, type) != 0;
    case 'i':
      return readBasic<std::int32_t>(message, type);
    case 'u':
      return readBasic<std::uint32_t>(message, type);
    case 'y':
      return readBasic<std::uint8_t>(message, type);
    default:
      return readContainer(message, type, contents);
  }
}

Json readValues(sd_bus_message* message) {
  Json values = Json::array();
  while (sd_bus_message_at_end(message, 1) == 0) values.push_back(readValue(message));
  return values;
}

}  // namespace lumowatt
