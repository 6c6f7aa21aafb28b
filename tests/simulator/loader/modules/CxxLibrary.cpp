// Uses strings, vectors and exceptions of the C++ library whose code is out of line in it.
#include <algorithm>
#include <cerrno>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "TestHost.h"

namespace {

// The text of what `work` throws, by its base class.
template <class Work>
std::string thrownBy(Work work) {
  try {
    work();
  } catch (const std::logic_error& error) {
    return std::string("logic: ") + error.what();
  } catch (const std::runtime_error& error) {
    return std::string("runtime: ") + error.what();
  } catch (const std::exception& error) {
    return std::string("other: ") + error.what();
  }
  return "nothing";
}

int copyTo(char* buffer, unsigned long size, const std::string& text) {
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  text.copy(buffer, length);
  buffer[length] = '\0';
  return static_cast<int>(text.size());
}

volatile int seed = 7;

}  // namespace

EXPORT int joinsStrings(char* buffer, unsigned long size) {
  std::string text = "a string longer than what fits into the object itself, ";
  text.append("appended").append(2, '!');
  text.insert(0, "> ");
  text.replace(text.find("longer"), 6, "larger");
  text += std::to_string(seed * 6);
  text.resize(text.size() + 2, '.');
  return copyTo(buffer, size, "<" + text);
}

EXPORT int comparesStrings() {
  const std::string one(static_cast<unsigned>(seed) * 10, 'x');
  const std::string two = one.substr(0, 69) + "y";
  return one.compare(two) < 0 && one.find("xy") == std::string::npos && two.rfind('y') == 69;
}

EXPORT int sortsVector() {
  std::vector<int> numbers;
  for (int i = 0; i < 1000; ++i) numbers.push_back(i * seed % 1000);
  std::sort(numbers.begin(), numbers.end());
  return std::is_sorted(numbers.begin(), numbers.end()) ? numbers[999] : -1;
}

EXPORT int readsNumbers() {
  return std::stoi("41") + static_cast<int>(std::stod("1.25") * 4) + std::stoi("0x10", nullptr, 16);
}

EXPORT int sharesObjects() {
  const auto number = std::make_shared<int>(seed);
  const std::weak_ptr<int> weak = number;
  const std::function<int()> value = [number] { return *number; };
  return value() + static_cast<int>(weak.use_count());
}

EXPORT int namesExceptions(char* buffer, unsigned long size) {
  const std::string text(30, 'e');
  std::string all = thrownBy([&] { throw std::runtime_error("thrown: " + text); }) + "|";
  all += thrownBy([&] { throw std::out_of_range(text); }) + "|";
  all += thrownBy([&] { (void)text.at(static_cast<unsigned>(seed) * 100); }) + "|";
  all += thrownBy([] { (void)std::stoi("no number"); }) + "|";
  all += thrownBy([] { throw std::system_error(ENOENT, std::generic_category(), "opening"); });
  return copyTo(buffer, size, all);
}

EXPORT void throwsToHost() { throw std::runtime_error(std::string("out of ") + "the module"); }
