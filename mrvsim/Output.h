// An output of a command: every byte reaches it, or the command fails and what was there before is
// unchanged.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "mrvsim/Spool.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

/// Thrown if an output cannot be written; `what` is one line that begins with the output's name.
class BadOutput : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// "-", "/dev/stdout" and the like, devices and pipes are written to directly, and a file is
/// replaced by `commit`. With kAppend everything waits for `prepare` or `commit`; a file is then
/// appended to. A file stays as it was if `commit` is not reached. Symbolic links are followed.
/// [main-thread]
class Output {
 public:
  enum class Mode { kReplace, kAppend };

  /// Touches nothing yet. "-" is standard output.
  explicit Output(std::string file, Mode mode = Mode::kReplace);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  /// The name as messages show it.
  const std::string& name() const { return name_; }

  /// Throws BadOutput if one of the inputs, a file's name or "-", is this very file.
  void expectNoneOf(const std::vector<std::string>& inputs) const;

  /// Throws BadOutput if the other output is the same file, or the same pipe. Devices may be the
  /// same.
  void expectOtherThan(const Output& other) const;

  /// Opens the output, so that it is known whether it can be written. Throws BadOutput.
  void open();

  /// Throws BadOutput if what was written so far could not be, and TemporaryFileError. REQUIRES: it
  /// is open.
  void write(std::string_view text);

  /// Writes what is still held back to an output that is written directly. Throws BadOutput.
  void flush();

  /// Writes everything that `commit` can no longer take back, or that shows whether it will
  /// succeed: all but the last step for a file. Throws BadOutput.
  void prepare();

  /// Does the rest: a file gets its new content now. Throws BadOutput.
  void commit();

 private:
  void openFile();
  void openBeside(int mode);
  void writeHeld();
  void replaceFile();
  void appendToFile();
  void takeBack(off_t size) const;
  void writeWaiting();
  void writeAll(std::string_view text);
  bool isAppended() const { return mode_ == Mode::kAppend && !target_.empty(); }
  void checkedClose();
  [[noreturn]] void fail(int error, const std::string& what = "cannot be written") const;

  std::string file_;
  std::string name_;
  Mode mode_;
  OpenFile descriptor_;
  std::string target_;     ///< the file to replace or to append to; empty: written directly
  std::string temporary_;  ///< the file beside the target that will replace it
  bool isNew_ = false;     ///< whether opening made the target
  std::string held_;       ///< text that is not yet written
  Spool waiting_;          ///< text that waits for its end
};

/// Makes sure that descriptors 0, 1 and 2 are taken: no file that is opened later becomes standard
/// output by chance, and writing to a closed one fails.
void takeStandardDescriptors();

/// Writes a line "mrvsim: ..." to standard error.
void complain(const std::string& message);

}  // namespace simulator
