#pragma once

#include <concepts>
#include <string>
#include <utility>
#include <variant>

namespace lumowatt {

/// Why something could not be done, in words for a person: "No space left on device".
struct Failure {
  std::string reason;
};

/// The failure that the C library has this number for (errno).
Failure systemFailure(int error);

/// What an operation returns, or why it failed. `Result<>` is of one that returns nothing.
template <typename Value = std::monostate>
class [[nodiscard]] Result {
 public:
  Result() requires std::same_as<Value, std::monostate>
  = default;
  Result(Value value) : content_(std::move(value)) {}
  Result(Failure failure) : content_(std::move(failure)) {}

  /// Whether the operation succeeded.
  explicit operator bool() const { return std::holds_alternative<Value>(content_); }

  /// The value of one that succeeded.
  Value& operator*() { return *std::get_if<Value>(&content_); }
  const Value& operator*() const { return *std::get_if<Value>(&content_); }
  Value* operator->() { return &**this; }
  const Value* operator->() const { return &**this; }

  /// Why one that failed did so.
  const Failure& failure() const { return *std::get_if<Failure>(&content_); }

 private:
  std::variant<Value, Failure> content_;
};

}  // namespace lumowatt
