#include "tests/simulator/loader/Modules.h"

#include <fstream>
#include <iterator>

#include "tests/simulator/loader/modules/TestHost.h"

namespace simulator {

namespace {

constexpr std::string_view kTestHost = "/usr/lib/libTestHost.dylib";

}  // namespace

std::vector<int>& record() {
  static std::vector<int>& numbers = *new std::vector<int>;
  return numbers;
}

bool TestLibraries::has(std::string_view library) const {
  return library == kTestHost || mac_.has(library);
}

void* TestLibraries::find(std::string_view library, std::string_view symbol) const {
  if (library != kTestHost) return mac_.find(library, symbol);
  if (symbol == "_testRecord") return reinterpret_cast<void*>(&testRecord);
  if (symbol == "_testThrow") return reinterpret_cast<void*>(&testThrow);
  if (symbol == "_testCall") return reinterpret_cast<void*>(&testCall);
  return nullptr;
}

std::filesystem::path modulePath(const std::string& name) {
  return std::filesystem::path(MRV_LOADER_MODULES) / (name + ".bundle");
}

std::vector<std::byte> moduleBytes(const std::string& name) {
  std::ifstream file(modulePath(name), std::ios::binary);
  const std::vector<char> chars(std::istreambuf_iterator<char>(file), {});
  const auto* const begin = reinterpret_cast<const std::byte*>(chars.data());
  return {begin, begin + chars.size()};
}

std::unique_ptr<MachImage> loadModule(const std::string& name) {
  return MachImage::load(modulePath(name), TestLibraries());
}

}  // namespace simulator

void testRecord(int value) { simulator::record().push_back(value); }

void testThrow(int value) { throw value; }

void testCall(void (*function)()) { function(); }
