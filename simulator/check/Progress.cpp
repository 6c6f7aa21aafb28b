#include "simulator/check/Progress.h"

#include <cxxabi.h>
#include <fmt/format.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <typeinfo>

namespace simulator {

struct Progress::Record {
  std::atomic<std::size_t> steps;
  std::array<char, 1024> exception;
};

namespace {

// The record to which this process's terminate handler writes.
std::array<char, 1024>* uncaught = nullptr;

std::string currentTypeName() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  if (type == nullptr) return "an exception of another language";
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
  return status == 0 ? name.get() : type->name();
}

// The value of an exception of a type that plug-ins throw; empty for others.
std::string currentValue() {
  try {
    throw;
  } catch (const std::exception& error) {
    return fmt::format("\"{}\"", error.what());
  } catch (const char* text) {
    return fmt::format("\"{}\"", text);
  } catch (std::int32_t number) {
    return std::to_string(number);
  } catch (std::uint32_t number) {
    return std::to_string(number);
  } catch (...) {
    return "";
  }
}

[[noreturn]] void recordAndAbort() {
  if (std::current_exception() != nullptr) {
    const std::string text = currentExceptionText();
    std::memcpy(uncaught->data(), text.data(), std::min(text.size(), uncaught->size() - 1));
  }
  std::abort();
}

}  // namespace

std::string currentExceptionText() {
  const std::string value = currentValue();
  std::string text = "threw " + currentTypeName() + (value.empty() ? "" : " (" + value + ")");
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

Progress::Progress() {
  void* const page =
      mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page == MAP_FAILED) throw std::runtime_error("no memory to be had");
  record_ = new (page) Record{};
}

Progress::~Progress() { munmap(record_, sizeof(Record)); }

void Progress::beginStep() { ++record_->steps; }

void Progress::recordUncaughtExceptions() {
  uncaught = &record_->exception;
  std::set_terminate(&recordAndAbort);
}

std::size_t Progress::steps() const { return record_->steps; }

std::string Progress::exception() const { return record_->exception.data(); }

}  // namespace simulator
