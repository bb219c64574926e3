#pragma once

#include <clocale>
#include <string>

namespace lumowatt {

/// Sets the process's locale to one with a decimal comma, and back at the end of its life.
class GermanLocale {
 public:
  GermanLocale() : known_(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {}
  GermanLocale(const GermanLocale&) = delete;
  GermanLocale& operator=(const GermanLocale&) = delete;
  ~GermanLocale() { std::setlocale(LC_ALL, "C"); }

  /// Whether the build could compile it, or the system brings it. musl knows no such locale.
  static constexpr bool isSupported = LUMOWATT_HAS_LOCALES;

  /// Whether it is in force: a test that changes nothing shows nothing.
  bool isInForce() const { return known_ && std::string(std::localeconv()->decimal_point) == ","; }

 private:
  bool known_;
};

}  // namespace lumowatt
