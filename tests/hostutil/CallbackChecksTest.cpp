#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "hostutil/CallbackChecks.h"
#include "hostutil/HostUtilities.h"
#include "simulator/host/callbacks/CallbackRecords.h"

namespace {
std::string gAlert;  // what the version alert showed last
}  // namespace

// Stands in for the one that shows nothing.
int ShowVersionAlert(const unsigned char* version) {
  gAlert.assign(reinterpret_cast<const char*>(version) + 1, version[0]);
  return 0;
}

namespace {

constexpr int16 kLowest = std::numeric_limits<int16>::min();
constexpr int16 kHighest = std::numeric_limits<int16>::max();

int16 word(int value) { return static_cast<int16>(value); }

/// One check, with what it asks for and where its record comes from.
template <class Record>
struct Check {
  const char* name;
  bool (*available)(const Record*, bool*);
  bool (*warn)(const Record*);
  Record (*record)(int16 version, int16 count);
  int version;
  int count;
  int present;
  int procedures;  // as many as the record has
  const char* alert;
};

constexpr Check<BufferProcs> kBuffers = {"buffers",
                                         HostBufferProcsAvailable,
                                         WarnHostBufferProcsAvailable,
                                         simulator::bufferProcs,
                                         2,
                                         8,
                                         8,
                                         8,
                                         "2.5."};
constexpr Check<ResourceProcs> kResources = {"resources",
                                             HostResourceProcsAvailable,
                                             WarnHostResourceProcsAvailable,
                                             simulator::resourceProcs,
                                             3,
                                             4,
                                             4,
                                             4,
                                             "3.0."};
constexpr Check<HandleProcs> kHandles = {"handles",
                                         HostHandleProcsAvailable,
                                         WarnHostHandleProcsAvailable,
                                         simulator::handleProcs,
                                         1,
                                         8,
                                         4,
                                         8,
                                         "3.0."};
constexpr Check<PropertyProcs> kProperties = {"properties",
                                              HostPropertyAvailable,
                                              WarnHostPropertyAvailable,
                                              simulator::propertyProcs,
                                              1,
                                              2,
                                              2,
                                              2,
                                              "2.5."};
constexpr Check<ChannelPortProcs> kPorts = {"channel ports",
                                            HostChannelPortAvailable,
                                            WarnHostChannelPortAvailable,
                                            simulator::channelPortProcs,
                                            1,
                                            3,
                                            3,
                                            3,
                                            "4.0."};

/// Runs `test` for each of the checks that a record with a count has.
template <class Test>
void forEachCheck(Test test) {
  test(kBuffers);
  test(kResources);
  test(kHandles);
  test(kProperties);
  test(kPorts);
}

template <class Record>
Record recordOf(const Check<Record>& check, int version, int count) {
  return check.record(word(version), word(count));
}

template <class Record>
void clearProcedure(Record& record, int index) {
  std::memset(reinterpret_cast<char*>(&record) + 8 + 8 * index, 0, 8);
}

template <class Record>
bool isAvailable(const Check<Record>& check, const Record& record) {
  return check.available(&record, nullptr);
}

TEST(CallbackChecks, a_null_record_is_unavailable_and_sets_no_flag) {
  forEachCheck([](const auto& check) {
    bool newer = false;
    EXPECT_FALSE(check.available(nullptr, &newer)) << check.name;
    EXPECT_FALSE(newer) << check.name;
    EXPECT_FALSE(check.available(nullptr, nullptr)) << check.name;
  });
}

TEST(CallbackChecks, the_required_version_with_the_required_procedures_is_available) {
  forEachCheck([](const auto& check) {
    bool newer = false;
    const auto record = recordOf(check, check.version, check.count);
    EXPECT_TRUE(check.available(&record, &newer)) << check.name;
    EXPECT_FALSE(newer) << check.name;
    EXPECT_TRUE(check.available(&record, nullptr)) << check.name;
  });
}

TEST(CallbackChecks, a_version_below_the_required_one_is_unavailable_and_sets_no_flag) {
  forEachCheck([](const auto& check) {
    for (const int version : {check.version - 1, -1, int{kLowest}}) {
      bool newer = false;
      const auto record = recordOf(check, version, check.count);
      EXPECT_FALSE(check.available(&record, &newer)) << check.name << ' ' << version;
      EXPECT_FALSE(newer) << check.name << ' ' << version;
    }
  });
}

TEST(CallbackChecks, a_newer_version_is_unavailable_and_sets_the_flag) {
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

TEST(CallbackChecks, a_handle_record_of_version_2_is_unavailable_with_the_newer_flag_set) {
  bool newer = false;
  const HandleProcs record = simulator::handleProcs(2, 8);
  EXPECT_FALSE(HostHandleProcsAvailable(&record, &newer));
  EXPECT_TRUE(newer);
}

TEST(CallbackChecks, a_flag_that_is_set_stays_set_where_the_version_is_not_newer) {
  forEachCheck([](const auto& check) {
    for (const int version : {check.version - 1, check.version}) {
      bool newer = true;
      const auto record = recordOf(check, version, check.count);
      check.available(&record, &newer);
      EXPECT_TRUE(newer) << check.name;
    }
  });
}

TEST(CallbackChecks, a_count_below_the_minimum_is_unavailable_though_all_procedures_are_there) {
  forEachCheck([](const auto& check) {
    auto record = recordOf(check, check.version, check.procedures);
    for (const int count : {check.count - 1, 0, -1, int{kLowest}}) {
      const int16 low = word(count);
      std::memcpy(reinterpret_cast<char*>(&record) + 2, &low, sizeof low);
      EXPECT_FALSE(isAvailable(check, record)) << check.name << ' ' << count;
    }
  });
}

TEST(CallbackChecks, a_count_above_the_minimum_is_available) {
  forEachCheck([](const auto& check) {
    for (const int count : {check.count + 1, int{kHighest}}) {
      EXPECT_TRUE(isAvailable(check, recordOf(check, check.version, count)))
          << check.name << ' ' << count;
    }
  });
}

TEST(CallbackChecks, each_required_procedure_must_be_present) {
  forEachCheck([](const auto& check) {
    for (int missing = 0; missing < check.present; ++missing) {
      auto record = recordOf(check, check.version, check.count);
      clearProcedure(record, missing);
      EXPECT_FALSE(isAvailable(check, record)) << check.name << ", procedure " << missing;
    }
  });
}

TEST(CallbackChecks, procedures_beyond_the_required_ones_may_be_missing) {
  forEachCheck([](const auto& check) {
    for (int missing = check.present; missing < check.procedures; ++missing) {
      auto record = recordOf(check, check.version, check.count);
      clearProcedure(record, missing);
      EXPECT_TRUE(isAvailable(check, record)) << check.name << ", procedure " << missing;
    }
  });
}

TEST(CallbackChecks, every_version_and_count_around_the_required_ones) {
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

TEST(CallbackChecks, display_of_pixels_asks_for_its_procedure_alone) {
  bool newer = false;
  EXPECT_TRUE(HostDisplayPixelsAvailable(simulator::displayPixelsProc(), &newer));
  EXPECT_FALSE(HostDisplayPixelsAvailable(nullptr, &newer));
  EXPECT_FALSE(newer);
}

// --- the descriptor record

TEST(DescriptorCheck, a_null_record_is_unavailable) {
  EXPECT_FALSE(HostDescriptorAvailable(nullptr, nullptr));
}

TEST(DescriptorCheck, version_0_with_both_sub_records_is_available) {
  simulator::DescriptorRecord record;
  bool newer = false;
  EXPECT_TRUE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_FALSE(newer);
}

TEST(DescriptorCheck, a_newer_outer_record_is_unavailable_and_sets_the_flag) {
  simulator::DescriptorRecord record;
  record.parameters.descriptorParametersVersion = 1;
  bool newer = false;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_TRUE(newer);
}

TEST(DescriptorCheck, an_older_outer_record_is_unavailable_and_sets_no_flag) {
  simulator::DescriptorRecord record;
  record.parameters.descriptorParametersVersion = -1;
  bool newer = false;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, &newer));
  EXPECT_FALSE(newer);
}

TEST(DescriptorCheck, each_sub_record_must_be_present) {
  simulator::DescriptorRecord record;
  record.parameters.readDescriptorProcs = nullptr;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, nullptr));
  record.parameters.readDescriptorProcs = &record.read;
  record.parameters.writeDescriptorProcs = nullptr;
  EXPECT_FALSE(HostDescriptorAvailable(&record.parameters, nullptr));
}

