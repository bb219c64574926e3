#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace lumowatt {

/// The reason why an operation failed, as text for the user: "No space left on device".
struct Failure {
  std::string reason;
};

/// Returns the failure described by the C library's message for `error`, a value of errno.
Failure systemFailure(int error);

/// The value that an operation returns, or the reason why it failed. `Result<>` is for operations
/// that return no value.
template <typename Value = std::monostate>
class [[nodiscard]] Result {
 public:
  Result() requires std::same_as<Value, std::monostate> : value_(std::in_place) {}
  Result(Value value) : value_(std::move(value)) {}
  Result(Failure failure) : failure_(std::move(failure)) {}

  /// Returns whether the operation succeeded.
  explicit operator bool() const { return value_.has_value(); }

  /// Returns the value. Precondition: the operation succeeded.
  Value& operator*() { return *value_; }
  const Value& operator*() const { return *value_; }
  Value* operator->() { return &*value_; }
  const Value* operator->() const { return &*value_; }

  /// Returns the reason for the failure. Precondition: the operation failed.
  const Failure& failure() const { return failure_; }

 private:
  std::optional<Value> value_;
  Failure failure_;
};

}  // namespace lumowatt
