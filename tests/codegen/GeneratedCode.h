// Compiles generated functions after the edits that a developer makes to use them.
#pragma once

#include <PIActions.h>
#include <SPBasic.h>

#include <filesystem>
#include <string>
#include <vector>

/// A module of generated functions, built with the compiler of the tests.
class GeneratedCode {
 public:
  /// Adapts the functions and builds them in `folder`. If one does not compile, the module is empty
  /// and a test failure shows the start of the compiler's output.
  GeneratedCode(const std::vector<std::string>& functions, const std::filesystem::path& folder);
  ~GeneratedCode();
  GeneratedCode(const GeneratedCode&) = delete;
  GeneratedCode& operator=(const GeneratedCode&) = delete;

  bool isBuilt() const { return module_ != nullptr; }

  /// Makes the functions use this host, with `play` in place of the control suite's Play.
  void prepare(SPBasicSuite* host, decltype(PSActionControlProcs::Play) play);

  /// Runs one function, counted from 0, and returns its error.
  int run(std::size_t function);

  /// Releases the suites.
  void finish();

 private:
  void* symbol(const char* name);

  void* module_ = nullptr;
};

/// The function with each reference to a nested container spelled as in its declaration, and with
/// the declarations moved to the top of the routine, as the text asks.
std::string adapted(const std::string& function);
