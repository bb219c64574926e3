#include "platform/linux/desktop/module.h"

#include "platform/linux/desktop/linux_desktop.h"
#include "telemetry/out_of_memory.h"

lumowatt::Desktop* lumowattDesktop(const char* program, const char* icons,
                                   lumowatt::BitmapFactory* bitmaps) {
  lumowatt::endWhenOutOfMemory();
  return new lumowatt::desktop::LinuxDesktop(program, icons,
                                             std::unique_ptr<lumowatt::BitmapFactory>(bitmaps));
}
