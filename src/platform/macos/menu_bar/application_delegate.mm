#include "platform/macos/menu_bar/application_delegate.h"

#include <utility>

@implementation LumowattApplicationDelegate {
  std::shared_ptr<lumowatt::ApplicationDelegate> _application;
}

- (instancetype)initWithApplication:(std::shared_ptr<lumowatt::ApplicationDelegate>)application {
  self = [super init];
  if (self != nil) _application = std::move(application);
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  _application->applicationDidFinishLaunching();
}

- (void)menuWillOpen:(NSMenu*)menu {
  lumowatt::macos::fillMenu(menu, _application->menuWillOpen(), self);
}

- (void)choose:(NSMenuItem*)sender {
  _application->perform(lumowatt::macos::choiceOf(sender));
}

@end
