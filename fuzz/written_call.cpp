#include "written_call.h"

#include <charconv>
#include <string>

#include "platform/freedesktop/menu/server.h"
#include "support.h"

namespace lumowatt::fuzz {

namespace {

/// Takes the words of a line one after the other; empty ones at its end.
class Words {
 public:
  explicit Words(std::string_view line) : rest_(line) {}

  std::string text() {
    const auto [word, rest] = split(rest_, ' ');
    rest_ = rest;
    return unescaped(word);
  }

  template <typename Number>
  Number number() {
    const std::string word = text();
    Number value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    return value;
  }

  bool isAtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

/// The first complete type of a signature; empty for what cannot be written here.
std::string_view firstType(std::string_view types) {
  std::size_t length = 0;
  while (length < types.size() && types[length] == 'a') ++length;
  if (length == types.size() || types.substr(length).starts_with("()")) return {};
  if (types[length] != '(') return types.substr(0, length + 1);
  int depth = 0;
  for (; length < types.size(); ++length) {
    if (types[length] == '(') ++depth;
    if (types[length] == ')' && --depth == 0) return types.substr(0, length + 1);
  }
  return {};
}

constexpr int mostDepth = 5;

/// Adds values of these types; false when that cannot be.
bool add(sd_bus_message* message, std::string_view types, Words& words, int depth = 0);

bool addContainer(sd_bus_message* message, std::string_view type, Words& words, int depth) {
  const bool isVariant = type == "v";
  const std::string held = isVariant ? words.text() : std::string(type.substr(1));
  if (isVariant && (held.empty() || firstType(held).size() != held.size())) return false;
  const std::string inner = type.front() == '(' ? held.substr(0, held.size() - 1) : held;
  const char kind = type.front() == '(' ? 'r' : type.front();
  if (sd_bus_message_open_container(message, kind, inner.c_str()) < 0) return false;
  const int most = kind == 'a' ? words.number<std::uint16_t>() : 1;
  for (int i = 0; i < most; ++i) {
    if (kind == 'a' && words.isAtEnd()) break;
    if (!add(message, inner, words, depth + 1)) return false;
  }
  return sd_bus_message_close_container(message) >= 0;
}

bool addBasic(sd_bus_message* message, char type, Words& words) {
  switch (type) {
    case 'i':
      return sd_bus_message_append(message, "i", words.number<std::int32_t>()) >= 0;
    case 'u':
      return sd_bus_message_append(message, "u", words.number<std::uint32_t>()) >= 0;
    case 'b':
      return sd_bus_message_append(message, "b", words.number<std::int32_t>()) >= 0;
    case 't':
      return sd_bus_message_append(message, "t", words.number<std::uint64_t>()) >= 0;
    case 's':
      return sd_bus_message_append(message, "s", words.text().c_str()) >= 0;
    default:
      return false;
  }
}

bool add(sd_bus_message* message, std::string_view types, Words& words, int depth) {
  if (depth > mostDepth) return false;
  while (!types.empty()) {
    const std::string_view type = firstType(types);
    if (type.empty()) return false;
    const bool isContainer = type.size() > 1 || type == "v";
    const bool added = isContainer ? addContainer(message, type, words, depth)
                                   : addBasic(message, type.front(), words);
    if (!added) return false;
    types.remove_prefix(type.size());
  }
  return true;
}

const char* interfaceOf(std::string_view method) {
  if (method == "Get" || method == "GetAll" || method == "Set") {
    return "org.freedesktop.DBus.Properties";
  }
  if (method == "Introspect") return "org.freedesktop.DBus.Introspectable";
  return "com.canonical.dbusmenu";
}

}  // namespace

freedesktop::BusMessage callOf(sd_bus* bus, std::string_view line) {
  Words words(line);
  const std::string method = words.text();
  const std::string types = words.text();
  sd_bus_message* made = nullptr;
  const int status = sd_bus_message_new_method_call(
      bus, &made, nullptr, freedesktop::MenuServer::path, interfaceOf(method), method.c_str());
  freedesktop::BusMessage message(made);
  if (status < 0 || !add(made, types, words)) return nullptr;
  return message;
}

}  // namespace lumowatt::fuzz
