#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "hostutil/CallbackChecks.h"
#include "simulator/host/callbacks/CallbackRecords.h"
#include "tests/hostutil/RecordChecks.h"

namespace {

using hostutil_test::Check;
using hostutil_test::forEachCheck;
using hostutil_test::recordOf;

constexpr int16 kLowest = std::numeric_limits<int16>::min();
constexpr int16 kHighest = std::numeric_limits<int16>::max();

int16 word(int value) { return static_cast<int16>(value); }

template <class Record>
void clearProcedure(Record& record, int index) {
  std::memset(reinterpret_cast<char*>(&record) + 8 + 8 * index, 0, 8);
}

template <class Record>
bool isAvailable(const Check<Record>& check, const Record& record) {
  return check.available(&record, nullptr);
}

TEST(CallbackChecks, RejectANullRecordAndSetNoFlag) {
  forEachCheck([](const auto& check) {
    bool newer = false;
    EXPECT_FALSE(check.available(nullptr, &newer)) << check.name;
    EXPECT_FALSE(newer) << check.name;
    EXPECT_FALSE(check.available(nullptr, nullptr)) << check.name;
  });
}

TEST(CallbackChecks, AcceptTheRequiredVersionWithTheRequiredProcedures) {
  forEachCheck([](const auto& check) {
    bool newer = false;
    const auto record = recordOf(check, check.version, check.count);
    EXPECT_TRUE(check.available(&record, &newer)) << check.name;
    EXPECT_FALSE(newer) << check.name;
    EXPECT_TRUE(check.available(&record, nullptr)) << check.name;
  });
}

TEST(CallbackChecks, RejectAnOlderVersionAndSetNoFlag) {
  forEachCheck([](const auto& check) {
    for (const int version : {check.version - 1, -1, int{kLowest}}) {
      bool newer = false;
      const auto record = recordOf(check, version, check.count);
      EXPECT_FALSE(check.available(&record, &newer)) << check.name << ' ' << version;
      EXPECT_FALSE(newer) << check.name << ' ' << version;
    }
  });
}

TEST(CallbackChecks, RejectANewerVersionAndSetTheFlag) {
  forEachCheck([](const auto& check) {
    for (const int version : {check.version + 1, int{kHighest}}) {
      for (const int count : {check.count, 0}) {
        bool newer = false;
        const auto record = recordOf(check, version, count);
        EXPECT_FALSE(check.available(&record, &newer)) << check.name << ' ' << version;
        EXPECT_TRUE(newer) << check.name << ' ' << version;
        EXPECT_FALSE(check.available(&record, nullptr)) << check.name << ' ' << version;
      }
    }
  });
}

TEST(CallbackChecks, RejectAHandleRecordOfVersion2AndSetTheFlag) {
  bool newer = false;
  const HandleProcs record = simulator::handleProcs(2, 8);
  EXPECT_FALSE(HostHandleProcsAvailable(&record, &newer));
  EXPECT_TRUE(newer);
}

TEST(CallbackChecks, LeaveTheFlagSetIfTheVersionIsNotNewer) {
  forEachCheck([](const auto& check) {
    for (const int version : {check.version - 1, check.version}) {
      bool newer = true;
      const auto record = recordOf(check, version, check.count);
      check.available(&record, &newer);
      EXPECT_TRUE(newer) << check.name;
    }
  });
}

TEST(CallbackChecks, RejectACountBelowTheMinimumEvenIfAllProceduresArePresent) {
  forEachCheck([](const auto& check) {
    auto record = recordOf(check, check.version, check.procedures);
    for (const int count : {check.count - 1, 0, -1, int{kLowest}}) {
      const int16 low = word(count);
      std::memcpy(reinterpret_cast<char*>(&record) + 2, &low, sizeof low);
      EXPECT_FALSE(isAvailable(check, record)) << check.name << ' ' << count;
    }
  });
}

TEST(CallbackChecks, AcceptACountAboveTheMinimum) {
  forEachCheck([](const auto& check) {
    for (const int count : {check.count + 1, int{kHighest}}) {
      EXPECT_TRUE(isAvailable(check, recordOf(check, check.version, count)))
          << check.name << ' ' << count;
    }
  });
}

TEST(CallbackChecks, RejectARecordWithoutARequiredProcedure) {
  forEachCheck([](const auto& check) {
    for (int missing = 0; missing < check.present; ++missing) {
      auto record = recordOf(check, check.version, check.count);
      clearProcedure(record, missing);
      EXPECT_FALSE(isAvailable(check, record)) << check.name << ", procedure " << missing;
    }
  });
}

TEST(CallbackChecks, AcceptARecordWithoutAProcedureThatIsNotRequired) {
  forEachCheck([](const auto& check) {
    for (int missing = check.present; missing < check.procedures; ++missing) {
      auto record = recordOf(check, check.version, check.count);
      clearProcedure(record, missing);
      EXPECT_TRUE(isAvailable(check, record)) << check.name << ", procedure " << missing;
    }
  });
}

TEST(CallbackChecks, DecideByVersionAndCountAroundTheRequiredOnes) {
  forEachCheck([](const auto& check) {
    for (int version = check.version - 3; version <= check.version + 3; ++version) {
      for (int count = check.count - 10; count <= check.count + 2; ++count) {
        const auto record = recordOf(check, version, count);
        bool newer = false;
        EXPECT_EQ(check.available(&record, &newer),
                  version == check.version && count >= check.count)
            << check.name << ' ' << version << ' ' << count;
        EXPECT_EQ(newer, version > check.version) << check.name << ' ' << version;
      }
    }
  });
}

TEST(CallbackChecks, RequireOnlyTheProcedureToDisplayPixels) {
  bool newer = false;
  EXPECT_TRUE(HostDisplayPixelsAvailable(simulator::displayPixelsProc(), &newer));
  EXPECT_FALSE(HostDisplayPixelsAvailable(nullptr, &newer));
  EXPECT_FALSE(newer);
}

// --- the descriptor record

TEST(CallbackChecksDescriptor, IsUnavailableIfNull) {
  EXPECT_FALSE(HostDescriptorAvailable(nullptr, nullptr));
}

TEST(CallbackChecksDescriptor, IsAvailableInVersion0WithBothSubRecords) {
  simulator::DescriptorRecord record;
  bool newer = false;
  EXPECT_TRUE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_FALSE(newer);
}

TEST(CallbackChecksDescriptor, IsUnavailableAndSetsTheFlagIfNewer) {
  simulator::DescriptorRecord record;
  record.parameters.descriptorParametersVersion = 1;
  bool newer = false;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_TRUE(newer);
}

TEST(CallbackChecksDescriptor, IsUnavailableAndSetsNoFlagIfOlder) {
  simulator::DescriptorRecord record;
  record.parameters.descriptorParametersVersion = -1;
  bool newer = false;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_FALSE(newer);
}

TEST(CallbackChecksDescriptor, IsUnavailableWithoutASubRecord) {
  simulator::DescriptorRecord record;
  record.parameters.readDescriptorProcs = nullptr;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, nullptr));
  record.parameters.readDescriptorProcs = &record.read;
  record.parameters.writeDescriptorProcs = nullptr;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, nullptr));
}

