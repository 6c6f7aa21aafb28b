// The libraries that a plug-in's load commands ask for, and where their functions really are.
#pragma once

#include <string_view>

namespace simulator {

/// The install name of the device maker's client framework.
inline constexpr std::string_view kDeviceFramework =
    "/Library/Frameworks/MoravinClient.framework/Versions/A/MoravinClient";

/// Answers for the libraries of one system. Symbols have the leading underscore of C names.
class SystemLibraries {
 public:
  virtual ~SystemLibraries() = default;

  /// Whether a library of that install name exists.
  virtual bool has(std::string_view library) const = 0;

  /// The address of a symbol of a library that exists; null where it does not have it.
  virtual void* find(std::string_view library, std::string_view symbol) const = 0;
};

/// The simulated Mac. Frameworks and the message runtime are the functions of the simulator's own
/// library; what of the C and C++ libraries may be used is listed by name, and nothing else of
/// this process can be reached. The device framework is there where its library is loaded.
/// [any-thread]
class SimulatedMac : public SystemLibraries {
 public:
  bool has(std::string_view library) const override;
  void* find(std::string_view library, std::string_view symbol) const override;
};

}  // namespace simulator
