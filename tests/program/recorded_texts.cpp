// Library to preload that logs each text that Pango lays out, as a line of the file whose name is
// in the environment variable RECORDED_TEXTS.

#include <dlfcn.h>
#include <pango/pango-layout.h>

#include <cstdlib>
#include <fstream>
#include <string_view>

extern "C" __attribute__((visibility("default"))) void pango_layout_set_text(PangoLayout* layout,
                                                                             const char* text,
                                                                             int length) {
  std::ofstream(std::getenv("RECORDED_TEXTS"), std::ios::app)
      << std::string_view(text, static_cast<std::size_t>(length)) << '\n';
  // RTLD_NEXT does not find Pango, which is loaded with RTLD_LOCAL, as a dependency of a module.
  void* const pango = ::dlopen("libpango-1.0.so.0", RTLD_LAZY | RTLD_NOLOAD);
  using SetText = decltype(pango_layout_set_text);
  reinterpret_cast<SetText*>(::dlsym(pango, "pango_layout_set_text"))(layout, text, length);
  ::dlclose(pango);
}
