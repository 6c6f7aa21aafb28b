// The modules that the loader's tests load, and the libraries that these find.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "simulator/loader/MachImage.h"

namespace simulator {

/// The numbers that modules recorded, in order.
std::vector<int>& record();

/// The simulated Mac and one library more, with the functions of modules/TestHost.h.
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

/// An exported function of an image; the test fails where there is none.
template <class Function>
Function* function(const MachImage& image, const char* name) {
  void* const address = image.symbol(name);
  if (address == nullptr) throw LoadError(std::string("no function ") + name);
  return reinterpret_cast<Function*>(address);
}

}  // namespace simulator