TEST(DescriptorCheck, a_sub_record_of_another_version_is_unavailable_and_sets_no_flag) {
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

TEST(DescriptorCheck, the_reading_record_needs_18_procedures_and_the_writing_one_none) {
  for (int count = 16; count <= 20; ++count) {
    simulator::DescriptorRecord record;
    record.read = simulator::readDescriptorProcs(0, word(count));
    record.write = simulator::writeDescriptorProcs(0, 0);
    EXPECT_EQ(HostDescriptorAvailable(&record.parameters, nullptr), count >= 18) << count;
  }
}

TEST(DescriptorCheck, the_words_behind_the_outer_version_do_not_count) {
  simulator::DescriptorRecord record;
  record.parameters.playInfo = kLowest;
  record.parameters.recordInfo = kLowest;
  EXPECT_TRUE(HostDescriptorAvailable(&record.parameters, nullptr));
}

// --- the warnings

TEST(CallbackWarnings, an_available_record_raises_no_alert) {
  forEachCheck([](const auto& check) {
    const auto record = recordOf(check, check.version, check.count);
    EXPECT_TRUE(check.warn(&record)) << check.name;
  });
  simulator::DescriptorRecord descriptor;
  EXPECT_TRUE(WarnHostDescriptorAvailable(&descriptor.parameters));
  EXPECT_TRUE(WarnHostDisplayPixelsAvailable(simulator::displayPixelsProc()));
  EXPECT_TRUE(WarnHostAdvanceStateAvailable(simulator::advanceStateProc()));
  EXPECT_TRUE(WarnHostColorServicesAvailable(simulator::colorServicesProc()));
  EXPECT_EQ(gAlert, "");
}

TEST(CallbackWarnings, a_record_that_is_missing_old_or_newer_shows_the_version_needed) {
  forEachCheck([](const auto& check) {
    const auto older = recordOf(check, check.version - 1, check.count);
    const auto newer = recordOf(check, check.version + 1, check.count);
    using Record = std::remove_const_t<decltype(older)>;
    for (const Record* record : {static_cast<const Record*>(nullptr), &older, &newer}) {
      gAlert.clear();
      EXPECT_FALSE(check.warn(record)) << check.name;
      EXPECT_EQ(gAlert, check.alert) << check.name;
    }
  });
}

TEST(CallbackWarnings, a_missing_descriptor_record_shows_4_0) {
  EXPECT_FALSE(WarnHostDescriptorAvailable(nullptr));
  EXPECT_EQ(gAlert, "4.0.");
}

TEST(CallbackWarnings, a_missing_procedure_that_displays_pixels_shows_2_501) {
  EXPECT_FALSE(WarnHostDisplayPixelsAvailable(nullptr));
  EXPECT_EQ(gAlert, "2.501.");
}

TEST(CallbackWarnings, a_missing_procedure_that_advances_the_state_shows_3_0) {
  EXPECT_FALSE(WarnHostAdvanceStateAvailable(nullptr));
  EXPECT_EQ(gAlert, "3.0.");
}

TEST(CallbackWarnings, missing_colour_services_show_2_5) {
  EXPECT_FALSE(WarnHostColorServicesAvailable(nullptr));
  EXPECT_EQ(gAlert, "2.5.");
}

}  // namespace
