// Writes action files, for tests: the reverse of actionfiles/ActionFileReader.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteSource.h"

namespace testing_support {

struct RecordedAction {
  actionfiles::ActionHead head = {};
  std::vector<actionfiles::Step> steps = {};
};

/// The whole content of a file.
struct RecordedSet {
  actionfiles::SetHead head = {};
  std::vector<RecordedAction> actions = {};
};

/// The bytes of a file. The numbers of actions and steps are those of the vectors. REQUIRES: the
/// names of commands have characters of Mac Roman only.
std::string written(const RecordedSet& set);

/// Reads a whole file. Throws ActionFileError.
RecordedSet readAll(actionfiles::ByteSource& source);
RecordedSet readAll(std::string_view bytes);

/// Text with a terminator, from UTF-16; what UTF-8 cannot encode is kept.
actionfiles::Text textOf(std::u16string_view units);

actionfiles::Id stringId(std::string_view string);
actionfiles::Id codeId(const char (&code)[5]);
actionfiles::ClassName className(actionfiles::Id id);

template <class T>
actionfiles::Value valueOf(std::uint32_t type, T content) {
  return {type, std::move(content)};
}

template <class T>
actionfiles::Boxed<T> inBox(T content) {
  actionfiles::Boxed<T> box;
  *box = std::move(content);
  return box;
}

/// A value of an alternative that lies in a box.
template <class T>
actionfiles::Value boxed(std::uint32_t type, T content) {
  return {type, inBox(std::move(content))};
}

/// A set "Set" of one action "Action" with these steps.
RecordedSet setOf(std::vector<actionfiles::Step> steps);

/// A step with a descriptor of these items, enabled.
actionfiles::Step stepOf(actionfiles::Id event, std::string name,
                         std::vector<actionfiles::Item> items);

/// A step of which only the descriptor's one item, under the key 'Key ', matters.
actionfiles::Step stepWith(actionfiles::Value value);

/// The bytes of a path item, and those of an alias record of version 2 that says the file's name.
std::string pathBytes(std::string_view ascii);
std::string aliasRecord(std::string_view macRomanName);

/// The values of every item type, in the order of ActionFile.h; they hold every form of a
/// reference, IDs of both kinds, texts that UTF-8 cannot encode, and empty ones.
std::vector<actionfiles::Value> everyType();

}  // namespace testing_support
