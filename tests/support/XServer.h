// An X server without a screen, for tests of windows.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace testing_support {

/// A child process. It gets `signal` when this process ends.
class Child {
 public:
  /// `body` must not return, which it does by replacing the process.
  Child(int signal, const std::function<void()>& body);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void end();
  void interrupt(int signal) const;

  /// Returns the exit status; 1 if a signal ended the process.
  int wait();

 private:
  pid_t process_;
};

/// The server chooses a display that no other server has, and ends with this object.
class XServer {
 public:
  /// `program`: the file of the server; `screen`: width, height and depth, "1440x900x24".
  XServer(const std::string& program, const std::string& screen);
  ~XServer() { server_.end(); }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// ":" and a number; empty if the server did not start.
  std::string display() const { return display_.empty() ? "" : ":" + display_; }

 private:
  struct Pipe {
    int read, write;
    Pipe();
  };

  Pipe pipe_;
  std::string display_;
  Child server_;
};

}  // namespace testing_support