TEST(CallbackChecksDescriptor, IsUnavailableAndSetsNoFlagIfASubRecordHasAnotherVersion) {
  for (const int version : {-1, 1, int{kHighest}}) {
    simulator::DescriptorRecord record;
    bool newer = false;
    record.read = simulator::readDescriptorProcs(word(version));
    EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer)) << version;
    record.read = simulator::readDescriptorProcs();
    record.write = simulator::writeDescriptorProcs(word(version));
    EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer)) << version;
    EXPECT_FALSE(newer) << version;
  }
}

TEST(CallbackChecksDescriptor, NeedsACountOf18ForReadingAndNoneForWriting) {
  for (int count = 16; count <= 20; ++count) {
    simulator::DescriptorRecord record;
    record.read = simulator::readDescriptorProcs(0, word(count));
    record.write = simulator::writeDescriptorProcs(0, 0);
    EXPECT_EQ(HostDescriptorAvailable(&record.parameters, nullptr), count >= 18) << count;
  }
}

TEST(CallbackChecksDescriptor, IsAvailableWhateverFollowsItsVersion) {
  simulator::DescriptorRecord record;
  record.parameters.playInfo = kLowest;
  record.parameters.recordInfo = kLowest;
  EXPECT_TRUE(HostDescriptorAvailable(&record.parameters, nullptr));
}

}  // namespace
