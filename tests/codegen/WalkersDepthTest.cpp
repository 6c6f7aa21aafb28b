// Deeply nested containers, walked on a small stack.
#include <HostTerms.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "codegen/Walkers.h"
#include "simulator/host/Host.h"
#include "suites/Suites.h"
#include "tests/support/Build.h"

namespace {

// The text grows with the square of the depth; sanitizers make each byte of it slower.
constexpr std::size_t kDepth = testing_support::kSanitized ? 3'000 : 10'000;

/// A stream that counts the lines of the text and discards it.
class LineCounter {
 public:
  LineCounter() : file_(fopencookie(this, "w", {nullptr, count, nullptr, nullptr}), std::fclose) {}

  std::FILE* file() { return file_.get(); }

  std::size_t lines() {
    std::fflush(file_.get());
    return lines_;
  }

 private:
  static ssize_t count(void* self, const char* text, std::size_t size) {
    static_cast<LineCounter*>(self)->lines_ +=
        static_cast<std::size_t>(std::count(text, text + size, '\n'));
    return static_cast<ssize_t>(size);
  }

  std::size_t lines_ = 0;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

/// A descriptor with `depth` containers, alternately lists and objects, each in the one before.
simulator::ContainerPtr nested(std::size_t depth) {
  using namespace simulator;
  auto content = std::make_shared<Container>();
  for (std::size_t level = depth; level > 0; --level) {
    auto outer = std::make_shared<Container>();
    const bool isKeyed = level % 2 == 1;  // the outermost is a descriptor
    const Item item = isKeyed ? Item{kTypeValueList, List{content}}
                              : Item{kTypeObject, Object{kClassLayer, content}};
    outer->entries.push_back({isKeyed ? kKeyName : 0, item});
    content = outer;
  }
  return content;
}

struct Walked {
  std::size_t lines = 0;
  std::size_t owned = 0;
};

void* walk(void* out) {
  simulator::Host& simulated = simulator::theHost();
  sSPBasic = simulated.basicSuite();
  LineCounter counter;
  DumpInfoFromDescriptor(simulated.makeDescriptor(nested(kDepth)), counter.file());
  *static_cast<Walked*>(out) = {counter.lines(), simulated.objectsOwned()};
  return nullptr;
}

Walked walkedOnStackOf(std::size_t bytes) {
  Walked walked;
  pthread_attr_t attributes;
  pthread_t thread;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, bytes);
  pthread_create(&thread, &attributes, walk, &walked);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return walked;
}

// Each container has a header of five lines, each but the outermost a put statement of three.
constexpr std::size_t kLines = (kDepth + 1) * 5 + kDepth * 3;

TEST(WalkersDepth, OfThousandsOfContainersNeedsNoMoreThan512KilobytesOfStack) {
  const Walked walked = walkedOnStackOf(512 * 1024);
  EXPECT_EQ(walked.lines, kLines);
  EXPECT_EQ(walked.owned, 0u);
}

}  // namespace
