#pragma once

#include <concepts>
#include <optional>
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

/// What an operation returns, or why it failed. `Result<>` is for operations that
/// return nothing.
template <typename Value = std::monostate>
class [[nodiscard]] Result {
 public:
  Result() requires std::same_as<Value, std::monostate> : value_(std::in_place) {}
  Result(Value value) : value_(std::move(value)) {}
  Result(Failure failure) : failure_(std::move(failure)) {}

  /// Whether the operation succeeded.
  explicit operator bool() const { return value_.has_value(); }

  /// The value of one that succeeded.
  Value& operator*() { return *value_; }
  const Value& operator*() const { return *value_; }
  Value* operator->() { return &*value_; }
  const Value* operator->() const { return &*value_; }

  /// Why one that failed did so.
  const Failure& failure() const { return failure_; }

 private:
  std::optional<Value> value_;
  Failure failure_;
};

}  // namespace lumowatt
