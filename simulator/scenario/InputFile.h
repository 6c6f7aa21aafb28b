// A file, pipe or standard input that is read piece by piece, as often as needed.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace simulator {

/// Thrown if an input cannot be read; `what` is one line that begins with the file's name.
class BadInput : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Bytes that can be read at any offset.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Copies at most `size` bytes from `offset` on and returns their number; 0 at the end only.
  virtual std::size_t read(std::uint64_t offset, char* to, std::size_t size) const = 0;
};

/// The bytes of a text that outlives the source.
class TextSource : public ByteSource {
 public:
  explicit TextSource(std::string_view text) : text_(text) {}
  std::size_t read(std::uint64_t offset, char* to, std::size_t size) const override;

 private:
  std::string_view text_;
};

/// What makes two names of a file the same file.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// An open file descriptor, closed by the destructor; -1: none.
class OpenFile {
 public:
  explicit OpenFile(int descriptor = -1) : descriptor_(descriptor) {}
  ~OpenFile();
  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&& other) noexcept;
  int get() const { return descriptor_; }
  int release();

 private:
  int descriptor_;
};

/// Thrown if a temporary file or folder cannot be made, written or read. The plug-in is not to
/// blame then.
class TemporaryFileError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// A file without a name in the folder for temporary files, so nothing stays behind. It is made
/// when it is first written. Every function throws TemporaryFileError.
class TemporaryFile {
 public:
  void make();
  bool isMade() const { return file_.get() >= 0; }
  void append(std::string_view bytes);

  /// Copies at most `size` bytes from `offset` on. REQUIRES: so many bytes were appended that there
  /// is at least one.
  std::size_t read(std::uint64_t offset, char* to, std::size_t size) const;

 private:
  OpenFile file_;
};

/// "-" is standard input. What cannot be read twice, such as a pipe, is copied to a temporary file
/// without a name while it is read.
class InputFile : public ByteSource {
 public:
  /// Throws BadInput if the file cannot be opened or is a folder. This and `read` throw
  /// TemporaryFileError if a copy is needed and cannot be made.
  explicit InputFile(const std::string& file);

  /// The name as messages show it: printable, and "standard input" for "-".
  const std::string& name() const { return name_; }

  const FileIdentity& identity() const { return identity_; }

  /// The number of all bytes; nullopt if it is not known before they are read.
  std::optional<std::uint64_t> size() const;

  /// Throws BadInput.
  std::size_t read(std::uint64_t offset, char* to, std::size_t size) const override;

  /// All bytes. Throws BadInput.
  std::string text() const;

 private:
  bool copyUntil(std::uint64_t offset) const;
  [[noreturn]] void fail(int error) const;

  std::string name_;
  OpenFile file_;
  FileIdentity identity_;
  mutable TemporaryFile spool_;
  mutable std::uint64_t copied_ = 0;  ///< bytes in the spool
  mutable bool atEnd_ = false;        ///< whether the spool holds everything
};

/// The folder for temporary files: TMPDIR, or /tmp if that is not set.
std::filesystem::path temporaryFolder();

/// "cannot make a temporary file in /tmp: No space left on device", with the current `errno`.
TemporaryFileError temporaryFailure(const std::string& what);

}  // namespace simulator
