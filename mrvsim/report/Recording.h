// What the log of one play holds, in columns.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "mrvsim/report/Column.h"
#include "mrvsim/report/Fates.h"
#include "mrvsim/report/LogEntry.h"
#include "simulator/base/Json.h"

namespace simulator {

/// Lines of one kind. The first two columns are the number of the line in the log and its time.
class EntryTable {
 public:
  /// The names of the further columns, as in the page.
  explicit EntryTable(std::initializer_list<const char*> names);

  /// A value for each column.
  void add(std::initializer_list<std::int64_t> values);

  /// The table as a JSON object of base64 texts, with its number of lines.
  std::string json() const;

 private:
  std::vector<const char*> names_;
  std::vector<Column> columns_;
};

/// [main-thread]
class Recording {
 public:
  Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  /// Lines come in the log's order. `number` is the line's, from 1.
  void sample(std::int64_t number, const PostedSample& sample);

  /// Any other line. REQUIRES: `line` is from `readLogEntry`.
  void entry(std::int64_t number, const Json& line);

  /// Passes on the play as a JSON object without the character "<", piece by piece. No line may
  /// follow.
  void write(const std::function<void(std::string_view)>& out);

 private:
  void finishSample();
  void posted(std::int64_t number, const Json& line);
  void wheel(std::int64_t number, const Json& line);
  void view(std::int64_t number, const Json& line);
  void note(std::int64_t number, const Json& line);
  void writeSamples(const std::function<void(std::string_view)>& out) const;

  SampleColumns samples_;
  Column sampleLines_{Column::Form::kSlopes};
  std::int64_t events_ = 0;  ///< SampleEvents since the last sample
  EntryTable ticks_;
  EntryTable keys_;
  EntryTable clicks_;
  EntryTable views_;
  EntryTable notes_;
  std::map<std::string, std::int64_t> texts_;  ///< the texts of notes as JSON, with their numbers
  std::vector<const std::string*> textsInOrder_;
};

}  // namespace simulator
