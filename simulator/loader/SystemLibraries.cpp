#include "simulator/loader/SystemLibraries.h"

#include <dlfcn.h>

#include <algorithm>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/loader/CLibrary.h"
#include "simulator/loader/VariadicImports.h"

namespace simulator {

namespace {

constexpr std::string_view kLibSystem = "/usr/lib/libSystem.B.dylib";
constexpr std::string_view kLibCxx = "/usr/lib/libc++.1.dylib";
constexpr std::string_view kLibCxxAbi = "/usr/lib/libc++abi.dylib";
constexpr std::string_view kSimulated[] = {
    "/usr/lib/libobjc.A.dylib",
    "/System/Library/Frameworks/AppKit.framework/Versions/C/AppKit",
    "/System/Library/Frameworks/ApplicationServices.framework/Versions/A/ApplicationServices",
    "/System/Library/Frameworks/Carbon.framework/Versions/A/Carbon",
    "/System/Library/Frameworks/CoreFoundation.framework/Versions/A/CoreFoundation",
    "/System/Library/Frameworks/CoreGraphics.framework/Versions/A/CoreGraphics",
    "/System/Library/Frameworks/CoreServices.framework/Versions/A/CoreServices",
    "/System/Library/Frameworks/Foundation.framework/Versions/C/Foundation",
};

constexpr char kDeviceFrameworkHere[] = "libMoravinClient.so";

// Where the file that a function or object comes from begins in memory; null if there is none.
// dladdr would also look for the symbol's name, among all that the simulator defines.
void* fileOf(const void* address) {
  dl_find_object file{};
  return _dl_find_object(const_cast<void*>(address), &file) == 0 ? file.dlfo_map_start : nullptr;
}

// Finds a symbol that the library of `sample` itself defines, not one of its dependencies.
void* findBeside(const void* sample, void* handle, std::string_view symbol) {
  if (!symbol.starts_with('_')) return nullptr;
  void* const found = dlsym(handle, std::string(symbol.substr(1)).c_str());
  return fileOf(found) == fileOf(sample) ? found : nullptr;
}

void* findInSimulator(std::string_view symbol) {
  return findBeside(reinterpret_cast<void*>(&theLog), RTLD_DEFAULT, symbol);
}

// The device framework's library; null if it is not loaded.
void* deviceFramework() {
  void* const handle = dlopen(kDeviceFrameworkHere, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle;
}

void* findInDeviceFramework(std::string_view symbol) {
  void* const handle = deviceFramework();
  return findBeside(dlsym(handle, "InstallMoravinHandlers"), handle, symbol);
}

void* findInLibrary(std::string_view library, std::string_view symbol) {
  if (library == kLibCxx || library == kLibCxxAbi) return findInLibCxx(symbol);
  if (library == kDeviceFramework) return findInDeviceFramework(symbol);
  if (library != kLibSystem) return findInSimulator(symbol);
  void* const found = findInLibSystem(symbol);
  return found != nullptr ? found : findInSimulator(symbol);
}

}  // namespace

bool SimulatedMac::has(std::string_view library) const {
  if (library == kDeviceFramework) return deviceFramework() != nullptr;
  return library == kLibSystem || library == kLibCxx || library == kLibCxxAbi ||
         std::find(std::begin(kSimulated), std::end(kSimulated), library) != std::end(kSimulated);
}

void* SimulatedMac::find(std::string_view library, std::string_view symbol) const {
  void* const found = findInLibrary(library, symbol);
  return found == nullptr ? nullptr : asTheMacCalls(symbol, found);
}

}  // namespace simulator
