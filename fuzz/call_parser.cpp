#include "call_parser.h"

#include <charconv>
#include <string>

#include "platform/freedesktop/menu/server.h"
#include "support.h"

namespace lumowatt::fuzz {

namespace {

/// Reader of the words of a line. Returns empty words after the end of the line.
class Words {
 public:
  explicit Words(std::string_view line) : rest_(line) {}

  std::string readText() {
    const auto [word, rest] = split(rest_, ' ');
    rest_ = rest;
    return unescaped(word);
  }

  template <typename Number>
  Number readNumber() {
    const std::string word = readText();
    Number value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    return value;
  }

  bool isAtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

/// Returns the first complete type of a signature. Returns an empty text if the type is incomplete
/// or an empty struct.
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

constexpr int maxDepth = 5;

/// Appends values of the types in a signature. Returns false on failure.
bool add(sd_bus_message* message, std::string_view types, Words& words, int depth = 0);

bool addContainer(sd_bus_message* message, std::string_view type, Words& words, int depth) {
  const bool isVariant = type == "v";
  const std::string contents = isVariant ? words.readText() : std::string(type.substr(1));
  if (isVariant && (contents.empty() || firstType(contents).size() != contents.size()))
    return false;
  const std::string inner =
      type.front() == '(' ? contents.substr(0, contents.size() - 1) : contents;
  const char kind = type.front() == '(' ? 'r' : type.front();
  if (sd_bus_message_open_container(message, kind, inner.c_str()) < 0) return false;
  const int count = kind == 'a' ? words.readNumber<std::uint16_t>() : 1;
  for (int i = 0; i < count; ++i) {
    if (kind == 'a' && words.isAtEnd()) break;
    if (!add(message, inner, words, depth + 1)) return false;
  }
  return sd_bus_message_close_container(message) >= 0;
}

bool addBasic(sd_bus_message* message, char type, Words& words) {
  switch (type) {
    case 'i':
      return sd_bus_message_append(message, "i", words.readNumber<std::int32_t>()) >= 0;
    case 'u':
      return sd_bus_message_append(message, "u", words.readNumber<std::uint32_t>()) >= 0;
    case 'b':
      return sd_bus_message_append(message, "b", words.readNumber<std::int32_t>()) >= 0;
    case 't':
      return sd_bus_message_append(message, "t", words.readNumber<std::uint64_t>()) >= 0;
    case 's':
      return sd_bus_message_append(message, "s", words.readText().c_str()) >= 0;
    default:
      return false;
  }
}

bool add(sd_bus_message* message, std::string_view types, Words& words, int depth) {
  if (depth > maxDepth) return false;
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

freedesktop::BusMessage parseCall(sd_bus* bus, std::string_view line) {
  Words words(line);
  const std::string method = words.readText();
  const std::string types = words.readText();
  sd_bus_message* call = nullptr;
  const int status = sd_bus_message_new_method_call(
      bus, &call, nullptr, freedesktop::MenuServer::path, interfaceOf(method), method.c_str());
  freedesktop::BusMessage message(call);
  if (status < 0 || !add(call, types, words)) return nullptr;
  return message;
}

}  // namespace lumowatt::fuzz
