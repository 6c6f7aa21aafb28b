// What is installed: it runs from any folder, without the folder of the build.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::TemporaryFolder;

/// Expects that the tree at `prefix` is whole, and that the program in it runs by itself.
void expectWhole(const std::string& prefix) {
  const std::string scenarios = prefix + "/share/mrvphotoshop/scenarios/";
  const Finished played =
      run({"env", "-i", prefix + "/bin/mrvsim", "play", scenarios + "brush.json", "--summary"});
  EXPECT_EQ(played.status, 0) << played.errors;
  EXPECT_EQ(played.output, readFile(MRV_SCENARIOS "/brush.expected.summary"));
  for (const char* file :
       {"share/man/man1/mrvsim.1", "share/bash-completion/completions/mrvsim",
        "share/mrvphotoshop/schemas/scenario.schema.json",
        "share/mrvphotoshop/schemas/descriptor.schema.json",
        "share/mrvphotoshop/scenarios/make_flight.py", "share/doc/mrvphotoshop/README.md",
        "share/doc/mrvphotoshop/docs/scenario.md", "share/doc/mrvphotoshop/copyright"}) {
    EXPECT_TRUE(std::filesystem::exists(prefix + "/" + file)) << file;
  }
  std::vector<std::string> programs = {"mrvsim", "libMrvSimulator.so", "libMoravinClient.so",
                                       "MrvPhotoshop.so"};
  if (MRV_HAS_LIVE) programs.push_back("MrvLive.so");
  for (const std::string& file : programs) {
    const std::string dynamic = run({"readelf", "-d", prefix + "/lib/mrvphotoshop/" + file}).output;
    EXPECT_THAT(dynamic, HasSubstr("Dynamic section")) << file;
    EXPECT_THAT(dynamic, Not(HasSubstr(MRV_BUILD))) << file;
  }
}

TEST(Install, CopiesAProgramThatRunsByItself) {
  const TemporaryFolder folder;
  const Finished installed =
      run({"cmake", "--install", MRV_BUILD, "--prefix", folder.file("here")});
  ASSERT_EQ(installed.status, 0) << installed.errors;
  expectWhole(folder.file("here"));
  EXPECT_TRUE(std::filesystem::exists(folder.file("here/share/zsh/site-functions/_mrvsim")));
}

TEST(Install, MakesAPackageOfTheDistributionThatRuns) {
  const TemporaryFolder folder;
  // Not compressed as well as what a user installs, but in a fraction of the time.
  const Finished packed = run({"cpack", "--config", MRV_BUILD "/CPackConfig.cmake", "-D",
                               "CPACK_DEBIAN_COMPRESSION_TYPE=gzip", "-B", folder.file("")});
  ASSERT_EQ(packed.status, 0) << packed.output << packed.errors;
  const std::string package = folder.file("mrvphotoshop_" MRV_VERSION "_" MRV_PROCESSOR ".deb");
  ASSERT_EQ(run({"dpkg-deb", "-x", package, folder.file("root")}).status, 0);
  expectWhole(folder.file("root/usr"));
  EXPECT_TRUE(
      std::filesystem::exists(folder.file("root/usr/share/zsh/vendor-completions/_mrvsim")));
  const std::string needed = run({"dpkg-deb", "-f", package, "Depends"}).output;
  for (const char* library : {"libc++1-19", "libc6 (", "libfmt", "libstdc++6 ("}) {
    EXPECT_THAT(needed, HasSubstr(library));
  }
}

}  // namespace
