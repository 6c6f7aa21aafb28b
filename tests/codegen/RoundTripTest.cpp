// Compiles and runs generated code and compares the result with the original descriptors.
#include <HostTerms.h>

#include <cstdlib>
#include <fstream>

#include "tests/codegen/GeneratedCode.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/codegen/RandomDescriptor.h"
#include "tests/support/Build.h"

namespace {

constexpr std::size_t kDescriptors = testing_support::kSanitized ? 40 : 200;

/// The environment's MRV_SEED, or a fixed seed.
std::uint32_t seed() {
  const char* given = std::getenv("MRV_SEED");
  return given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10)) : 6;
}

simulator::ContainerPtr received;

OSErr receive(PIActionDescriptor* result, DescriptorEventID event, PIActionDescriptor descriptor,
              PIDialogPlayOptions options) {
  EXPECT_EQ(event, kEventSet);
  EXPECT_EQ(options, plugInDialogSilent);
  *result = nullptr;
  received = simulator::theHost().contentOf(descriptor);
  return 0;
}

std::string json(const simulator::Container& container) {
  return simulator::descriptorToJson(container, simulator::theHost().typeIds()).dump();
}

class RoundTrip : public GeneratorFixture {
 protected:
  std::vector<simulator::ContainerPtr> randomDescriptors() {
    const std::string file = (folder() / "a \"picture\".psd").string();
    std::ofstream stream(file);
    RandomDescriptor random(seed(), file);
    std::vector<simulator::ContainerPtr> descriptors;
    for (std::size_t i = 0; i < kDescriptors; ++i) descriptors.push_back(random.make());
    return descriptors;
  }

  std::vector<std::string> dumpedAll(const std::vector<simulator::ContainerPtr>& descriptors) {
    std::vector<std::string> texts;
    for (const auto& content : descriptors) {
      texts.push_back(dumped(kEventSet, simulator::theHost().makeDescriptor(content)));
    }
    return texts;
  }
};

TEST_F(RoundTrip, RebuildsRandomDescriptorsItemByItem) {
  const auto originals = randomDescriptors();
  GeneratedCode code(dumpedAll(originals), folder());
  ASSERT_TRUE(code.isBuilt()) << "MRV_SEED=" << seed();
  code.prepare(simulator::theHost().basicSuite(), receive);
  for (std::size_t i = 0; i < originals.size(); ++i) {
    received = nullptr;
    ASSERT_EQ(code.run(i), 0) << "function " << i << ", MRV_SEED=" << seed();
    ASSERT_NE(received, nullptr);
    const auto expected = rebuilt(*originals[i]);
    ASSERT_TRUE(equal(*expected, *received)) << "MRV_SEED=" << seed() << "\nexpected "
                                             << json(*expected) << "\nreceived " << json(*received);
  }
  EXPECT_EQ(simulator::theHost().objectsOwned(), 0u) << "the generated code frees what it makes";
  code.finish();
}

TEST_F(RoundTrip, CoversEveryItemType) {
  std::set<std::string> types;
  for (const auto& descriptor : randomDescriptors()) {
    for (const auto& entry : descriptor->entries) types.insert(simulator::idText(entry.item.type));
  }
  EXPECT_THAT(types, testing::ElementsAre("GlbC", "GlbO", "Objc", "Pth ", "TEXT", "UntF", "VlLs",
                                          "alis", "bkmk", "bool", "comp", "doub", "enum", "long",
                                          "obj ", "tdta", "type"));
}

}  // namespace
