#include <fmt/format.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "simulator/macos/CFObjects.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

class CFObjectTable : public testing::Test {
 protected:
  std::vector<std::string> misuses() {
    std::vector<std::string> texts;
    for (const Json& line : machine_.lines("misuse")) texts.push_back(line["text"]);
    machine_.expectMisuses(testing::ElementsAreArray(texts));
    return texts;
  }

  testing_support::Machine machine_;
  CFObjects& objects_ = theCFObjects();
};

using Texts = std::vector<std::string>;

std::string wrongUse(const char* procedure, CFTypeRef object) {
  return fmt::format("{}: {} is no such object, or was released", procedure, object);
}

TEST_F(CFObjectTable, FreesAnObjectWithItsLastReference) {
  const CFTypeRef object = objects_.make(CFText{u"a"});
  objects_.retain(object);
  objects_.release(object);
  EXPECT_EQ(objects_.get<CFText>(object, "x")->units, u"a");
  objects_.release(object);
  EXPECT_EQ(objects_.live(), 0U);
  EXPECT_EQ(misuses(), Texts{});
  EXPECT_FALSE(objects_.get<CFText>(object, "TheCall"));
  objects_.release(object);
  objects_.retain(object);
  EXPECT_EQ(misuses(), (Texts{wrongUse("TheCall", object), wrongUse("CFRelease", object),
                              wrongUse("CFRetain", object)}));
}

TEST_F(CFObjectTable, NeverFreesAConstant) {
  const CFStringRef constant = constantCFString("k");
  objects_.release(constant);
  objects_.release(constant);
  EXPECT_EQ(objects_.get<CFText>(constant, "x")->units, u"k");
  EXPECT_EQ(constantCFString("k"), constant);
  EXPECT_NE(constantCFString("K"), constant);
  EXPECT_EQ(objects_.live(), 0U);
  objects_.reportLeaks();
  EXPECT_EQ(misuses(), Texts{});
}

TEST_F(CFObjectTable, FreesTheIdentifierOfAnInputSourceWithIt) {
  const CFTypeRef source = objects_.make(InputSource{makeCFString("layout")});
  EXPECT_EQ(objects_.live(), 2U);
  objects_.release(source);
  EXPECT_EQ(objects_.live(), 0U);
}

TEST_F(CFObjectTable, NamesTheKindOfEachObjectThatIsLeaked) {
  const std::vector<CFTypeRef> leaked = {objects_.make(CFText{}),
                                         objects_.make(CFUrl{"/", "", true}),
                                         objects_.make(CFBytes{}),
                                         objects_.make(CFList{}),
                                         objects_.make(InputSource{constantCFString("i")}),
                                         objects_.make(SynthesizedEvent{})};
  objects_.reportLeaks();
  EXPECT_EQ(misuses(), (Texts{"a string was leaked", "a URL was leaked", "a data was leaked",
                              "a array was leaked", "a input source was leaked",
                              "a synthesized event was leaked"}));
  for (const CFTypeRef object : leaked) objects_.release(object);
}

TEST_F(CFObjectTable, ChangesAnObjectOfTheRightKindAlone) {
  const CFTypeRef text = objects_.make(CFText{u"a"});
  objects_.change<CFText>(text, "x", [](CFText& value) { value.units = u"b"; });
  EXPECT_EQ(objects_.get<CFText>(text, "x")->units, u"b");
  bool called = false;
  objects_.change<CFBytes>(text, "TheCall", [&](CFBytes&) { called = true; });
  EXPECT_FALSE(called);
  EXPECT_EQ(misuses(), Texts{wrongUse("TheCall", text)});
  objects_.release(text);
}

}  // namespace
