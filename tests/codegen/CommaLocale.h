// A locale in which numbers have a decimal comma. It is built for the test, because no locale but
// "C" need be installed; the distribution's package locales has the tables for that.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <fstream>

#include "tests/support/Process.h"

/// Sets the locale of numbers during its lifetime.
class CommaLocale {
 public:
  CommaLocale() {
    std::ofstream(folder_.file("source")) << "LC_NUMERIC\n"
                                             "decimal_point \",\"\n"
                                             "thousands_sep \"\"\n"
                                             "grouping -1\n"
                                             "END LC_NUMERIC\n";
    // It warns of the other categories, which the source does not define.
    testing_support::run({"localedef", "--no-archive", "--force", "-i", folder_.file("source"),
                          folder_.file("comma")});
    setenv("LOCPATH", folder_.file("").c_str(), 1);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, "comma"), "comma");
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  }
  ~CommaLocale() { std::setlocale(LC_NUMERIC, "C"); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  testing_support::TemporaryFolder folder_;
};
