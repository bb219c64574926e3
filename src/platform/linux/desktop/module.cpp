#include "platform/linux/desktop/module.h"

#include "platform/linux/desktop/linux_desktop.h"

lumowatt::Desktop* lumowattDesktop(const char* program, const char* icons,
                                   lumowatt::BitmapFactory* bitmaps) {
  return new lumowatt::desktop::LinuxDesktop(program, icons,
                                             std::unique_ptr<lumowatt::BitmapFactory>(bitmaps));
}
