#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <memory>

/// Owning pointers to the objects of libsystemd, and helpers for its callbacks and messages. An
/// object that receives a bus or a loop as a plain pointer must not outlive that bus or loop.
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

/// Output argument for a function of libsystemd that returns an object through a pointer. At the
/// end of the full expression, `owner` receives the object.
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

/// Message handler that calls a member function of the object that was registered as user data.
template <auto method>
int handle(sd_bus_message* message, void* object, sd_bus_error* error) {
  return (static_cast<decltype(classOf(method))>(object)->*method)(message, error);
}

/// Returns the D-Bus signature of a value's type.
constexpr const char* signatureOf(const char*) { return "s"; }
constexpr const char* signatureOf(bool) { return "b"; }
constexpr const char* signatureOf(int) { return "i"; }
constexpr const char* signatureOf(unsigned) { return "u"; }

/// Getter of a property with a constant value.
template <auto value>
int constant(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
             sd_bus_error*) {
  return sd_bus_message_append(reply, signatureOf(value), value);
}

/// Writer that appends values to a message. After a failure, all further calls do nothing.
class MessageWriter {
 public:
  explicit MessageWriter(sd_bus_message* message) : message_(message) {}

  /// Appends values with the D-Bus signature `types`, in the format of sd_bus_message_append.
  template <typename... Values>
  void add(const char* types, Values... values) {
    if (status_ >= 0) status_ = sd_bus_message_append(message_, types, values...);
  }

  /// Opens a container of the D-Bus type `type`; `end` closes the container.
  void begin(char type, const char* contents) {
    if (status_ >= 0) status_ = sd_bus_message_open_container(message_, type, contents);
  }
  void end() {
    if (status_ >= 0) status_ = sd_bus_message_close_container(message_);
  }

  /// Sends the message. Returns a negative errno if appending or sending failed.
  int send() { return status_ < 0 ? status_ : sd_bus_send(nullptr, message_, nullptr); }

 private:
  sd_bus_message* message_;
  int status_ = 0;
};

}  // namespace lumowatt::freedesktop
