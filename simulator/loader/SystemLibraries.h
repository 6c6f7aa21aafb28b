// Finds the libraries and symbols that a Mac plug-in imports.
#pragma once

#include <string_view>

namespace simulator {

/// The install name of the device maker's client framework.
inline constexpr std::string_view kDeviceFramework =
    "/Library/Frameworks/MoravinClient.framework/Versions/A/MoravinClient";

/// The libraries of one system. Symbols are given with the leading underscore of C names.
class SystemLibraries {
 public:
  virtual ~SystemLibraries() = default;

  /// Whether a library of that install name exists.
  virtual bool has(std::string_view library) const = 0;

  /// The address of a symbol of a library that exists; null if the library lacks it.
  virtual void* find(std::string_view library, std::string_view symbol) const = 0;
};

/// The libraries of the simulated Mac. The simulator's own library provides the frameworks and the
/// Objective-C runtime, the distribution's libc++ the C++ library. C library symbols are limited to
/// a list; nothing else of this process can be reached. The device framework exists while its
/// library is loaded. `find` throws a LoadError for a C++ library symbol of an unsupported kind.
/// [any-thread]
class SimulatedMac : public SystemLibraries {
 public:
  bool has(std::string_view library) const override;
  void* find(std::string_view library, std::string_view symbol) const override;
};

}  // namespace simulator
