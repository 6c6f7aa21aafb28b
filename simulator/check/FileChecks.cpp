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
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/MachPlugin.h"
#include "simulator/loader/SystemLibraries.h"

namespace simulator {

namespace {

constexpr const char* kEntryPoint = "_AutoPluginMain";
// Where the host's description names the code for a processor, and the oldest system on it.
struct Target {
  mach::Processor processor;
  std::pair<int, int> oldestSystem;
  std::uint32_t property;
  const char* code;
};
constexpr Target kTargets[] = {
    {mach::kX86_64, {10, 13}, kCodeMacIntel64Property, "64-bit Intel code"},
    {mach::kArm64, {11, 0}, kCodeMacArm64Property, "arm64 code"},
};
constexpr std::size_t kManyBinds = 100000;

const Target* findTarget(mach::Processor processor) {
  const auto* const found =
      std::find_if(std::begin(kTargets), std::end(kTargets),
                   [&](const Target& target) { return target.processor.type == processor.type; });
  return found == std::end(kTargets) ? nullptr : found;
}

const Target& targetOf(const MachFile& file) {
  const Target* const target = findTarget(file.processor());
  if (target == nullptr) throw LoadError("is code for a processor that no plug-in runs on");
  return *target;
}

using Judge = std::function<Verdict(const MachFile&)>;

Verdict judgeFor(mach::Processor processor, const std::filesystem::path& path, const Judge& judge) {
  try {
    const MachFile file = MachFile::open(path, processor);
    return file.unsupported().empty() ? judge(file) : failed(file.unsupported());
  } catch (const std::runtime_error& error) {
    return failed(error.what());
  }
}

// The processors that the plug-in may run on; others in the file do not count unless they are all.
std::vector<mach::Processor> judgedProcessors(const std::filesystem::path& path) {
  std::vector<mach::Processor> all = MachFile::processorsOf(path);
  std::vector<mach::Processor> judged;
  std::copy_if(all.begin(), all.end(), std::back_inserter(judged),
               [](mach::Processor processor) { return findTarget(processor) != nullptr; });
  return judged.empty() ? all : judged;
}

// Judges the code for each processor; the reason names the processor if there are several.
Verdict withFile(const std::string& plugin, const Judge& judge) {
  if (!isMacPlugin(plugin)) return notApplicable("not built for the Mac");
  const std::filesystem::path path = machFileOf(plugin);
  const std::vector<mach::Processor> processors = judgedProcessors(path);
  for (const mach::Processor processor : processors) {
    const Verdict verdict = judgeFor(processor, path, judge);
    if (verdict.outcome == Outcome::kPassed) continue;
    if (processors.size() == 1) return verdict;
    return {verdict.outcome, fmt::format("{}: {}", processorName(processor), verdict.reason)};
  }
  return passed();
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
    const Target& target = targetOf(file);
    const std::string& text = file.minimumSystem();
    std::pair<int, int> version = {0, 0};
    if (std::sscanf(text.c_str(), "%d.%d", &version.first, &version.second) != 2) {
      return failed("says no minimum system");
    }
    return version <= target.oldestSystem ? passed() : failed("needs macOS " + text);
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

Verdict signature(const std::string& plugin) {
  return withFile(plugin, [](const MachFile& file) {
    const Bytes bytes = file.codeSignature();
    if (bytes.empty()) return failed("is not signed");
    const auto magic = ByteReader(bytes, "the code signature").read<std::uint32_t>();
    return mach::swapped(magic) == mach::kSignatureMagic
               ? passed()
               : failed(fmt::format("has a signature of an unknown kind ({:#x})",
                                    mach::swapped(magic)));
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
  const Target& target = targetOf(file);
  const std::string entry = entryPointOf(required(properties, target.property, target.code));
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
      {"minimum-system",
       "The code for 64-bit Intel is for macOS 10.13 or older, that for arm64 for 11.0.",
       minimumSystem},
      {"file-type", "The file is a bundle, not a library.", fileType},
      {"run-paths", "Libraries are looked for in no folder of the machine that built the file.",
       runPaths},
      {"segment-rights", "No segment is writable and executable.", segmentRights},
      {"signature", "The code for each processor is signed.", signature},
      {"resource",
       "The host-side description is there and names the exported entry point for each processor.",
       resource},
  };
}

}  // namespace simulator
