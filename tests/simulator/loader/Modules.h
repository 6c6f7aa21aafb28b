// Loads modules for the loader's tests and provides the libraries that they import.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "simulator/loader/MachImage.h"

namespace simulator {

/// The numbers that the modules recorded, in order.
std::vector<int>& record();

/// The libraries of the simulated Mac, and one with the functions of modules/TestHost.h.
class TestLibraries : public SystemLibraries {
 public:
  bool has(std::string_view library) const override;
  void* find(std::string_view library, std::string_view symbol) const override;

 private:
  SimulatedMac mac_;
};

std::filesystem::path modulePath(const std::string& name);
std::vector<std::byte> moduleBytes(const std::string& name);
std::unique_ptr<MachImage> loadModule(const std::string& name);

/// An exported function of an image; throws a LoadError if there is none.
template <class Function>
Function* function(const MachImage& image, const char* name) {
  void* const address = image.symbol(name);
  if (address == nullptr) throw LoadError(std::string("no function ") + name);
  return reinterpret_cast<Function*>(address);
}

}  // namespace simulator
