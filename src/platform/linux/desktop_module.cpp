#include "platform/linux/desktop_module.h"

#include "base/out_of_memory.h"
#include "platform/linux/linux_desktop.h"

lumowatt::Desktop* lumowattDesktop(const char* program, const char* icons,
                                   lumowatt::BitmapFactory* bitmaps) {
  lumowatt::endWhenOutOfMemory();
  return new lumowatt::LinuxDesktop(program, icons,
                                    std::unique_ptr<lumowatt::BitmapFactory>(bitmaps));
}
