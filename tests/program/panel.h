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

/// A private session bus.
class SessionBus {
 public:
  /// With further elements in its configuration.
  explicit SessionBus(const std::string& configuration = "");

  std::string address() const { return "unix:path=" + (folder_.path() / "bus").string(); }

  /// The bus goes away.
  void end();

  /// The bus stands still, with all that was sent to it, and goes on.
  void pause() const;
  void resume() const;

 private:
  TemporaryFolder folder_;
  std::unique_ptr<Process> daemon_;
};

/// What came of a call: the values of the reply, or the name of the error.
struct Answer {
  Json values;
  std::string error;
};

/// A participant of a session. It records the signals of an item and its menu.
class BusPeer {
 public:
  explicit BusPeer(const SessionBus& session);
  BusPeer(const BusPeer&) = delete;
  BusPeer& operator=(const BusPeer&) = delete;
  virtual ~BusPeer() = default;

  sd_bus* bus() const { return bus_.get(); }
  void own(const char* name) const;
  bool isOwned(const char* name) const;

  /// A call, and what comes of it; `answer` takes it over.
  sd_bus_message* newCall(const char* destination, const char* object, const char* interface,
                          const char* method) const;
  Answer answer(sd_bus_message* call) const;

  /// Takes part until something is so; fails the test when it is not so in a long time.
  void waitUntil(const std::function<bool()>& isSo) const;
  /// Takes part for a while, in which something more might happen.
  void settle() const;
  void waitForSignal(const std::string& name) const {
    waitUntil([&] { return hasHeard(name); });
  }

  /// The names of the signals that were recorded, with all that were sent before the last answer;
  /// of one sender alone where its connection is named.
  std::vector<std::string> signalNames(const std::string& sender = "") const;

  /// The values of the last of these signals; fails the test when there is none.
  Json signal(const std::string& name) const;
  bool hasHeard(const std::string& name) const;
  void forgetSignals();

 private:
  struct Signal {
    std::string sender;
    std::string name;
    Json values;
  };

  static int record(sd_bus_message* signal, void* peer, sd_bus_error*);
  void takePart() const;

  std::vector<Signal> signals_;

  struct Close {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  };
  std::unique_ptr<sd_bus, Close> bus_;
};

/// A panel: it owns the watcher's name, takes registrations, and uses the item of the application.
class Panel : public BusPeer {
 public:
  explicit Panel(const SessionBus& session);

  /// The names that were registered, in order.
  std::vector<std::string> registered;

  /// Whether each item is read when it is registered.
  bool readsItems = true;

  void waitForItem() const { waitForItems(1); }
  void waitForItems(std::size_t count) const {
    waitUntil([this, count] { return registered.size() >= count; });
  }

  /// The name of the application on the bus.
  static constexpr auto application = "com.fernhollow.Lumowatt";

  /// Calls a method of the item or of its menu; the values as sd_bus_message_append has them.
  template <typename... Values>
  Answer callItem(const char* method, const char* types = "", Values... values) const {
    return callApplication("/StatusNotifierItem", "org.kde.StatusNotifierItem", method, types,
                           values...);
  }
  template <typename... Values>
  Answer callMenu(const char* method, const char* types = "", Values... values) const {
    return callApplication("/MenuBar", "com.canonical.dbusmenu", method, types, values...);
  }

  /// A call of a method of the menu, to be filled and answered.
  sd_bus_message* newMenuCall(const char* method) const {
    return newCall(application, "/MenuBar", "com.canonical.dbusmenu", method);
  }

  /// A property of the item, or of one that was registered under this name, and all of the item or
  /// the menu.
  Json property(const char* name, const char* item = application) const;
  Json properties(const char* object, const char* interface) const;

  /// Opens the menu; whether it changed.
  bool open() const { return callMenu("AboutToShow", "i", 0).values.at(0); }

  /// Chooses an item of the menu; the error's name when that is refused.
  std::string click(int id) const { return send(id, "clicked"); }
  std::string send(int id, const char* event) const {
    return callMenu("Event", "isvu", id, event, "i", 0, 0U).error;
  }

  /// A property of an item of the menu.
  Json menuProperty(int id, const char* name) const {
    return callMenu("GetProperty", "is", id, name).values.at(0);
  }

 private:
  template <typename... Values>
  Answer callApplication(const char* object, const char* interface, const char* method,
                         const char* types, Values... values) const {
    sd_bus_message* const call = newCall(application, object, interface, method);
    EXPECT_GE(sd_bus_message_append(call, types, values...), 0);
    return answer(call);
  }

  static int takeRegistration(sd_bus_message* call, void* object, sd_bus_error*);
};

}  // namespace lumowatt
