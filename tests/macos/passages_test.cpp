// What a compiler takes either way: which of the system's colors, states, names and operations a
// value stands for, and in which order things are done. Such passages of the Mac's sources are
// required word for word, and faults in them show that an exchange is seen.

#include <gtest/gtest.h>

#include <regex>
#include <utility>

#include "macos/compiler.h"
#include "macos/fault.h"
#include "support/files.h"

namespace lumowatt {

namespace {

struct Passage {
  std::string name;
  std::string in;
  std::string text;  ///< parts between grave accents would compile in each other's place
};

std::ostream& operator<<(std::ostream& stream, const Passage& passage) {
  return stream << passage.in << ": " << passage.text;
}

std::vector<Passage> passages() {
  return {
      {"Battery", "battery_registry.mm", R"(IOServiceMatching("AppleSmartBattery"))"},
      {"Numbers", "battery_registry.mm",
       "if (type == CFNumberGetTypeID() || type == CFBooleanGetTypeID()) { "
       "NSNumber* const number = object; return "
       "PropertyValue::number(static_cast<std::int64_t>(number.unsignedLongLongValue)); }"},
      {"TextsAndDictionaries", "battery_registry.mm",
       "if (type == `CFStringGetTypeID()`) return PropertyValue::text(toString(object)); "
       "if (type == `CFDictionaryGetTypeID()`) return makeDictionary(object);"},

      {"Repetition", "block_timer.mm", "scheduledTimerWithTimeInterval:interval repeats:YES"},
      {"Tolerance", "block_timer.mm", "timer.tolerance = interval / 10.0; return timer;"},
      {"EndOfATimer", "block_timer.mm", "BlockTimer::~BlockTimer() { [timer_ invalidate]; }"},

      {"ColorSpace", "drawing/app_kit_bitmap.mm", "colorSpaceName:NSDeviceRGBColorSpace"},
      {"FileType", "drawing/app_kit_bitmap.mm", "representationUsingType:NSBitmapImageFileTypePNG"},
      {"Pixels", "drawing/app_kit_bitmap.mm",
       "pixelsWide:static_cast<NSInteger>(`size.width` * scale) "
       "pixelsHigh:static_cast<NSInteger>(`size.height` * scale)"},
      {"Appearances", "drawing/app_kit_bitmap.mm",
       "isDark = appearance == Appearance::dark; NSAppearance* const named = [NSAppearance "
       "appearanceNamed:isDark ? `NSAppearanceNameDarkAqua` : `NSAppearanceNameAqua`];"},
      {"OrderOfDrawing", "drawing/app_kit_bitmap.mm",
       "`[NSGraphicsContext saveGraphicsState];` `NSGraphicsContext.currentContext = context;` "
       "`CGContextScaleCTM(context.CGContext, scale, scale);` "
       "`[image drawInRect:NSMakeRect(0.0, 0.0, image.size.width, image.size.height)];` "
       "`[context flushGraphics];` `[NSGraphicsContext restoreGraphicsState];`"},

      {"Points", "drawing/app_kit_canvas.mm", "NSMakePoint(`point.x`, `point.y`)"},
      {"Rects", "drawing/app_kit_canvas.mm",
       "NSMakeRect(`rect.x`, `rect.y`, `rect.width`, `rect.height`)"},
      {"RectsOfTheSystem", "drawing/app_kit_canvas.mm",
       "{`rect.origin.x`, `rect.origin.y`, `rect.size.width`, `rect.size.height`}"},
      {"SizesOfDrawings", "drawing/app_kit_canvas.mm",
       "NSMakeSize(`drawing.size.width`, `drawing.size.height`) flipped:drawing.flipped"},
      {"SizesOfTexts", "drawing/app_kit_canvas.mm", "return {`size.width`, `size.height`};"},
      {"Movements", "drawing/app_kit_canvas.mm",
       "(const MoveTo& move) const { [path `moveToPoint`:makePoint(move.to)]; } "
       "void operator()(const LineTo& line) const { [path `lineToPoint`:makePoint(line.to)]; }"},
      {"Curves", "drawing/app_kit_canvas.mm",
       "[path curveToPoint:makePoint(`curve.to`) controlPoint1:makePoint(`curve.control1`) "
       "controlPoint2:makePoint(`curve.control2`)]"},
      {"ClosedPaths", "drawing/app_kit_canvas.mm",
       "(const ClosePath&) const { [path closePath]; }"},
      {"LineJoins", "drawing/app_kit_canvas.mm",
       "line.lineJoinStyle = stroke.join == LineJoin::round ? `NSLineJoinStyleRound` : "
       "`NSLineJoinStyleMiter`;"},
      {"LineCaps", "drawing/app_kit_canvas.mm",
       "line.lineCapStyle = stroke.cap == LineCap::round ? `NSLineCapStyleRound` : "
       "`NSLineCapStyleButt`;"},
      {"Strokes", "drawing/app_kit_canvas.mm", "[makeColor(color) setStroke]; [line stroke];"},
      {"FilledRects", "drawing/app_kit_canvas.mm",
       "[makeColor(color) setFill]; NSRectFillUsingOperation(makeRect(rect), "
       "NSGraphicsContext.currentContext.compositingOperation);"},
      {"FilledPaths", "drawing/app_kit_canvas.mm",
       "[[makeColor(color) colorWithAlphaComponent:opacity] setFill]; [makePath(path) fill];"},
      {"FilledRoundedRects", "drawing/app_kit_canvas.mm",
       "[makeColor(color) setFill]; [[NSBezierPath bezierPathWithRoundedRect:makeRect(rect) "
       "xRadius:radius yRadius:radius] fill];"},

      {"Descriptions", "drawing/images.mm",
       "description.empty() ? `nil` : `toNSString(description)`"},

      {"SystemColors", "drawing/styled_text.mm",
       "case SystemColor::green: return `NSColor.systemGreenColor`; "
       "case SystemColor::orange: return `NSColor.systemOrangeColor`; "
       "case SystemColor::red: return `NSColor.systemRedColor`; "
       "case SystemColor::accent: return `NSColor.controlAccentColor`; "
       "case SystemColor::label: return `NSColor.labelColor`; "
       "case SystemColor::secondaryLabel: return `NSColor.secondaryLabelColor`; "
       "case SystemColor::separator: return `NSColor.separatorColor`; "
       "case SystemColor::windowBackground: break; } return `NSColor.windowBackgroundColor`;"},
      {"OtherColors", "drawing/styled_text.mm",
       "colorWithCalibratedRed:`color.red` green:`color.green` blue:`color.blue` alpha:1.0"},
      {"Grays", "drawing/styled_text.mm", "colorWithCalibratedWhite:color.white alpha:1.0"},
      {"Fonts", "drawing/styled_text.mm",
       "case Font::Face::boldSystem: return `[NSFont boldSystemFontOfSize:font.size]`; "
       "case Font::Face::monospacedDigits: return "
       "`[NSFont monospacedDigitSystemFontOfSize:font.size weight:NSFontWeightRegular]`; "
       "case Font::Face::system: break; } return `[NSFont systemFontOfSize:font.size]`;"},
      {"Attributes", "drawing/styled_text.mm",
       "dictionaryWithObject:makeFont(run.font) forKey:`NSFontAttributeName`]; "
       "if (run.color) attributes[`NSForegroundColorAttributeName`] = makeColor(*run.color); "
       "if (run.baselineOffset != 0.0) "
       "attributes[`NSBaselineOffsetAttributeName`] = @(run.baselineOffset);"},

      {"DescribedSymbols", "drawing/symbols.mm",
       "description.empty() ? `nil` : `toNSString(description)`"},
      {"SizeAndTint", "drawing/symbols.mm",
       "if (!symbol.tint) return size; NSImageSymbolConfiguration* const palette = "
       "[NSImageSymbolConfiguration configurationWithPaletteColors:@[ makeColor(*symbol.tint) ]]; "
       "return size != nil ? `[size configurationByApplyingConfiguration:palette]` : `palette`;"},
      {"Style", "drawing/symbols.mm",
       "style != nil ? `[image imageWithSymbolConfiguration:style]` : `image`"},
      {"UntintedFallback", "drawing/symbols.mm",
       "NSImage* const image = withStyle != nil ? `withStyle` : `plain`; "
       "[image setTemplate:symbol.isTemplate]; return image;"},

      {"Accessory", "mac_desktop.mm", "setActivationPolicy:NSApplicationActivationPolicyAccessory"},
      {"WidthOfTheItem", "mac_desktop.mm", "statusItemWithLength:NSVariableStatusItemLength"},
      {"Activity", "mac_desktop.mm",
       "id<NSObject> const activity = [process beginActivityWithOptions:"
       "NSActivityUserInitiatedAllowingIdleSystemSleep "
       "reason:@\"Shows the battery's present state\"]; "
       "`[application_ run];` `[process endActivity:activity];`"},
      {"MenuOfTheItem", "mac_desktop.mm",
       "`item_.autosaveName = toNSString(autosaveName);` `menu_.delegate = delegate_;` "
       "`item_.menu = menu_;`"},
      {"Clock", "mac_desktop.mm",
       "clock_gettime(CLOCK_MONOTONIC_RAW, &time); "
       "return static_cast<double>(`time.tv_sec`) + static_cast<double>(`time.tv_nsec`) / 1e9;"},
      {"ReadPreferences", "mac_desktop.mm",
       "if ([store objectForKey:key] == nil) continue; value = {.integer = "
       "[store `integerForKey:key`], .boolean = [store `boolForKey:key`] == YES};"},
      {"WrittenPreferences", "mac_desktop.mm",
       "if (const bool* const isOn = std::get_if<bool>(&value)) { "
       "[store `setBool:*isOn` forKey:toNSString(key)]; } else { [store "
       "`setInteger:static_cast<NSInteger>(std::get<std::int64_t>(value))` "
       "forKey:toNSString(key)]; }"},
      {"ReducedMotion", "mac_desktop.mm",
       "return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;"},
      {"Pasteboard", "mac_desktop.mm",
       "`[pasteboard clearContents];` "
       "`[pasteboard setString:toNSString(text) forType:NSPasteboardTypeString];` }"},
      {"LoginItemStates", "mac_desktop.mm",
       "case SMAppServiceStatusEnabled: return `LoginItemStatus::enabled`; "
       "case SMAppServiceStatusRequiresApproval: return `LoginItemStatus::requiresApproval`; "
       "case SMAppServiceStatusNotFound: return `LoginItemStatus::notFound`; "
       "case SMAppServiceStatusNotRegistered: break; } return `LoginItemStatus::notRegistered`;"},
      {"LoginItem", "mac_desktop.mm",
       "return isRegistered ? [service `registerAndReturnError`:nullptr] : "
       "[service `unregisterAndReturnError`:nullptr];"},
      {"BatterySettings", "mac_desktop.mm",
       "@\"x-apple.systempreferences:com.apple.Battery-Settings.extension\"]; "
       "if (url != nil) [NSWorkspace.sharedWorkspace openURL:url];"},

      {"Launch", "menu_bar/application_delegate.mm",
       "- (void)applicationDidFinishLaunching:(NSNotification*)notification { "
       "_application->applicationDidFinishLaunching(); }"},
      {"OpeningMenu", "menu_bar/application_delegate.mm",
       "fillMenu(menu, _application->menuWillOpen(), self);"},

      {"ImageOfTheButton", "menu_bar/item_button.mm",
       "button.image = image ? `makeImage(*image)` : `nil`;"},
      {"ImagePosition", "menu_bar/item_button.mm", "button.imagePosition = NSImageLeading;"},
      {"TextsOfTheButton", "menu_bar/item_button.mm",
       "button.toolTip = toNSString(`contents.toolTip`); "
       "button.accessibilityLabel = toNSString(`contents.accessibilityLabel`);"},

      {"ImageScaling", "menu_bar/menu_items.mm", "content.imageScaling = NSImageScaleNone;"},
      {"FramesOfTheChart", "menu_bar/menu_items.mm",
       "[[NSImageView alloc] initWithFrame:makeRect(`view.content.frame`)]; "
       "content.image = makeImage(view.content.image); content.imageScaling = NSImageScaleNone; "
       "NSView* const container = [[NSView alloc] initWithFrame:makeRect(`view.frame`)]; "
       "[container addSubview:content]; return container;"},
      {"DisabledLine", "menu_bar/menu_items.mm", "item.enabled = NO; return item;"},
      {"Commands", "menu_bar/menu_items.mm",
       "makeChoice(command.title, command.choice, command.keyEquivalent, false)"},
      {"CheckMarks", "menu_bar/menu_items.mm",
       "(const MenuCheckMark& mark) const { "
       "return makeChoice(mark.title, mark.choice, \"\", mark.isOn); }"},
      {"RadioMarks", "menu_bar/menu_items.mm",
       "(const MenuRadioMark& mark) const { "
       "return makeChoice(mark.title, mark.choice, \"\", mark.isOn); }"},
      {"Targets", "menu_bar/menu_items.mm",
       "isOwn = choice.action != Action::terminate; NSMenuItem* const item = "
       "[[NSMenuItem alloc] initWithTitle:toNSString(`title`) "
       "action:isOwn ? @selector(choose:) : @selector(terminate:) "
       "keyEquivalent:toNSString(`key`)]; if (isOwn) item.target = target;"},
      {"Actions", "menu_bar/menu_items.mm",
       "action:isOwn ? `@selector(choose:)` : `@selector(terminate:)`"},
      {"OfferedChoice", "menu_bar/menu_items.mm",
       "item.representedObject = @(static_cast<NSInteger>(`choice.action`)); "
       "item.tag = `choice.tag`;"},
      {"ChosenChoice", "menu_bar/menu_items.mm",
       "NSNumber* const action = item.representedObject; return "
       "{.action = static_cast<Action>(`action.integerValue`), .tag = `item.tag`};"},
      {"States", "menu_bar/menu_items.mm",
       "item.state = isOn ? `NSControlStateValueOn` : `NSControlStateValueOff`;"},
      {"FilledMenu", "menu_bar/menu_items.mm",
       "`[menu removeAllItems];` "
       "`for (const MenuItem& item : items) [menu addItem:std::visit(ItemMaker{target}, item)];`"},

      {"DelegateOfTheApplication", "power_sources.mm",
       "const id delegate = NSApplication.sharedApplication.delegate; "
       "if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return; "
       "LumowattApplicationDelegate* const own = delegate; "
       "if (own.powerSourceAction != nil) own.powerSourceAction();"},
      {"AbsentSource", "power_sources.mm",
       "if (source == nullptr) return; "
       "CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);"},
  };
}

/// The source without its comments, on one line.
std::string condensed(const std::string& source) {
  static const std::regex comments("//[^\n]*");
  static const std::regex blanks("\\s+");
  return std::regex_replace(std::regex_replace(source, comments, ""), blanks, " ");
}

/// The passage's parts: those at odd places stand between grave accents.
std::vector<std::string> parts(const Passage& passage) {
  std::vector<std::string> found{{}};
  for (const char c : passage.text) {
    if (c == '`') {
      found.emplace_back();
    } else {
      found.back() += c;
    }
  }
  return found;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += part;
  return text;
}

int count(const std::string& text, const std::string& part) {
  int found = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

bool standsOnce(const Passage& passage, const std::string& source) {
  return count(condensed(source), joined(parts(passage))) == 1;
}

std::vector<Passage> passagesWithParts() {
  std::vector<Passage> found = passages();
  std::erase_if(found, [](const Passage& passage) { return parts(passage).size() == 1; });
  return found;
}

std::string nameOf(const testing::TestParamInfo<Passage>& info) { return info.param.name; }

}  // namespace

class MacPassage : public testing::TestWithParam<Passage> {};

TEST_P(MacPassage, StandsWhereItBelongsAndOnce) {
  EXPECT_TRUE(standsOnce(GetParam(), fileContents(macosSources / GetParam().in)));
}

INSTANTIATE_TEST_SUITE_P(All, MacPassage, testing::ValuesIn(passages()), nameOf);

class MacExchange : public testing::TestWithParam<Passage> {};

TEST_P(MacExchange, OfAnyTwoPartsIsSeen) {
  const std::vector<std::string> right = parts(GetParam());
  const std::string source = condensed(fileContents(macosSources / GetParam().in));
  const std::size_t place = source.find(joined(right));
  ASSERT_NE(place, std::string::npos);
  for (std::size_t one = 1; one < right.size(); one += 2) {
    for (std::size_t other = one + 2; other < right.size(); other += 2) {
      std::vector<std::string> wrong = right;
      std::swap(wrong[one], wrong[other]);
      std::string changed = source;
      changed.replace(place, joined(right).size(), joined(wrong));
      EXPECT_FALSE(standsOnce(GetParam(), changed)) << right[one] << " and " << right[other];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, MacExchange, testing::ValuesIn(passagesWithParts()), nameOf);

class MacFault : public testing::TestWithParam<Fault> {};

TEST_P(MacFault, CompilesAndIsSeen) {
  const PlantedFault planted(GetParam());
  const auto compiled = typeCheck(GetParam().of, ObjcBool::isBool, planted.folder());
  EXPECT_EQ(compiled.status, 0) << "the compiler sees it: " << compiled.errors;
  bool isSeen = false;
  for (const Passage& passage : passages()) {
    isSeen = isSeen || (passage.in == GetParam().in && !standsOnce(passage, planted.text()));
  }
  EXPECT_TRUE(isSeen);
}

INSTANTIATE_TEST_SUITE_P(
    All, MacFault,
    testing::Values(
        Fault{.name = "GreenForOrange",
              .in = "drawing/styled_text.mm",
              .right = "NSColor.systemOrangeColor",
              .wrong = "NSColor.systemGreenColor"},
        Fault{.name = "SquareCapsForRound",
              .in = "drawing/app_kit_canvas.mm",
              .right = "LineCap::round ?",
              .wrong = "LineCap::butt ?"},
        Fault{.name = "FillColorForAStroke",
              .in = "drawing/app_kit_canvas.mm",
              .right = "[makeColor(color) setStroke]",
              .wrong = "[makeColor(color) setFill]"},
        Fault{.name = "NoGlyphWhenItCannotBeTinted",
              .in = "drawing/symbols.mm",
              .right = "withStyle != nil ? withStyle : plain",
              .wrong = "withStyle"},
        Fault{.name = "TintedGlyphsRecolored",
              .in = "drawing/symbols.mm",
              .right = "setTemplate:symbol.isTemplate",
              .wrong = "setTemplate:YES"},
        Fault{.name = "EnabledForNotFound",
              .in = "mac_desktop.mm",
              .right = "return LoginItemStatus::notFound",
              .wrong = "return LoginItemStatus::enabled"},
        Fault{.name = "RegisteringTheOtherWay",
              .in = "mac_desktop.mm",
              .right = "isRegistered ? [service",
              .wrong = "!isRegistered ? [service"},
        Fault{.name = "BooleanStoredAsANumber",
              .in = "mac_desktop.mm",
              .right = "[store setBool:*isOn",
              .wrong = "[store setInteger:*isOn"},
        Fault{.name = "PasteboardNotCleared",
              .in = "mac_desktop.mm",
              .right = "  [pasteboard clearContents];\n",
              .wrong = ""},
        Fault{.name = "PasteboardClearedAfterwards",
              .in = "mac_desktop.mm",
              .right = "NSPasteboardTypeString];",
              .wrong = "NSPasteboardTypeString];\n  [pasteboard clearContents];"},
        Fault{.name = "ActivityOfAnotherKind",
              .in = "mac_desktop.mm",
              .right = "NSActivityUserInitiatedAllowingIdleSystemSleep",
              .wrong = "NSActivityUserInitiated"},
        Fault{.name = "ActivityEndedAtOnce",
              .in = "mac_desktop.mm",
              .right = "  [application_ run];\n  [process endActivity:activity];\n",
              .wrong = "  [process endActivity:activity];\n  [application_ run];\n"},
        Fault{.name = "TimerWithoutTolerance",
              .in = "block_timer.mm",
              .right = "  timer.tolerance = interval / 10.0;\n",
              .wrong = ""},
        Fault{.name = "EnabledLine",
              .in = "menu_bar/menu_items.mm",
              .right = "    item.enabled = NO;\n",
              .wrong = ""},
        Fault{.name = "OffForOn",
              .in = "menu_bar/menu_items.mm",
              .right = "item.state = isOn ?",
              .wrong = "item.state = !isOn ?"},
        Fault{.name = "DelegateOfAnyClass",
              .in = "power_sources.mm",
              .right = "if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return;",
              .wrong = "if (delegate == nil) return;"},
        Fault{.name = "DelegateWithoutAnAction",
              .in = "power_sources.mm",
              .right = "if (own.powerSourceAction != nil) own.",
              .wrong = "own."}),
    nameOfFault);

}  // namespace lumowatt
