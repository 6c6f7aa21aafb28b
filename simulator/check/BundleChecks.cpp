// Checks on what stands beside a bundle's binary: Info.plist and PkgInfo.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

#include "simulator/check/Check.h"
#include "simulator/loader/BundleFolder.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/MachPlugin.h"

namespace simulator {

namespace {

constexpr std::size_t kCodeSize = 4;

bool isIdentifier(const std::string& text) {
  return std::all_of(text.begin(), text.end(),
                     [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '.'; });
}

// One to three numbers with dots between them.
bool isVersion(const std::string& text) {
  int numbers = 0;
  for (std::size_t at = 0; at <= text.size(); ++numbers) {
    const std::size_t end = std::min(text.find('.', at), text.size());
    const std::string number = text.substr(at, end - at);
    if (number.empty() || number.find_first_not_of("0123456789") != std::string::npos) return false;
    at = end + 1;
  }
  return numbers <= 3;
}

bool isCode(const std::string& text) { return text.size() == kCodeSize; }
bool isText(const std::string& text) { return !text.empty(); }
bool isListVersion(const std::string& text) { return text == "6.0"; }

struct RequiredKey {
  const char* name;
  bool (*allows)(const std::string& text);
  const char* allowed;
};

constexpr RequiredKey kRequiredKeys[] = {
    {"CFBundleExecutable", isText, "a text"},
    {"CFBundleIdentifier", isIdentifier, "letters, digits, hyphens and dots"},
    {"CFBundleInfoDictionaryVersion", isListVersion, "6.0"},
    {"CFBundleName", isText, "a text"},
    {"CFBundlePackageType", isCode, "a code of four characters"},
    {"CFBundleShortVersionString", isVersion, "one to three numbers"},
    {"CFBundleSignature", isCode, "a code of four characters"},
    {"CFBundleVersion", isVersion, "one to three numbers"},
};

// What is wrong with the key's value; empty if nothing is.
std::string faultOf(const Json& values, const RequiredKey& key) {
  if (!values.contains(key.name)) return fmt::format("Info.plist has no {}", key.name);
  const Json& value = values[key.name];
  if (value.is_string() && !value.get_ref<const std::string&>().empty() &&
      key.allows(value.get_ref<const std::string&>())) {
    return {};
  }
  return fmt::format("{} is {}; {} is allowed", key.name, value.dump(), key.allowed);
}

std::optional<std::pair<int, int>> versionOf(const std::string& text) {
  std::pair<int, int> version;
  if (std::sscanf(text.c_str(), "%d.%d", &version.first, &version.second) != 2) return {};
  return version;
}

// The oldest system that the binary's code for any processor supports.
std::string oldestSystemOf(const std::filesystem::path& binary) {
  std::string oldest;
  for (const mach::Processor processor : MachFile::processorsOf(binary)) {
    const std::string version = MachFile::open(binary, processor).minimumSystem();
    if (oldest.empty() || versionOf(version) < versionOf(oldest)) oldest = version;
  }
  return oldest;
}

// LSMinimumSystemVersion may be missing; the system then asks the binary alone.
std::string minimumSystemFault(const Json& values, const std::filesystem::path& folder) {
  constexpr const char* kKey = "LSMinimumSystemVersion";
  if (!values.contains(kKey)) return {};
  const std::string binarys = oldestSystemOf(binaryOfBundle(folder));
  const Json& value = values[kKey];
  if (value.is_string() && versionOf(value) && versionOf(value) == versionOf(binarys)) return {};
  return fmt::format("{} is {}, the binary needs {}", kKey, value.dump(), binarys);
}

Verdict inBundle(const std::string& plugin,
                 const std::function<Verdict(const std::filesystem::path& folder)>& judge) {
  if (!isMacPlugin(plugin)) return notApplicable("not built for the Mac");
  if (!std::filesystem::is_directory(plugin)) return notApplicable("a file without its bundle");
  return judge(plugin);
}

Json descriptionOf(const std::filesystem::path& folder) {
  return readPropertyList(folder / "Contents" / "Info.plist");
}

Verdict infoPlist(const std::string& plugin) {
  return inBundle(plugin, [](const std::filesystem::path& folder) {
    const Json values = descriptionOf(folder);
    if (!values.is_object()) return failed("Info.plist does not hold keys and values");
    for (const RequiredKey& key : kRequiredKeys) {
      const std::string fault = faultOf(values, key);
      if (!fault.empty()) return failed(fault);
    }
    const std::string fault = minimumSystemFault(values, folder);
    return fault.empty() ? passed() : failed(fault);
  });
}

Verdict packageInfo(const std::string& plugin) {
  return inBundle(plugin, [](const std::filesystem::path& folder) {
    std::ifstream file(folder / "Contents" / "PkgInfo", std::ios::binary);
    if (!file) return failed("Contents/PkgInfo is not there");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.size() != 2 * kCodeSize) {
      return failed(
          fmt::format("PkgInfo has {} bytes; {} are allowed", text.size(), 2 * kCodeSize));
    }
    const Json values = descriptionOf(folder);
    for (const auto& [key, at] : {std::pair("CFBundlePackageType", std::size_t{0}),
                                  std::pair("CFBundleSignature", kCodeSize)}) {
      const Json code = text.substr(at, kCodeSize);
      if (values.value(key, Json()) == code) continue;
      return failed(fmt::format("PkgInfo says {}, {} in Info.plist is {}", code.dump(), key,
                                values.value(key, Json()).dump()));
    }
    return passed();
  });
}

}  // namespace

std::vector<Check> bundleChecks() {
  return {
      {"info-plist", "Info.plist has each key that the system needs, with a value of its kind.",
       infoPlist},
      {"pkg-info", "PkgInfo has eight bytes, and says what Info.plist says.", packageInfo},
  };
}

}  // namespace simulator
