#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "mrvsim/report/Column.h"

namespace simulator {
namespace {

Column columnOf(const std::vector<std::int64_t>& values, Column::Form form) {
  Column column(form);
  for (const std::int64_t value : values) column.append(value);
  return column;
}

std::vector<std::int64_t> read(const Column& column) {
  std::vector<std::int64_t> values;
  Column::Reader reader(column);
  while (values.size() < column.size()) values.push_back(reader.next());
  return values;
}

TEST(Column, GivesBackWhatWasAppended) {
  constexpr std::int64_t kMost = (std::int64_t{1} << 53) - 1;
  const std::vector<std::int64_t> values = {0,    0,     0,    -1,    1,      63, 64, -64, -65,
                                            8191, -8192, 8192, kMost, -kMost, 0,  0,  7};
  EXPECT_EQ(read(columnOf(values, Column::Form::kDifferences)), values);
  EXPECT_EQ(read(columnOf(values, Column::Form::kSlopes)), values);
}

TEST(Column, EndsWithZerosThatAreReadAndWritten) {
  const Column column = columnOf({5, 5, 5}, Column::Form::kDifferences);
  EXPECT_EQ(read(column), (std::vector<std::int64_t>{5, 5, 5}));
  // 5 is 10 in the zigzag form; then a zero with one more after it.
  EXPECT_EQ(column.base64(), "CgAB");
}

TEST(Column, TakesFewBytesForTimesThatRiseEvenly) {
  Column column(Column::Form::kSlopes);
  for (std::int64_t i = 0; i < 360000; ++i) column.append(1000 + 10 * i);
  EXPECT_LE(column.base64().size(), 12U);
}

TEST(Column, IsPaddedInBase64) {
  EXPECT_EQ(columnOf({}, Column::Form::kDifferences).base64(), "");
  EXPECT_EQ(columnOf({1}, Column::Form::kDifferences).base64(), "Ag==");
  EXPECT_EQ(columnOf({1, 3}, Column::Form::kDifferences).base64(), "AgQ=");
  EXPECT_EQ(columnOf({1, 3, 2}, Column::Form::kDifferences).base64(), "AgQB");
}

}  // namespace
}  // namespace simulator
