#include "macos/compiler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <regex>
#include <sstream>

namespace lumowatt {

namespace {

constexpr const char* macosFolder = "platform/macos";
const std::vector<std::string> withPrefix{"-include-pch", LUMOWATT_PREFIX};

ProcessResult runClang(const std::vector<std::string>& mode, const std::string& file,
                       const std::filesystem::path& overrides,
                       const std::vector<std::string>& prefix = withPrefix) {
  std::istringstream flags(LUMOWATT_OBJCXX_FLAGS);
  std::vector<std::string> command{LUMOWATT_CLANG, "@" LUMOWATT_CLANG_FLAGS};
  command.insert(command.end(), mode.begin(), mode.end());
  command.insert(command.end(), std::istream_iterator<std::string>(flags), {});
  command.insert(command.end(), {"-isystem", LUMOWATT_DECLARATIONS});
  command.insert(command.end(), prefix.begin(), prefix.end());
  std::filesystem::path source = macosSources / file;
  if (!overrides.empty()) {
    command.push_back("-I" + overrides.string());
    const std::filesystem::path replacement = overrides / macosFolder / file;
    if (std::filesystem::exists(replacement)) source = replacement;
  }
  command.insert(command.end(), {"-I" LUMOWATT_SOURCES, source});
  return runProcess(command);
}

}  // namespace

std::vector<std::string> macosFiles(const std::string& extension) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(macosSources)) {
    if (entry.path().extension() == extension) {
      names.push_back(entry.path().lexically_relative(macosSources));
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

ProcessResult typeCheck(const std::string& file, ObjcBool boolType,
                        const std::filesystem::path& overrides) {
  if (boolType == ObjcBool::isChar) {
    return runClang({"-fsyntax-only", "-DBOOL_IS_CHAR"}, file, overrides,
                    {"-include-pch", LUMOWATT_PREFIX_BOOL_IS_CHAR});
  }
  // An unchanged source is compiled without the precompiled prefix. This proves that it includes
  // every header that it uses.
  return overrides.empty() ? runClang({"-fsyntax-only"}, file, overrides, {})
                           : runClang({"-fsyntax-only"}, file, overrides);
}

ProcessResult ownershipCheck(const std::string& file, const std::filesystem::path& overrides) {
  return runClang({"--analyze", "--analyzer-output", "text", "-Xclang",
                   "-analyzer-checker=osx.cocoa.RetainCount", "-Xclang", "-analyzer-werror",
                   // Analyze each function separately. The analyzer then derives the ownership
                   // rules of a called function from its name.
                   "-Xclang", "-analyzer-config", "-Xclang", "ipa=none"},
                  file, overrides);
}

std::vector<std::string> definedMethods(const std::string& file,
                                        const std::filesystem::path& overrides) {
  const auto result = runClang({"-S", "-emit-llvm", "-o", "-"}, file, overrides);
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::regex method(R"(define [^\n]*"\\01([-+]\[[^\]]*\])\")");
  std::vector<std::string> methods;
  for (std::sregex_iterator each(result.output.begin(), result.output.end(), method), end;
       each != end; ++each) {
    methods.push_back((*each)[1]);
  }
  return methods;
}

}  // namespace lumowatt
