#include "program/panel.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

#include "program/message_json.h"

namespace lumowatt {

namespace {

constexpr auto timeout = std::chrono::seconds(20);
constexpr auto pollInterval = std::chrono::milliseconds(10);

void waitUntilTrue(const std::function<bool()>& condition, const std::function<void()>& meanwhile) {
  const auto end = std::chrono::steady_clock::now() + timeout;
  while (!condition()) {
    ASSERT_LT(std::chrono::steady_clock::now(), end) << "timed out";
    meanwhile();
  }
}

}  // namespace

SessionBus::SessionBus(const std::string& configuration) {
  // The configuration names no folder of services, so the bus starts none of those installed.
  folder_.write("session.conf", "<busconfig><type>session</type><listen>" + address() +
                                    "</listen><policy context='default'><allow "
                                    "send_destination='*'/><allow eavesdrop='true'/>"
                                    "<allow own='*'/></policy>" +
                                    configuration + "</busconfig>");
  daemon_ = std::make_unique<Process>(
      std::vector<std::string>{"dbus-daemon", "--nofork", "--print-address",
                               "--config-file=" + (folder_.path() / "session.conf").string()});
  waitUntilTrue([this] { return !daemon_->output().empty(); },
                [] { std::this_thread::sleep_for(pollInterval); });
}

void SessionBus::kill() {
  daemon_->send(SIGKILL);
  daemon_->wait();
}

void SessionBus::pause() const { daemon_->send(SIGSTOP); }
void SessionBus::resume() const { daemon_->send(SIGCONT); }

BusPeer::BusPeer(const SessionBus& session) {
  sd_bus* bus = nullptr;
  EXPECT_GE(sd_bus_new(&bus), 0);
  bus_.reset(bus);
  EXPECT_GE(sd_bus_set_address(bus, session.address().c_str()), 0);
  EXPECT_GE(sd_bus_set_bus_client(bus, 1), 0);
  EXPECT_GE(sd_bus_start(bus), 0);
  for (const char* const interface : {"org.kde.StatusNotifierItem", "com.canonical.dbusmenu"}) {
    EXPECT_GE(sd_bus_match_signal(bus, nullptr, nullptr, nullptr, interface, nullptr, record, this),
              0);
  }
}

int BusPeer::record(sd_bus_message* signal, void* peer, sd_bus_error*) {
  static_cast<BusPeer*>(peer)->signals_.push_back(
      {sd_bus_message_get_sender(signal), sd_bus_message_get_member(signal), readValues(signal)});
  return 0;
}

void BusPeer::own(const char* name) const {
  EXPECT_GE(sd_bus_request_name(bus(), name, 0), 0) << name;
}

bool BusPeer::isOwned(const char* name) const {
  return sd_bus_get_name_creds(bus(), name, 0, nullptr) >= 0;
}

sd_bus_message* BusPeer::newMethodCall(const char* destination, const char* object,
                                       const char* interface, const char* method) const {
  sd_bus_message* message = nullptr;
  EXPECT_GE(sd_bus_message_new_method_call(bus(), &message, destination, object, interface, method),
            0);
  return message;
}

Reply BusPeer::call(sd_bus_message* message) const {
  sd_bus_error error{};
  sd_bus_message* reply = nullptr;
  sd_bus_call(bus(), message, 0, &error, &reply);
  Reply result{.values = reply != nullptr ? readValues(reply) : Json::array(),
               .error = error.name != nullptr ? error.name : ""};
  sd_bus_message_unref(message);
  sd_bus_message_unref(reply);
  sd_bus_error_free(&error);
  return result;
}

void BusPeer::waitUntil(const std::function<bool()>& condition) const {
  waitUntilTrue(condition, [this] {
    processMessages();
    sd_bus_wait(bus(), static_cast<std::uint64_t>(std::chrono::microseconds(pollInterval).count()));
  });
}

void BusPeer::processLateMessages() const {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
  waitUntil([end] { return std::chrono::steady_clock::now() > end; });
}

void BusPeer::processMessages() const {
  while (sd_bus_process(bus(), nullptr) > 0) continue;
}

std::vector<std::string> BusPeer::signalNames(const std::string& sender) const {
  processMessages();
  std::vector<std::string> names;
  names.reserve(signals_.size());
  for (const Signal& signal : signals_) {
    if (sender.empty() || signal.sender == sender) names.push_back(signal.name);
  }
  return names;
}

bool BusPeer::hasReceived(const std::string& name) const {
  const auto names = signalNames();
  return std::ranges::find(names, name) != names.end();
}

Json BusPeer::signal(const std::string& name) const {
  processMessages();
  const auto last = std::find_if(signals_.rbegin(), signals_.rend(),
                                 [&](const Signal& signal) { return signal.name == name; });
  EXPECT_NE(last, signals_.rend()) << name;
  return last == signals_.rend() ? Json() : last->values;
}

void BusPeer::clearSignals() {
  processMessages();
  signals_.clear();
}

Panel::Panel(const SessionBus& session) : BusPeer(session) {
  static const sd_bus_vtable watcher[] = {
      SD_BUS_VTABLE_START(0),
      SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", handleRegistration, 0),
      SD_BUS_VTABLE_END,
  };
  EXPECT_GE(sd_bus_add_object_vtable(bus(), nullptr, "/StatusNotifierWatcher",
                                     "org.kde.StatusNotifierWatcher", watcher, this),
            0);
  own("org.kde.StatusNotifierWatcher");
}

int Panel::handleRegistration(sd_bus_message* message, void* panel, sd_bus_error*) {
  auto& self = *static_cast<Panel*>(panel);
  const std::string item = self.registered.emplace_back(readValue(message));
  if (self.readsItems) {
    const bool isPath = item.starts_with('/');
    sd_bus_call_method_async(self.bus(), nullptr, sd_bus_message_get_sender(message),
                             isPath ? item.c_str() : "/StatusNotifierItem",
                             "org.freedesktop.DBus.Properties", "GetAll", nullptr, nullptr, "s",
                             "org.kde.StatusNotifierItem");
  }
  return sd_bus_reply_method_return(message, "");
}

Json Panel::property(const char* name, const char* item) const {
  sd_bus_message* const message =
      newMethodCall(item, "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get");
  EXPECT_GE(sd_bus_message_append(message, "ss", "org.kde.StatusNotifierItem", name), 0);
  return call(message).values.at(0);
}

Json Panel::properties(const char* object, const char* interface) const {
  return callApplication(object, "org.freedesktop.DBus.Properties", "GetAll", "s", interface)
      .values.at(0);
}

}  // namespace lumowatt
