// Checks on the files of a Mac bundle, none of which is loaded.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

#include "packaging/resource/HostDescription.h"
#include "simulator/check/Check.h"
#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/MachPlugin.h"
#include "simulator/loader/SystemLibraries.h"

namespace simulator {

namespace {

constexpr const char* kEntryPoint = "_AutoPluginMain";
constexpr std::pair<int, int> kOldestSystem = {10, 13};
constexpr std::size_t kManyBinds = 100000;

Verdict withFile(const std::string& plugin, const std::function<Verdict(const MachFile&)>& judge) {
  if (!isMacPlugin(plugin)) return notApplicable("not built for the Mac");
  const MachFile file = MachFile::open(machFileOf(plugin));
  if (!file.unsupported().empty()) throw LoadError(file.unsupported());
  return judge(file);
}

Verdict exports(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    std::vector<std::string> names;
    for (const auto& [name, offset] : readExportTrie(file.exportTrie())) names.push_back(name);
    if (names == std::vector<std::string>{kEntryPoint}) return passed();
    return failed(fmt::format("exports [{}]", fmt::join(names, ", ")));
  });
}

Verdict loadCommands(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    for (const Library& library : file.libraries()) {
      if (library.name == kDeviceFramework || SimulatedMac().has(library.name)) continue;
      return failed("loads " + library.name);
    }
    return passed();
  });
}

// The ordinal of the device framework's load command, from 1; nullopt if there is none.
std::optional<std::size_t> deviceFrameworkOrdinal(const MachFile& file) {
  for (std::size_t i = 0; i < file.libraries().size(); ++i) {
    if (file.libraries()[i].name == kDeviceFramework) return i + 1;
  }
  return std::nullopt;
}

std::vector<Bind> allBinds(const MachFile& file) {
  std::vector<Bind> binds = readBinds(file.bindOpcodes(), BindKind::kRegular, kManyBinds);
  const std::vector<Bind> lazy = readBinds(file.lazyBindOpcodes(), BindKind::kLazy, kManyBinds);
  binds.insert(binds.end(), lazy.begin(), lazy.end());
  return binds;
}

Verdict weakFramework(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    const std::optional<std::size_t> ordinal = deviceFrameworkOrdinal(file);
    if (!ordinal) return failed("has no load command for the device framework");
    if (!file.libraries()[*ordinal - 1].weak) return failed("its load command is not a weak one");
    for (const Bind& bind : allBinds(file)) {
      if (bind.ordinal != static_cast<std::int64_t>(*ordinal) || bind.weakImport) continue;
      return failed(bind.symbol + " is not a weak reference");
    }
    return passed();
  });
}

Verdict minimumSystem(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    const std::string& text = file.minimumSystem();
    std::pair<int, int> version = {0, 0};
    if (std::sscanf(text.c_str(), "%d.%d", &version.first, &version.second) != 2) {
      return failed("says no minimum system");
    }
    return version <= kOldestSystem ? passed() : failed("needs macOS " + text);
  });
}

Verdict fileType(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    return file.fileType() == mach::kTypeBundle ? passed()
                                                : failed("is a dynamic library, not a bundle");
  });
}

// Whether the path can exist on any Mac, not just on the one that built the file.
bool isOnEveryMac(std::string_view path) {
  static constexpr std::string_view kBeginnings[] = {"@loader_path", "@executable_path", "/usr/lib",
                                                     "/System/Library", "/Library/Frameworks"};
  return std::any_of(std::begin(kBeginnings), std::end(kBeginnings), [&](std::string_view start) {
    return path == start || path.starts_with(std::string(start) + "/");
  });
}

Verdict runPaths(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    for (const std::string& path : file.runPaths()) {
      if (!isOnEveryMac(path)) return failed("looks for libraries in " + path);
    }
    return passed();
  });
}

Verdict segmentRights(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    constexpr int kBoth = PROT_WRITE | PROT_EXEC;
    for (const Segment& segment : file.segments()) {
      if ((segment.protection & kBoth) == kBoth) {
        return failed(segment.name + " is writable and executable");
      }
    }
    return passed();
  });
}

std::string readAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw ResourceError(path.string() + " is not there");
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<HostProperty> hostProperties(const std::filesystem::path& binary) {
  const std::filesystem::path contents = binary.parent_path().parent_path();
  const std::string name = binary.filename().string() + ".rsrc";
  for (const Resource& resource : readResourceFork(readAll(contents / "Resources" / name))) {
    if (resource.type == kHostResourceType) return readHostProperties(resource);
  }
  throw ResourceError("there is no resource of the host's type");
}

const HostProperty& required(const std::vector<HostProperty>& properties, std::uint32_t key,
                             const char* what) {
  const HostProperty* const property = findHostProperty(properties, key);
  if (property == nullptr) throw ResourceError(fmt::format("the description has no {}", what));
  return *property;
}

Verdict judgeDescription(const std::vector<HostProperty>& properties, const MachFile& file) {
  if (numberOf(required(properties, kKindProperty, "kind")) != kAutomationKind) {
    return failed("the description is not an automation plug-in's");
  }
  constexpr std::uint32_t kWanted = kWantsStartup | kWantsShutdown;
  if ((numberOf(required(properties, kMessagesProperty, "messages")) & kWanted) != kWanted) {
    return failed("the description does not ask for start-up and shut-down calls");
  }
  const std::string entry =
      entryPointOf(required(properties, kCodeMacIntel64Property, "64-bit Intel code"));
  if (readExportTrie(file.exportTrie()).count("_" + entry) == 1) return passed();
  return failed(fmt::format("the description names {}, which is not exported", entry));
}

Verdict resource(const std::string& plugin) {
  if (isMacPlugin(plugin) && !std::filesystem::is_directory(plugin)) {
    return notApplicable("a file without its bundle");
  }
  return withFile(plugin, [&](const MachFile& file) {
    return judgeDescription(hostProperties(machFileOf(plugin)), file);
  });
}

}  // namespace

std::vector<Check> fileChecks() {
  return {
      {"exports", "The entry point is the one exported symbol.", exports},
      {"load-commands",
       "Beside the device framework only the system's libraries and frameworks are loaded.",
       loadCommands},
      {"weak-framework", "The device framework may be absent: all that asks for it is weak.",
       weakFramework},
      {"minimum-system", "The file is for macOS 10.13 or older.", minimumSystem},
      {"file-type", "The file is a bundle, not a library.", fileType},
      {"run-paths", "Libraries are looked for in no folder of the machine that built the file.",
       runPaths},
      {"segment-rights", "No segment is writable and executable.", segmentRights},
      {"resource", "The host-side description is there and names the exported entry point.",
       resource},
  };
}

}  // namespace simulator
