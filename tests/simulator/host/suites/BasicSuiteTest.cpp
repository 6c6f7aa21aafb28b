#include <array>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

using BasicSuite = HostTest;

SPBasicSuite& basic() { return *theHost().basicSuite(); }

TEST_F(BasicSuite, LogsAcquiringWithItsResult) {
  const void* table = nullptr;
  EXPECT_EQ(basic().AcquireSuite(kPSPropertySuite, 1, &table), 0);
  EXPECT_EQ(table, properties_);
  EXPECT_EQ(basic().ReleaseSuite(kPSPropertySuite, 1), 0);
  ASSERT_EQ(lines_.size(), 2u);
  EXPECT_EQ(lines_[0].dump(),
            R"({"t":0,"what":"suite","do":"acquire",)"
            R"("name":"Photoshop Property Suite for Plug-ins","version":1,"result":0})");
  EXPECT_EQ(lines_[1]["do"], "release");
}

TEST_F(BasicSuite, ReportsAnUnknownNameOrVersionAndWritesNothing) {
  const void* table = this;
  EXPECT_EQ(basic().AcquireSuite("No Such Suite", 1, &table), kSPSuiteNotFoundError);
  EXPECT_EQ(basic().AcquireSuite(kPSPropertySuite, 2, &table), kSPSuiteNotFoundError);
  EXPECT_EQ(basic().AcquireSuite(nullptr, 1, &table), kSPSuiteNotFoundError);
  EXPECT_EQ(table, this);
  EXPECT_TRUE(lines_[2]["name"].is_null());
}

TEST_F(BasicSuite, ReportsTheReleaseOfASuiteThatIsNotHeld) {
  EXPECT_EQ(basic().ReleaseSuite(kPSAliasSuite, 1), 0);
  EXPECT_EQ(basic().ReleaseSuite(kPSAliasSuite, 1), kSPSuiteNotFoundError);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("Basic.ReleaseSuite: suite \"Photoshop Alias Utility Suite\" "
                                   "version 1 is not held"));
}

TEST_F(BasicSuite, ReportsTheUseOfASuiteThatIsNotHeld) {
  basic().ReleaseSuite(kPSActionListSuite, kPSActionListSuiteVersion);
  PIActionList list = nullptr;
  lists_->Make(&list);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("ActionList.Make: called through a suite that is not held"));
  acquire(lists_, kPSActionListSuite, kPSActionListSuiteVersion);
  EXPECT_EQ(lists_->Free(list), 0);
}

TEST_F(BasicSuite, CountsHowOftenSuitesAreHeld) {
  const int before = theHost().suitesHeld();
  const void* table = nullptr;
  basic().AcquireSuite(kPSAliasSuite, 1, &table);
  basic().AcquireSuite(kPSAliasSuite, 1, &table);
  EXPECT_EQ(theHost().suitesHeld(), before + 2);
}

TEST_F(BasicSuite, ComparesWholeStringsByTheirCharacters) {
  EXPECT_TRUE(basic().IsEqual("Do It", std::string("Do It").c_str()));
  EXPECT_FALSE(basic().IsEqual("Do It", "Do it"));
  EXPECT_FALSE(basic().IsEqual("Do It", "Do It "));
  EXPECT_FALSE(basic().IsEqual("Do It", nullptr));
}

TEST_F(BasicSuite, KeepsTheBytesOfAMemoryBlockThatGrows) {
  void* block = nullptr;
  ASSERT_EQ(basic().AllocateBlock(2, &block), 0);
  static_cast<char*>(block)[1] = 'x';
  ASSERT_EQ(basic().ReallocateBlock(block, 100000, &block), 0);
  EXPECT_EQ(static_cast<char*>(block)[1], 'x');
  EXPECT_EQ(theHost().objectsOwned(), 1u);
  EXPECT_EQ(basic().FreeBlock(block), 0);
}

TEST_F(BasicSuite, ReportsAMemoryBlockThatIsNotAlive) {
  std::array<char, 4> own{};
  EXPECT_EQ(basic().FreeBlock(own.data()), paramErr);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("Basic.FreeBlock: the memory block given is not alive"));
}

TEST_F(BasicSuite, ReportsAnEmptyEntryAsUnimplemented) {
  EXPECT_EQ(basic().Undefined(), kSPUnimplementedError);
}

}  // namespace
}  // namespace simulator
