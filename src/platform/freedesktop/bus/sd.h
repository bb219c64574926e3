#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <memory>

/// Owners of what libsystemd gives, and what its callbacks and messages need in C++. Whoever is
/// given a bus or a loop as a plain pointer must not outlive it.
namespace lumowatt::freedesktop {

template <auto release>
struct Release {
  template <typename T>
  void operator()(T* object) const {
    release(object);
  }
};

using EventLoop = std::unique_ptr<sd_event, Release<sd_event_unref>>;
using EventSource = std::unique_ptr<sd_event_source, Release<sd_event_source_disable_unref>>;
using Bus = std::unique_ptr<sd_bus, Release<sd_bus_flush_close_unref>>;
using BusSlot = std::unique_ptr<sd_bus_slot, Release<sd_bus_slot_unref>>;
using BusMessage = std::unique_ptr<sd_bus_message, Release<sd_bus_message_unref>>;

/// Lets a function of libsystemd fill an owner, at the end of the expression that calls it.
template <typename Owner>
class Out {
 public:
  explicit Out(Owner& owner) : owner_(owner) {}
  Out(const Out&) = delete;
  Out& operator=(const Out&) = delete;
  ~Out() { owner_.reset(pointer_); }

  operator typename Owner::pointer *() { return &pointer_; }

 private:
  Owner& owner_;
  typename Owner::pointer pointer_ = nullptr;
};

template <typename Object>
Object* classOf(int (Object::*)(sd_bus_message*, sd_bus_error*));
template <typename Object>
const Object* classOf(int (Object::*)(sd_bus_message*, sd_bus_error*) const);

/// A member function as the handler of messages, for the object that is registered with it.
template <auto method>
int handle(sd_bus_message* message, void* object, sd_bus_error* error) {
  return (static_cast<decltype(classOf(method))>(object)->*method)(message, error);
}

/// How sd-bus has values of these types in messages.
constexpr const char* typeOf(const char*) { return "s"; }
constexpr const char* typeOf(bool) { return "b"; }
constexpr const char* typeOf(int) { return "i"; }
constexpr const char* typeOf(unsigned) { return "u"; }

/// The getter of a property that stays as it is.
template <auto value>
int constant(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
             sd_bus_error*) {
  return sd_bus_message_append(reply, typeOf(value), value);
}

/// Fills a message. After a failure nothing more is written.
class MessageWriter {
 public:
  explicit MessageWriter(sd_bus_message* message) : message_(message) {}

  /// Values by the D-Bus types, as sd_bus_message_append has them.
  template <typename... Values>
  void add(const char* types, Values... values) {
    if (status_ >= 0) status_ = sd_bus_message_append(message_, types, values...);
  }

  /// A container: what is added until `end` is in it.
  void begin(char type, const char* contents) {
    if (status_ >= 0) status_ = sd_bus_message_open_container(message_, type, contents);
  }
  void end() {
    if (status_ >= 0) status_ = sd_bus_message_close_container(message_);
  }

  /// Sends it. Negative when that or the filling failed, as sd-bus has its errors.
  int send() { return status_ < 0 ? status_ : sd_bus_send(nullptr, message_, nullptr); }

 private:
  sd_bus_message* message_;
  int status_ = 0;
};

}  // namespace lumowatt::freedesktop
