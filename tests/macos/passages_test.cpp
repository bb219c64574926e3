// Checks passages of the macOS sources in which some mistakes would still compile, such as two
// swapped colors, states or statements. The sources must contain these passages word for word.
// Planted faults prove that the check detects mistakes.

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
  std::string file;
  std::string text;  ///< parts in backticks would still compile if they were swapped
};

std::ostream& operator<<(std::ostream& stream, const Passage& passage) {
  return stream << passage.file << ": " << passage.text;
}

std::vector<Passage> passages() {
  return {
      {"ServiceName", "battery_registry.mm", R"(IOServiceMatching("AppleSmartBattery"))"},
      {"NumberTypes", "battery_registry.mm",
       "if (type == CFNumberGetTypeID() || type == CFBooleanGetTypeID()) { "
       "NSNumber* const number = object; return "
       "PropertyValue::number(static_cast<std::int64_t>(number.unsignedLongLongValue)); }"},
      {"StringAndDictionaryTypes", "battery_registry.mm",
       "if (type == `CFStringGetTypeID()`) return PropertyValue::text(toString(object)); "
       "if (type == `CFDictionaryGetTypeID()`) return makeDictionary(object);"},

      {"TimerRepeats", "block_timer.mm", "scheduledTimerWithTimeInterval:interval repeats:YES"},
      {"TimerTolerance", "block_timer.mm", "timer.tolerance = interval / 10.0; return timer;"},
      {"TimerDestructor", "block_timer.mm", "BlockTimer::~BlockTimer() { [timer_ invalidate]; }"},

      {"ColorSpace", "drawing/app_kit_bitmap.mm", "colorSpaceName:NSDeviceRGBColorSpace"},
      {"FileType", "drawing/app_kit_bitmap.mm", "representationUsingType:NSBitmapImageFileTypePNG"},
      {"Pixels", "drawing/app_kit_bitmap.mm",
       "pixelsWide:static_cast<NSInteger>(`size.width` * scale) "
       "pixelsHigh:static_cast<NSInteger>(`size.height` * scale)"},
      {"Appearances", "drawing/app_kit_bitmap.mm",
       "isDark = appearance == Appearance::dark; NSAppearance* const systemAppearance = "
       "[NSAppearance "
       "appearanceNamed:isDark ? `NSAppearanceNameDarkAqua` : `NSAppearanceNameAqua`];"},
      {"OrderOfDrawing", "drawing/app_kit_bitmap.mm",
       "`[NSGraphicsContext saveGraphicsState];` `NSGraphicsContext.currentContext = context;` "
       "`CGContextScaleCTM(context.CGContext, scale, scale);` "
       "`[image drawInRect:NSMakeRect(0.0, 0.0, image.size.width, image.size.height)];` "
       "`[context flushGraphics];` `[NSGraphicsContext restoreGraphicsState];`"},

      {"Points", "drawing/app_kit_canvas.mm", "NSMakePoint(`point.x`, `point.y`)"},
      {"Rects", "drawing/app_kit_canvas.mm",
       "NSMakeRect(`rect.x`, `rect.y`, `rect.width`, `rect.height`)"},
      {"SystemRects", "drawing/app_kit_canvas.mm",
       "{`rect.origin.x`, `rect.origin.y`, `rect.size.width`, `rect.size.height`}"},
      {"DrawingSizes", "drawing/app_kit_canvas.mm",
       "NSMakeSize(`drawing.size.width`, `drawing.size.height`) flipped:drawing.flipped"},
      {"TextSizes", "drawing/app_kit_canvas.mm", "return {`size.width`, `size.height`};"},
      {"PathLines", "drawing/app_kit_canvas.mm",
       "(const MoveTo& move) const { [path `moveToPoint`:makePoint(move.to)]; } "
       "void operator()(const LineTo& line) const { [path `lineToPoint`:makePoint(line.to)]; }"},
      {"PathCurves", "drawing/app_kit_canvas.mm",
       "[path curveToPoint:makePoint(`curve.to`) controlPoint1:makePoint(`curve.control1`) "
       "controlPoint2:makePoint(`curve.control2`)]"},
      {"PathClosing", "drawing/app_kit_canvas.mm",
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

      {"ImageDescriptions", "drawing/images.mm",
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
      {"RgbColors", "drawing/styled_text.mm",
       "colorWithCalibratedRed:`color.red` green:`color.green` blue:`color.blue` alpha:1.0"},
      {"Grays", "drawing/styled_text.mm", "colorWithCalibratedWhite:color.white alpha:1.0"},
      {"Fonts", "drawing/styled_text.mm",
       "case Font::Face::boldSystem: return `[NSFont boldSystemFontOfSize:font.size]`; "
       "case Font::Face::monospacedDigits: return "
       "`[NSFont monospacedDigitSystemFontOfSize:font.size weight:NSFontWeightRegular]`; "
       "case Font::Face::system: break; } return `[NSFont systemFontOfSize:font.size]`;"},
      {"TextAttributes", "drawing/styled_text.mm",
       "dictionaryWithObject:makeFont(run.font) forKey:`NSFontAttributeName`]; "
       "if (run.color) attributes[`NSForegroundColorAttributeName`] = makeColor(*run.color); "
       "if (run.baselineOffset != 0.0) "
       "attributes[`NSBaselineOffsetAttributeName`] = @(run.baselineOffset);"},

      {"SymbolDescriptions", "drawing/symbols.mm",
       "description.empty() ? `nil` : `toNSString(description)`"},
      {"SymbolSizeAndTint", "drawing/symbols.mm",
       "if (!symbol.tint) return size; NSImageSymbolConfiguration* const palette = "
       "[NSImageSymbolConfiguration configurationWithPaletteColors:@[ makeColor(*symbol.tint) ]]; "
       "return size != nil ? `[size configurationByApplyingConfiguration:palette]` : `palette`;"},
      {"SymbolStyle", "drawing/symbols.mm",
       "style != nil ? `[image imageWithSymbolConfiguration:style]` : `image`"},
      {"UnstyledSymbolFallback", "drawing/symbols.mm",
       "NSImage* const image = styled != nil ? `styled` : `plain`; "
       "[image setTemplate:symbol.isTemplate]; return image;"},

      {"ActivationPolicy", "mac_desktop.mm",
       "setActivationPolicy:NSApplicationActivationPolicyAccessory"},
      {"ItemWidth", "mac_desktop.mm", "statusItemWithLength:NSVariableStatusItemLength"},
      {"Activity", "mac_desktop.mm",
       "id<NSObject> const activity = [process beginActivityWithOptions:"
       "NSActivityUserInitiatedAllowingIdleSystemSleep "
       "reason:@\"Shows the battery's present state\"]; "
       "`[application_ run];` `[process endActivity:activity];`"},
      {"ItemMenu", "mac_desktop.mm",
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
      {"LoginItemStatuses", "mac_desktop.mm",
       "case SMAppServiceStatusEnabled: return `LoginItemStatus::enabled`; "
       "case SMAppServiceStatusRequiresApproval: return `LoginItemStatus::requiresApproval`; "
       "case SMAppServiceStatusNotFound: return `LoginItemStatus::notFound`; "
       "case SMAppServiceStatusNotRegistered: break; } return `LoginItemStatus::notRegistered`;"},
      {"LoginItemRegistration", "mac_desktop.mm",
       "return isRegistered ? [service `registerAndReturnError`:nullptr] : "
       "[service `unregisterAndReturnError`:nullptr];"},
      {"BatterySettings", "mac_desktop.mm",
       "@\"x-apple.systempreferences:com.apple.Battery-Settings.extension\"]; "
       "if (url != nil) [NSWorkspace.sharedWorkspace openURL:url];"},

      {"Launch", "menu_bar/application_delegate.mm",
       "- (void)applicationDidFinishLaunching:(NSNotification*)notification { "
       "_application->applicationDidFinishLaunching(); }"},
      {"MenuOpening", "menu_bar/application_delegate.mm",
       "fillMenu(menu, _application->menuWillOpen(), self);"},

      {"ButtonImage", "menu_bar/item_button.mm",
       "button.image = image ? `makeImage(*image)` : `nil`;"},
      {"ButtonImagePosition", "menu_bar/item_button.mm", "button.imagePosition = NSImageLeading;"},
      {"ButtonTexts", "menu_bar/item_button.mm",
       "button.toolTip = toNSString(`contents.toolTip`); "
       "button.accessibilityLabel = toNSString(`contents.accessibilityLabel`);"},

      {"ChartImageScaling", "menu_bar/menu_items.mm", "content.imageScaling = NSImageScaleNone;"},
      {"ChartFrames", "menu_bar/menu_items.mm",
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
      {"ItemTargets", "menu_bar/menu_items.mm",
       "hasTarget = choice.action != Action::terminate; NSMenuItem* const item = "
       "[[NSMenuItem alloc] initWithTitle:toNSString(`title`) "
       "action:hasTarget ? @selector(choose:) : @selector(terminate:) "
       "keyEquivalent:toNSString(`key`)]; if (hasTarget) item.target = target;"},
      {"ItemActions", "menu_bar/menu_items.mm",
       "action:hasTarget ? `@selector(choose:)` : `@selector(terminate:)`"},
      {"ChoiceStoredInItem", "menu_bar/menu_items.mm",
       "item.representedObject = @(static_cast<NSInteger>(`choice.action`)); "
       "item.tag = `choice.tag`;"},
      {"ChoiceReadFromItem", "menu_bar/menu_items.mm",
       "NSNumber* const action = item.representedObject; return "
       "{.action = static_cast<Action>(`action.integerValue`), .tag = `item.tag`};"},
      {"ItemStates", "menu_bar/menu_items.mm",
       "item.state = isOn ? `NSControlStateValueOn` : `NSControlStateValueOff`;"},
      {"MenuReplacement", "menu_bar/menu_items.mm",
       "`[menu removeAllItems];` "
       "`for (const MenuItem& item : items) [menu addItem:std::visit(ItemMaker{target}, item)];`"},

      {"DelegateClass", "power_sources.mm",
       "const id delegate = NSApplication.sharedApplication.delegate; "
       "if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return; "
       "LumowattApplicationDelegate* const ownDelegate = delegate; "
       "if (ownDelegate.powerSourceAction != nil) ownDelegate.powerSourceAction();"},
      {"MissingRunLoopSource", "power_sources.mm",
       "if (source == nullptr) return; "
       "CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);"},
  };
}

/// Removes the comments and replaces each run of white space by one space.
std::string normalized(const std::string& source) {
  static const std::regex comments("//[^\n]*");
  static const std::regex blanks("\\s+");
  return std::regex_replace(std::regex_replace(source, comments, ""), blanks, " ");
}

/// Splits the passage at its backticks. The parts with odd indexes are those in backticks.
std::vector<std::string> parts(const Passage& passage) {
  std::vector<std::string> result{{}};
  for (const char c : passage.text) {
    if (c == '`') {
      result.emplace_back();
    } else {
      result.back() += c;
    }
  }
  return result;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += part;
  return text;
}

int count(const std::string& text, const std::string& part) {
  int occurrences = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++occurrences;
  }
  return occurrences;
}

bool occursOnce(const Passage& passage, const std::string& source) {
  return count(normalized(source), joined(parts(passage))) == 1;
}

/// Returns the passages that contain parts in backticks.
std::vector<Passage> passagesWithParts() {
  std::vector<Passage> result = passages();
  std::erase_if(result, [](const Passage& passage) { return parts(passage).size() == 1; });
  return result;
}

std::string nameOf(const testing::TestParamInfo<Passage>& info) { return info.param.name; }

}  // namespace

class MacPassage : public testing::TestWithParam<Passage> {};

TEST_P(MacPassage, OccursExactlyOnceInItsFile) {
  EXPECT_TRUE(occursOnce(GetParam(), fileContents(macosSources / GetParam().file)));
}

INSTANTIATE_TEST_SUITE_P(All, MacPassage, testing::ValuesIn(passages()), nameOf);

class MacPassageCheck : public testing::TestWithParam<Passage> {};

TEST_P(MacPassageCheck, DetectsSwappedParts) {
  const std::vector<std::string> right = parts(GetParam());
  const std::string source = normalized(fileContents(macosSources / GetParam().file));
  const std::size_t place = source.find(joined(right));
  ASSERT_NE(place, std::string::npos);
  for (std::size_t one = 1; one < right.size(); one += 2) {
    for (std::size_t other = one + 2; other < right.size(); other += 2) {
      std::vector<std::string> wrong = right;
      std::swap(wrong[one], wrong[other]);
      std::string changed = source;
      changed.replace(place, joined(right).size(), joined(wrong));
      EXPECT_FALSE(occursOnce(GetParam(), changed)) << right[one] << " and " << right[other];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, MacPassageCheck, testing::ValuesIn(passagesWithParts()), nameOf);

class MacBehaviorFault : public testing::TestWithParam<Fault> {};

TEST_P(MacBehaviorFault, CompilesButIsDetectedByTheCopyOfThePassage) {
  const PlantedFault planted(GetParam());
  const auto compiled = typeCheck(GetParam().source, ObjcBool::isBool, planted.folder());
  EXPECT_EQ(compiled.status, 0) << "the compiler reports the fault: " << compiled.errors;
  bool isDetected = false;
  for (const Passage& passage : passages()) {
    isDetected =
        isDetected || (passage.file == GetParam().file && !occursOnce(passage, planted.text()));
  }
  EXPECT_TRUE(isDetected);
}

INSTANTIATE_TEST_SUITE_P(
    All, MacBehaviorFault,
    testing::Values(
        Fault{.name = "GreenForOrange",
              .file = "drawing/styled_text.mm",
              .correct = "NSColor.systemOrangeColor",
              .faulty = "NSColor.systemGreenColor"},
        Fault{.name = "SwappedLineCaps",
              .file = "drawing/app_kit_canvas.mm",
              .correct = "LineCap::round ?",
              .faulty = "LineCap::butt ?"},
        Fault{.name = "FillColorForAStroke",
              .file = "drawing/app_kit_canvas.mm",
              .correct = "[makeColor(color) setStroke]",
              .faulty = "[makeColor(color) setFill]"},
        Fault{.name = "NoFallbackForUnstyledSymbol",
              .file = "drawing/symbols.mm",
              .correct = "styled != nil ? styled : plain",
              .faulty = "styled"},
        Fault{.name = "TintedSymbolAsTemplate",
              .file = "drawing/symbols.mm",
              .correct = "setTemplate:symbol.isTemplate",
              .faulty = "setTemplate:YES"},
        Fault{.name = "EnabledForNotFound",
              .file = "mac_desktop.mm",
              .correct = "return LoginItemStatus::notFound",
              .faulty = "return LoginItemStatus::enabled"},
        Fault{.name = "InvertedRegistration",
              .file = "mac_desktop.mm",
              .correct = "isRegistered ? [service",
              .faulty = "!isRegistered ? [service"},
        Fault{.name = "BooleanStoredAsInteger",
              .file = "mac_desktop.mm",
              .correct = "[store setBool:*isOn",
              .faulty = "[store setInteger:*isOn"},
        Fault{.name = "PasteboardNotCleared",
              .file = "mac_desktop.mm",
              .correct = "  [pasteboard clearContents];\n",
              .faulty = ""},
        Fault{.name = "PasteboardClearedAfterCopying",
              .file = "mac_desktop.mm",
              .correct = "NSPasteboardTypeString];",
              .faulty = "NSPasteboardTypeString];\n  [pasteboard clearContents];"},
        Fault{.name = "ActivityThatPreventsSleep",
              .file = "mac_desktop.mm",
              .correct = "NSActivityUserInitiatedAllowingIdleSystemSleep",
              .faulty = "NSActivityUserInitiated"},
        Fault{.name = "ActivityEndedBeforeTheEventLoop",
              .file = "mac_desktop.mm",
              .correct = "  [application_ run];\n  [process endActivity:activity];\n",
              .faulty = "  [process endActivity:activity];\n  [application_ run];\n"},
        Fault{.name = "TimerWithoutTolerance",
              .file = "block_timer.mm",
              .correct = "  timer.tolerance = interval / 10.0;\n",
              .faulty = ""},
        Fault{.name = "LineNotDisabled",
              .file = "menu_bar/menu_items.mm",
              .correct = "    item.enabled = NO;\n",
              .faulty = ""},
        Fault{.name = "InvertedState",
              .file = "menu_bar/menu_items.mm",
              .correct = "item.state = isOn ?",
              .faulty = "item.state = !isOn ?"},
        Fault{.name = "DelegateClassNotChecked",
              .file = "power_sources.mm",
              .correct = "if (![delegate isKindOfClass:LumowattApplicationDelegate.class]) return;",
              .faulty = "if (delegate == nil) return;"},
        Fault{.name = "MissingActionNotChecked",
              .file = "power_sources.mm",
              .correct = "if (ownDelegate.powerSourceAction != nil) ownDelegate.",
              .faulty = "ownDelegate."}),
    nameOfFault);

}  // namespace lumowatt
