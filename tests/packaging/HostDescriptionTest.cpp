#include <gtest/gtest.h>

#include <string>

#include "packaging/resource/HostDescription.h"

namespace {

const std::string kHead = "resource PiPL 16000 \"Name\"\n";

std::string errorOf(const std::string& text) {
  try {
    parseHostDescription(text);
  } catch (const ResourceError& error) {
    return error.what();
  }
  return "";
}

HostProperty only(const std::string& line) {
  return readHostProperties(parseHostDescription(kHead + line)).at(0);
}

TEST(HostDescription, BecomesOneResource) {
  const Resource resource = parseHostDescription("# a comment\n\n" + kHead);
  EXPECT_EQ(resource.type, kHostResourceType);
  EXPECT_EQ(resource.id, 16000);
  EXPECT_EQ(resource.name, "Name");
  EXPECT_TRUE(readHostProperties(resource).empty());
}

TEST(HostDescription, KeepsTheOrderOfProperties) {
  const auto properties = readHostProperties(
      parseHostDescription(kHead + "8BIM kind code actn\n8BIM vers number 1 0x20  # two\n"));
  ASSERT_EQ(properties.size(), 2u);
  EXPECT_EQ(properties[0].vendor, kHostVendor);
  EXPECT_EQ(properties[0].key, kKindProperty);
  EXPECT_EQ(numberOf(properties[0]), kAutomationKind);
  EXPECT_EQ(properties[1].data, std::string("\0\0\0\1\0\0\0\x20", 8));
}

TEST(HostDescription, PadsTextToFourBytes) {
  const HostProperty property = only("8BIM name text \"two words\"");
  EXPECT_EQ(textOf(property), "two words");
  EXPECT_EQ(property.data.size(), 12u);
}

TEST(HostDescription, WritesAnEntryPointAsTextAfterEightZeroBytes) {
  const HostProperty property = only("8BIM mi64 entry AutoPluginMain");
  EXPECT_EQ(entryPointOf(property), "AutoPluginMain");
  EXPECT_EQ(property.data.substr(0, 8), std::string(8, '\0'));
}

TEST(HostDescription, EndsAZeroTerminatedTextWithAZeroByteAndPadsIt) {
  const HostProperty property = only("8BIM enbl cstring \"true\"");
  EXPECT_EQ(zeroTerminatedTextOf(property), "true");
  EXPECT_EQ(property.data, std::string("true\0\0\0\0", 8));
  EXPECT_THROW(zeroTerminatedTextOf({0, 0, "true"}), ResourceError);
}

TEST(HostDescription, FillsFlagsFromTheMostSignificantBitOn) {
  EXPECT_EQ(numberOf(only("8BIM AcpM flags startup")), 0x80000000);
  EXPECT_EQ(numberOf(only("8BIM AcpM flags purge-cache")), 0x40000000);
  EXPECT_EQ(numberOf(only("8BIM AcpM flags shutdown")), 0x20000000);
  EXPECT_EQ(numberOf(only("8BIM AcpM flags properties")), 0x10000000);
}

TEST(HostDescription, CombinesFlags) {
  EXPECT_EQ(numberOf(only("8BIM AcpM flags startup shutdown")), kWantsStartup | kWantsShutdown);
  EXPECT_EQ(numberOf(only("8BIM AcpM flags purge-cache properties")),
            kWantsPurgeCache | kWantsProperties);
}

TEST(HostDescription, NamesTheLineOfAnError) {
  EXPECT_EQ(errorOf(kHead + "8BIM kind code toolong"),
            "line 2: 'toolong' is not a four-character code");
  EXPECT_EQ(errorOf(kHead + "8BIM vers number -1"), "line 2: '-1' is not a 32-bit number");
  EXPECT_EQ(errorOf(kHead + "8BIM vers number 0x100000000"),
            "line 2: '0x100000000' is not a 32-bit number");
  EXPECT_EQ(errorOf(kHead + "8BIM AcpM flags sometimes"),
            "line 2: 'sometimes' is no call of the host");
  EXPECT_EQ(errorOf(kHead + "8BIM name text \"open"), "line 2: a text has no end");
  EXPECT_EQ(errorOf(kHead + "8BIM name picture x"), "line 2: 'picture' is no form of a property");
  EXPECT_EQ(errorOf(kHead + "8BIM name text a b"), "line 2: a property of this form has one value");
  EXPECT_EQ(errorOf(kHead + "8BIM name text"),
            "line 2: a property has a vendor, a key, a form and a value");
  EXPECT_EQ(errorOf("8BIM kind code actn"), "line 1: a property comes before its resource");
  EXPECT_EQ(errorOf(kHead + kHead), "line 2: there is a resource already");
  EXPECT_EQ(errorOf("resource PiPL 40000 \"x\""), "line 1: a resource's number has 15 bits");
  EXPECT_EQ(errorOf(""), "the description names no resource");
}

TEST(HostDescription, RefusesTextLongerThan255Bytes) {
  EXPECT_EQ(errorOf(kHead + "8BIM name text " + std::string(256, 'x')),
            "line 2: a text is too long");
}

TEST(HostDescription, RefusesDamagedResources) {
  const Resource good = parseHostDescription(kHead + "8BIM mi64 entry AutoPluginMain");
  for (std::size_t size = 0; size < good.data.size(); ++size) {
    Resource cut = good;
    cut.data.resize(size);
    EXPECT_THROW(readHostProperties(cut), ResourceError) << size;
  }
  Resource other = good;
  other.type = fourCharCode("TEXT");
  EXPECT_THROW(readHostProperties(other), ResourceError);
  Resource newer = good;
  newer.data[3] = 1;
  EXPECT_THROW(readHostProperties(newer), ResourceError);
}

TEST(HostDescription, FindsOnlyPropertiesOfTheHostsVendor) {
  const auto properties =
      readHostProperties(parseHostDescription(kHead + "ELSE kind number 1\n8BIM kind number 2\n"));
  EXPECT_EQ(numberOf(*findHostProperty(properties, kKindProperty)), 2u);
  EXPECT_EQ(findHostProperty(properties, kNameProperty), nullptr);
}

}  // namespace
