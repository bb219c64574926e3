// Checks the types and the ownership of objects in the macOS sources, on a machine without Apple's
// headers. The checks use the headers in `declarations/` instead. Planted faults prove that the
// checks detect mistakes.

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

void expectDiagnostic(const ProcessResult& result, const Fault& fault) {
  EXPECT_NE(result.status, 0);
  EXPECT_NE(result.errors.find(fault.diagnostic), std::string::npos) << result.errors;
}

}  // namespace

class MacSource : public testing::TestWithParam<std::string> {};

TEST_P(MacSource, TypeChecksWithEitherTypeOfBool) {
  for (const ObjcBool boolType : {ObjcBool::isBool, ObjcBool::isChar}) {
    const auto result = typeCheck(GetParam(), boolType);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
  }
}

TEST_P(MacSource, ReleasesEveryObjectThatItOwns) {
  const auto result = ownershipCheck(GetParam());
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
}

TEST_P(MacSource, IsListedInTheBuild) {
  const std::string build = fileContents(macosSources / "CMakeLists.txt");
  EXPECT_NE(build.find("  " + GetParam()), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(All, MacSource, testing::ValuesIn(macosFiles(".mm")), nameOfFile);

TEST(MacSources, HaveAtMostTwoHundredLinesEach) {
  for (const char* const extension : {".mm", ".h"}) {
    for (const std::string& file : macosFiles(extension)) {
      const std::string text = fileContents(macosSources / file);
      EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 200) << file;
    }
  }
}

class MistypedMacSource : public testing::TestWithParam<Fault> {};

TEST_P(MistypedMacSource, FailsTheTypeCheck) {
  const PlantedFault planted(GetParam());
  expectDiagnostic(typeCheck(GetParam().source, ObjcBool::isBool, planted.folder()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    All, MistypedMacSource,
    testing::Values(
        Fault{.name = "MisspelledSelector",
              .file = "block_timer.mm",
              .correct = "repeats:YES",
              .faulty = "repeat:YES",
              .diagnostic = "no known class method for selector"},
        Fault{.name = "MisspelledClass",
              .file = "menu_bar/menu_items.mm",
              .correct = "[NSMenuItem separatorItem]",
              .faulty = "[NSMenuItm separatorItem]",
              .diagnostic = "use of undeclared identifier 'NSMenuItm'"},
        Fault{.name = "MisspelledProperty",
              .file = "menu_bar/item_button.mm",
              .correct = "button.toolTip",
              .faulty = "button.tooltip",
              .diagnostic = "property 'tooltip' not found"},
        Fault{.name = "MisspelledConstant",
              .file = "menu_bar/item_button.mm",
              .correct = "NSImageLeading",
              .faulty = "NSImageLead",
              .diagnostic = "use of undeclared identifier 'NSImageLead'"},
        Fault{.name = "UndeclaredSelector",
              .file = "menu_bar/menu_items.mm",
              .correct = "@selector(choose:)",
              .faulty = "@selector(chose:)",
              .diagnostic = "undeclared selector 'chose:'"},
        Fault{.name = "InstanceMethodCalledOnAClass",
              .file = "mac_desktop.mm",
              .correct = "[pasteboard clearContents]",
              .faulty = "[NSPasteboard clearContents]",
              .diagnostic = "no known class method for selector 'clearContents'"},
        Fault{.name = "ArgumentOfWrongType",
              .file = "mac_desktop.mm",
              .correct = "setBool:*isOn forKey:toNSString(key)",
              .faulty = "setBool:*isOn forKey:key",
              .diagnostic = "no viable conversion"},
        Fault{.name = "ObjectOfWrongClass",
              .file = "menu_bar/item_button.mm",
              .correct = "button.attributedTitle = makeAttributedString(contents.title.text)",
              .faulty = "button.title = makeAttributedString(contents.title.text)",
              .diagnostic = "incompatible"},
        Fault{.name = "SwappedArguments",
              .file = "power_sources.mm",
              .correct = "(CFRunLoopGetMain(), source,",
              .faulty = "(source, CFRunLoopGetMain(),",
              .diagnostic = "no matching function for call to 'CFRunLoopAddSource'"},
        Fault{
            .name = "CallbackOfWrongType",
            .file = "power_sources.mm",
            .correct = "void onPowerSourceChanged(void* /*context*/)",
            .faulty = "void onPowerSourceChanged(int /*context*/)",
            .diagnostic = "no matching function for call to 'IOPSNotificationCreateRunLoopSource'"},
        Fault{.name = "BlockOfWrongType",
              .file = "drawing/app_kit_canvas.mm",
              .correct = "^BOOL(NSRect rect)",
              .faulty = "^BOOL(Rect rect)",
              .diagnostic = "cannot initialize a parameter of type 'BOOL (^ _Nonnull)(NSRect)'"},
        Fault{.name = "MissingBridgeCast",
              .file = "battery_registry.mm",
              .correct = "(__bridge_transfer id)copyProperties",
              .faulty = "copyProperties",
              .diagnostic = "cannot initialize a variable of type 'const __strong id'"},
        Fault{.name = "ManualRelease",
              .file = "block_timer.mm",
              .correct = "[timer_ invalidate]",
              .faulty = "[timer_ release]",
              .diagnostic = "release"},
        Fault{.name = "MissingProtocol",
              .file = "menu_bar/application_delegate.h",
              .correct = "NSApplicationDelegate, NSMenuDelegate,",
              .faulty = "NSApplicationDelegate,",
              .diagnostic = "from incompatible type",
              .source = "mac_desktop.mm"},
        Fault{.name = "MissingAction",
              .file = "menu_bar/application_delegate.mm",
              .correct = "- (void)choose:(NSMenuItem*)sender {",
              .faulty = "- (void)chose:(NSMenuItem*)sender {",
              .diagnostic = "method 'choose:' in protocol 'LumowattMenuTarget' not implemented"},
        Fault{.name = "NilForNonnullParameter",
              .file = "drawing/app_kit_bitmap.mm",
              .correct = "colorSpaceName:NSDeviceRGBColorSpace",
              .faulty = "colorSpaceName:nil",
              .diagnostic = "null passed to a callee that requires a non-null argument"},
        Fault{
            .name = "NullableForNonnullParameter",
            .file = "drawing/app_kit_bitmap.mm",
            .correct = "drawInContext(context, image, scale)",
            .faulty = "drawInContext([NSGraphicsContext graphicsContextWithBitmapImageRep:pixels], "
                      "image, scale)",
            .diagnostic = "implicit conversion from nullable pointer"},
        Fault{.name = "MissingKindOfItem",
              .file = "menu_bar/menu_items.mm",
              .correct = "  NSMenuItem* operator()(const MenuSeparator&) const {",
              .faulty = "  NSMenuItem* separator(const MenuSeparator&) const {",
              .diagnostic = "ItemMaker"}),
    nameOfFault);

class MismanagedMacSource : public testing::TestWithParam<Fault> {};

TEST_P(MismanagedMacSource, FailsTheReferenceCountingCheck) {
  const PlantedFault planted(GetParam());
  expectDiagnostic(ownershipCheck(GetParam().source, planted.folder()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    All, MismanagedMacSource,
    testing::Values(Fault{.name = "LeakedProperties",
                          .file = "battery_registry.mm",
                          .correct = "(__bridge_transfer id)copyProperties",
                          .faulty = "(__bridge id)copyProperties",
                          .diagnostic = "leak"},
                    Fault{.name = "LeakedMatchingDictionary",
                          .file = "battery_registry.mm",
                          .correct = "  if (status == KERN_SUCCESS) return properties;",
                          .faulty = "  if (IOServiceMatching(\"x\") == nullptr) return properties;",
                          .diagnostic = "leak"},
                    Fault{.name = "LeakedRunLoopSource",
                          .file = "power_sources.mm",
                          .correct = "  CFRelease(source);",
                          .faulty = "",
                          .diagnostic = "leak"},
                    Fault{.name = "RunLoopSourceReleasedTwice",
                          .file = "power_sources.mm",
                          .correct = "  CFRelease(source);",
                          .faulty = "  CFRelease(source);\n  CFRelease(source);",
                          .diagnostic = "used after it is released"},
                    Fault{.name = "PropertiesReleasedTwice",
                          .file = "battery_registry.mm",
                          .correct = "  if (properties != nullptr) CFRelease(properties);",
                          .faulty = "  properties = IOServiceMatching(\"x\");\n"
                                    "  CFRelease(properties);\n  CFRelease(properties);",
                          .diagnostic = "used after it is released"}),
    nameOfFault);

// Methods of the delegate that the system calls. The system's protocols declare most of them as
// optional, so a compiler does not report a missing or misspelled method.

namespace {

/// Returns the selectors that the system calls, including the action of the menu items.
std::vector<std::string> calledByTheSystem() {
  return {"applicationDidFinishLaunching:", "menuWillOpen:", "choose:"};
}

/// Returns the selectors that the delegate defines. Omits the selectors that its own header
/// declares and those that the compiler generates.
std::vector<std::string> delegateMethods(const std::filesystem::path& overrides = {}) {
  const std::string prefix = "-[LumowattApplicationDelegate ";
  std::vector<std::string> selectors;
  for (const std::string& method : definedMethods("menu_bar/application_delegate.mm", overrides)) {
    EXPECT_EQ(method.substr(0, prefix.size()), prefix);
    const std::string selector = method.substr(prefix.size(), method.size() - prefix.size() - 1);
    const bool isExcluded = selector == "initWithApplication:" || selector == "powerSourceAction" ||
                            selector == "setPowerSourceAction:" || selector[0] == '.';
    if (!isExcluded) selectors.push_back(selector);
  }
  return selectors;
}

}  // namespace

TEST(MacDelegate, DefinesExactlyTheMethodsThatTheSystemCalls) {
  EXPECT_EQ(delegateMethods(), calledByTheSystem());
}

TEST(MacDelegateCheck, DetectsMisspelledMethodsOfProtocols) {
  for (const auto& [correct, misspelled] :
       {std::pair{"menuWillOpen:", "menuWillOpn:"},
        std::pair{"applicationDidFinishLaunching:", "applicationDidFinishLaunch:"}}) {
    const Fault fault{.name = {},
                      .file = "menu_bar/application_delegate.mm",
                      .correct = "- (void)" + std::string(correct),
                      .faulty = "- (void)" + std::string(misspelled),
                      .diagnostic = {}};
    EXPECT_NE(delegateMethods(PlantedFault(fault).folder()), calledByTheSystem()) << misspelled;
  }
}

}  // namespace lumowatt
