// The Mac's sources, on a machine that has no Mac's headers: each is type-checked and its ownership
// analysed against declarations of our own, and a list of faults shows that these checks see them.

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <utility>

#include "macos/compiler.h"
#include "macos/fault.h"
#include "support/files.h"

namespace lumowatt {

namespace {

std::string nameOfFile(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param.substr(0, info.param.find('.'));
  std::ranges::replace(name, '/', '_');
  return name;
}

void expectSeen(const ProcessResult& result, const Fault& fault) {
  EXPECT_NE(result.status, 0);
  EXPECT_NE(result.errors.find(fault.seen), std::string::npos) << result.errors;
}

}  // namespace

class MacSource : public testing::TestWithParam<std::string> {};

TEST_P(MacSource, IsWellTypedWithEitherKindOfBool) {
  for (const ObjcBool boolType : {ObjcBool::isBool, ObjcBool::isChar}) {
    const auto result = typeCheck(GetParam(), boolType);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
  }
}

TEST_P(MacSource, ReleasesWhatItOwns) {
  const auto result = ownershipCheck(GetParam());
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
}

TEST_P(MacSource, IsPartOfTheBuild) {
  const std::string build = fileContents(macosSources / "CMakeLists.txt");
  EXPECT_NE(build.find("  " + GetParam()), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(All, MacSource, testing::ValuesIn(macosFiles(".mm")), nameOfFile);

TEST(MacSources, AreThinWithTheirHeaders) {
  for (const char* const extension : {".mm", ".h"}) {
    for (const std::string& file : macosFiles(extension)) {
      const std::string text = fileContents(macosSources / file);
      EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 200) << file;
    }
  }
}

class MistypedMacSource : public testing::TestWithParam<Fault> {};

TEST_P(MistypedMacSource, IsSeen) {
  const PlantedFault planted(GetParam());
  expectSeen(typeCheck(GetParam().of, ObjcBool::isBool, planted.folder()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    All, MistypedMacSource,
    testing::Values(
        Fault{.name = "MisspeltSelector",
              .in = "block_timer.mm",
              .right = "repeats:YES",
              .wrong = "repeat:YES",
              .seen = "no known class method for selector"},
        Fault{.name = "MisspeltClass",
              .in = "menu_bar/menu_items.mm",
              .right = "[NSMenuItem separatorItem]",
              .wrong = "[NSMenuItm separatorItem]",
              .seen = "use of undeclared identifier 'NSMenuItm'"},
        Fault{.name = "MisspeltProperty",
              .in = "menu_bar/item_button.mm",
              .right = "button.toolTip",
              .wrong = "button.tooltip",
              .seen = "property 'tooltip' not found"},
        Fault{.name = "MisspeltConstant",
              .in = "menu_bar/item_button.mm",
              .right = "NSImageLeading",
              .wrong = "NSImageLead",
              .seen = "use of undeclared identifier 'NSImageLead'"},
        Fault{.name = "UndeclaredSelector",
              .in = "menu_bar/menu_items.mm",
              .right = "@selector(choose:)",
              .wrong = "@selector(chose:)",
              .seen = "undeclared selector 'chose:'"},
        Fault{.name = "InstanceMethodOfTheClass",
              .in = "mac_desktop.mm",
              .right = "[pasteboard clearContents]",
              .wrong = "[NSPasteboard clearContents]",
              .seen = "no known class method for selector 'clearContents'"},
        Fault{.name = "WrongArgument",
              .in = "mac_desktop.mm",
              .right = "setBool:*isOn forKey:toNSString(key)",
              .wrong = "setBool:*isOn forKey:key",
              .seen = "no viable conversion"},
        Fault{.name = "WrongKindOfObject",
              .in = "menu_bar/item_button.mm",
              .right = "button.attributedTitle = makeAttributedString(contents.title.text)",
              .wrong = "button.title = makeAttributedString(contents.title.text)",
              .seen = "incompatible"},
        Fault{.name = "SwappedArguments",
              .in = "power_sources.mm",
              .right = "(CFRunLoopGetMain(), source,",
              .wrong = "(source, CFRunLoopGetMain(),",
              .seen = "no matching function for call to 'CFRunLoopAddSource'"},
        Fault{.name = "CallbackOfAnotherKind",
              .in = "power_sources.mm",
              .right = "void powerSourceChanged(void* /*context*/)",
              .wrong = "void powerSourceChanged(int /*context*/)",
              .seen = "no matching function for call to 'IOPSNotificationCreateRunLoopSource'"},
        Fault{.name = "BlockOfAnotherKind",
              .in = "drawing/app_kit_canvas.mm",
              .right = "^BOOL(NSRect rect)",
              .wrong = "^BOOL(Rect rect)",
              .seen = "cannot initialize a parameter of type 'BOOL (^ _Nonnull)(NSRect)'"},
        Fault{.name = "MissingBridgeCast",
              .in = "battery_registry.mm",
              .right = "(__bridge_transfer id)copyProperties",
              .wrong = "copyProperties",
              .seen = "cannot initialize a variable of type 'const __strong id'"},
        Fault{.name = "ReleaseByHand",
              .in = "block_timer.mm",
              .right = "[timer_ invalidate]",
              .wrong = "[timer_ release]",
              .seen = "release"},
        Fault{.name = "MissingProtocol",
              .in = "menu_bar/application_delegate.h",
              .right = "NSApplicationDelegate, NSMenuDelegate,",
              .wrong = "NSApplicationDelegate,",
              .seen = "from incompatible type",
              .of = "mac_desktop.mm"},
        Fault{.name = "MissingAction",
              .in = "menu_bar/application_delegate.mm",
              .right = "- (void)choose:(NSMenuItem*)sender {",
              .wrong = "- (void)chose:(NSMenuItem*)sender {",
              .seen = "method 'choose:' in protocol 'LumowattMenuTarget' not implemented"},
        Fault{.name = "NilWhereThereMustBeOne",
              .in = "drawing/app_kit_bitmap.mm",
              .right = "colorSpaceName:NSDeviceRGBColorSpace",
              .wrong = "colorSpaceName:nil",
              .seen = "null passed to a callee that requires a non-null argument"},
        Fault{.name = "MaybeNilWhereThereMustBeOne",
              .in = "drawing/app_kit_bitmap.mm",
              .right = "drawOn(context, image, scale)",
              .wrong = "drawOn([NSGraphicsContext graphicsContextWithBitmapImageRep:pixels], "
                       "image, scale)",
              .seen = "implicit conversion from nullable pointer"},
        Fault{.name = "ForgottenKindOfItem",
              .in = "menu_bar/menu_items.mm",
              .right = "  NSMenuItem* operator()(const MenuSeparator&) const {",
              .wrong = "  NSMenuItem* separator(const MenuSeparator&) const {",
              .seen = "ItemMaker"}),
    nameOfFault);

class LeakingMacSource : public testing::TestWithParam<Fault> {};

TEST_P(LeakingMacSource, IsSeen) {
  const PlantedFault planted(GetParam());
  expectSeen(ownershipCheck(GetParam().of, planted.folder()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    All, LeakingMacSource,
    testing::Values(Fault{.name = "Properties",
                          .in = "battery_registry.mm",
                          .right = "(__bridge_transfer id)copyProperties",
                          .wrong = "(__bridge id)copyProperties",
                          .seen = "leak"},
                    Fault{.name = "MatchingDescription",
                          .in = "battery_registry.mm",
                          .right = "  if (status == KERN_SUCCESS) return properties;",
                          .wrong = "  if (IOServiceMatching(\"x\") == nullptr) return properties;",
                          .seen = "leak"},
                    Fault{.name = "RunLoopSource",
                          .in = "power_sources.mm",
                          .right = "  CFRelease(source);",
                          .wrong = "",
                          .seen = "leak"},
                    Fault{.name = "RunLoopSourceReleasedTwice",
                          .in = "power_sources.mm",
                          .right = "  CFRelease(source);",
                          .wrong = "  CFRelease(source);\n  CFRelease(source);",
                          .seen = "used after it is released"},
                    Fault{.name = "PropertiesReleasedTwice",
                          .in = "battery_registry.mm",
                          .right = "  if (properties != nullptr) CFRelease(properties);",
                          .wrong = "  properties = IOServiceMatching(\"x\");\n"
                                   "  CFRelease(properties);\n  CFRelease(properties);",
                          .seen = "used after it is released"}),
    nameOfFault);

// What the system calls by name is optional in its protocols, so that no compiler misses it.

namespace {

std::vector<std::string> calledByTheSystem() {
  return {"applicationDidFinishLaunching:", "menuWillOpen:", "choose:"};  // the items of the menu
}

/// The methods of the delegate but for those of its own header and of the compiler.
std::vector<std::string> delegateMethods(const std::filesystem::path& changed = {}) {
  const std::string own = "-[LumowattApplicationDelegate ";
  std::vector<std::string> selectors;
  for (const std::string& method : definedMethods("menu_bar/application_delegate.mm", changed)) {
    EXPECT_EQ(method.substr(0, own.size()), own);
    const std::string selector = method.substr(own.size(), method.size() - own.size() - 1);
    const bool isOther = selector == "initWithApplication:" || selector == "powerSourceAction" ||
                         selector == "setPowerSourceAction:" || selector[0] == '.';
    if (!isOther) selectors.push_back(selector);
  }
  return selectors;
}

}  // namespace

TEST(MacDelegate, DefinesWhatTheSystemCallsByNameAndNothingLikeIt) {
  EXPECT_EQ(delegateMethods(), calledByTheSystem());
}

TEST(MacDelegate, AMisspeltMethodOfAProtocolIsSeen) {
  for (const auto& [right, wrong] :
       {std::pair{"menuWillOpen:", "menuWillOpn:"},
        std::pair{"applicationDidFinishLaunching:", "applicationDidFinishLaunch:"}}) {
    const Fault fault{.name = {},
                      .in = "menu_bar/application_delegate.mm",
                      .right = "- (void)" + std::string(right),
                      .wrong = "- (void)" + std::string(wrong),
                      .seen = {}};
    EXPECT_NE(delegateMethods(PlantedFault(fault).folder()), calledByTheSystem()) << wrong;
  }
}

}  // namespace lumowatt
