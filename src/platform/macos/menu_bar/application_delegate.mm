#include "platform/macos/menu_bar/application_delegate.h"

#include <utility>

using lumowatt::Action;

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
  _application->menuWillOpen();
  lumowatt::macos::fillMenu(menu, _application->menu(), self);
}

- (void)pick:(NSMenuItem*)sender {
  _application->perform({.action = Action::pick, .tag = sender.tag});
}

- (void)toggleColor {
  _application->perform({.action = Action::toggleColor});
}

- (void)toggleAnimate {
  _application->perform({.action = Action::toggleAnimate});
}

- (void)copyDetails {
  _application->perform({.action = Action::copyDetails});
}

- (void)toggleLogin {
  _application->perform({.action = Action::toggleLogin});
}

- (void)openSettings {
  _application->perform({.action = Action::openSettings});
}

@end
