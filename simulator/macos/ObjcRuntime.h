// Classes, selectors and methods of the simulated message-passing runtime.
#pragma once

#include <objc/objc.h>

#include <string>
#include <vector>

/// A class: holds the methods of its instances; the methods of the class itself are in its `isa`.
struct objc_class {
  objc_class* isa;
  const char* name;
  struct Method {
    SEL selector;
    void (*implementation)();
  };
  std::vector<Method> methods;
  bool freed = false;  ///< whether its objects have been freed
};

namespace simulator {

/// The selector called `name`, always the same one. [any-thread]
SEL selectorOf(const std::string& name);

/// Adds a method to a class. `function` takes the receiver, the selector and the arguments, in the
/// platform's calling convention. [main-thread]
template <class Result, class... Arguments>
void addMethod(objc_class& target, const char* name, Result (*function)(Arguments...)) {
  target.methods.push_back({selectorOf(name), reinterpret_cast<void (*)()>(function)});
}

/// Makes `objc_getClass` find `made`, which must outlive every use. [main-thread]
void registerClass(objc_class& made);

/// Frees an object: from now on each message to it is a misuse and returns 0. Its storage must
/// outlive every use, so that such a message is recognised. [main-thread]
void freeObject(objc_object& object);

}  // namespace simulator
