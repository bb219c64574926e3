#pragma once

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

using Json = nlohmann::json;

/// Private session bus.
class SessionBus {
 public:
  /// Starts the bus; `configuration` contains additional elements of its configuration file.
  explicit SessionBus(const std::string& configuration = "");

  std::string address() const { return "unix:path=" + (folder_.path() / "bus").string(); }

  /// Kills the bus daemon.
  void kill();

  /// Freezes the bus daemon until `resume`. Messages are queued meanwhile.
  void pause() const;
  void resume() const;

 private:
  TemporaryFolder folder_;
  std::unique_ptr<Process> daemon_;
};

/// Result of a method call: the values of the reply, or the name of the error.
struct Reply {
  Json values;
  std::string error;
};

/// Client of the session bus. Records the signals of items and their menus.
class BusPeer {
 public:
  explicit BusPeer(const SessionBus& session);
  BusPeer(const BusPeer&) = delete;
  BusPeer& operator=(const BusPeer&) = delete;
  virtual ~BusPeer() = default;

  sd_bus* bus() const { return bus_.get(); }

  /// Acquires a name on the bus.
  void own(const char* name) const;
  bool isOwned(const char* name) const;

  /// Creates a method call without arguments.
  sd_bus_message* newMethodCall(const char* destination, const char* object, const char* interface,
                                const char* method) const;

  /// Sends a method call, releases the message, and waits for the reply.
  Reply call(sd_bus_message* message) const;

  /// Processes messages until the condition is true. Fails the test after 20 seconds.
  void waitUntil(const std::function<bool()>& condition) const;
  /// Processes messages for 300 ms, so that unexpected ones can arrive.
  void processLateMessages() const;
  void waitForSignal(const std::string& name) const {
    waitUntil([&] { return hasReceived(name); });
  }

  /// Returns the names of the recorded signals, in order. If `sender` is not empty, returns only
  /// its signals. Every signal that was sent before the latest reply has been recorded.
  std::vector<std::string> signalNames(const std::string& sender = "") const;

  /// Returns the values of the latest signal with this name. Fails the test if there is none.
  Json signal(const std::string& name) const;
  bool hasReceived(const std::string& name) const;
  void clearSignals();

 private:
  struct Signal {
    std::string sender;
    std::string name;
    Json values;
  };

  static int record(sd_bus_message* signal, void* peer, sd_bus_error*);
  void processMessages() const;

  std::vector<Signal> signals_;

  struct Close {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  };
  std::unique_ptr<sd_bus, Close> bus_;
};

/// Panel that owns the name of the watcher, accepts registrations of items and calls methods of the
/// item of the application.
class Panel : public BusPeer {
 public:
  explicit Panel(const SessionBus& session);

  /// Bus names or object paths that were registered, in order.
  std::vector<std::string> registered;

  /// Whether the panel reads the properties of each item upon its registration.
  bool readsItems = true;

  void waitForItem() const { waitForItems(1); }
  void waitForItems(std::size_t count) const {
    waitUntil([this, count] { return registered.size() >= count; });
  }

  /// Bus name of the application.
  static constexpr auto application = "com.fernhollow.Lumowatt";

  /// Calls a method of the item. `types` and `values` are those of sd_bus_message_append.
  template <typename... Values>
  Reply callItem(const char* method, const char* types = "", Values... values) const {
    return callApplication("/StatusNotifierItem", "org.kde.StatusNotifierItem", method, types,
                           values...);
  }

  /// Calls a method of the menu, with arguments like those of `callItem`.
  template <typename... Values>
  Reply callMenu(const char* method, const char* types = "", Values... values) const {
    return callApplication("/MenuBar", "com.canonical.dbusmenu", method, types, values...);
  }

  /// Creates a call of a method of the menu, without arguments.
  sd_bus_message* newMenuCall(const char* method) const {
    return newMethodCall(application, "/MenuBar", "com.canonical.dbusmenu", method);
  }

  /// Returns a property of the item whose connection has the bus name `item`.
  Json property(const char* name, const char* item = application) const;

  /// Returns all properties of an object of the application.
  Json properties(const char* object, const char* interface) const;

  /// Opens the menu. Returns whether the application updated it.
  bool open() const { return callMenu("AboutToShow", "i", 0).values.at(0); }

  /// Chooses an item of the menu. Returns the name of the error; empty on success.
  std::string click(int id) const { return sendEvent(id, "clicked"); }

  /// Sends an event of an item of the menu. Returns the name of the error; empty on success.
  std::string sendEvent(int id, const char* event) const {
    return callMenu("Event", "isvu", id, event, "i", 0, 0U).error;
  }

  /// Returns a property of an item of the menu.
  Json menuProperty(int id, const char* name) const {
    return callMenu("GetProperty", "is", id, name).values.at(0);
  }

 private:
  template <typename... Values>
  Reply callApplication(const char* object, const char* interface, const char* method,
                        const char* types, Values... values) const {
    sd_bus_message* const message = newMethodCall(application, object, interface, method);
    EXPECT_GE(sd_bus_message_append(message, types, values...), 0);
    return call(message);
  }

  static int handleRegistration(sd_bus_message* message, void* panel, sd_bus_error*);
};

}  // namespace lumowatt
