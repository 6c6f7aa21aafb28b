// A column of whole numbers in few bytes, as the report's page holds it and reads it again.
//
// Numbers that change little or evenly, such as times and axes, are stored as differences. Each is
// written in the zigzag form (0, -1, 1, -2 ...) in groups of seven bits, the lowest first, with the
// high bit set in all groups but the last. A zero is followed by the number of zeros after it, in
// the same groups. The page's reader is report/data.js.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {

/// [one thread at a time]
class Column {
 public:
  /// What is stored: the differences between neighbours, or the differences of these, which are
  /// zero if the values rise evenly.
  enum class Form { kDifferences = 1, kSlopes = 2 };

  explicit Column(Form form = Form::kDifferences) : form_(form) {}

  /// REQUIRES: the value's magnitude is less than 2^53, so that the page can represent it.
  void append(std::int64_t value);

  std::size_t size() const { return size_; }

  /// The bytes in base64.
  std::string base64() const;

  /// Reads the values from the first on. The column must not change meanwhile.
  class Reader {
   public:
    explicit Reader(const Column& column) : column_(column) {}
    /// REQUIRES: not all values were read.
    std::int64_t next();

   private:
    std::uint64_t nextNumber();
    const Column& column_;
    std::size_t at_ = 0;
    std::uint64_t zeros_ = 0;
    std::array<std::int64_t, 2> sums_ = {};
  };

 private:
  std::size_t order() const { return static_cast<std::size_t>(form_); }

  Form form_;
  std::string bytes_;
  std::uint64_t zeros_ = 0;  ///< at the end, not yet in `bytes_`
  std::array<std::int64_t, 2> lasts_ = {};
  std::size_t size_ = 0;
};

}  // namespace simulator
