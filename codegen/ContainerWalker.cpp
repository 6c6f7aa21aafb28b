// Nested containers are kept in a vector of levels instead of on the call stack, which deep nesting
// would exhaust.
#include "codegen/ContainerWalker.h"

#include <HostTerms.h>

#include <variant>
#include <vector>

#include "codegen/ContainerKinds.h"
#include "codegen/DumpState.h"
#include "codegen/ItemWriter.h"
#include "codegen/SourceWriter.h"

namespace {

using Level = std::variant<ItemWriter<DescriptorKind>, ItemWriter<ListKind>>;

class Walk {
 public:
  explicit Walk(SourceWriter& out) : out_(out) {}

  template <class Kind>
  void run(typename Kind::Container root) {
    enter(ItemWriter<Kind>(root, out_));
    while (!levels_.empty()) {
      std::visit([this](auto& level) { this->step(level); }, levels_.back());
    }
  }

 private:
  /// Starts a new level; false, with none started, if the container cannot be walked.
  template <class Kind>
  bool enter(ItemWriter<Kind> items) {
    if (!items.begin()) return false;
    levels_.emplace_back(std::move(items));
    return true;
  }

  /// Writes the next item, or ends the level after the last one. May destroy `items`.
  template <class Kind>
  void step(ItemWriter<Kind>& items) {
    if (items.atEnd()) return leave();
    const NestedContainer nested = items.writeNext();
    if (const auto* descriptor = std::get_if<PIActionDescriptor>(&nested)) {
      enterNested<DescriptorKind>(*descriptor);
    } else if (const auto* list = std::get_if<PIActionList>(&nested)) {
      enterNested<ListKind>(*list);
    }
  }

  template <class Kind>
  void enterNested(typename Kind::Container container) {
    ++tabLevel;
    if (!enter(ItemWriter<Kind>(container, out_))) finishParentsItem();
  }

  void leave() {
    levels_.pop_back();
    if (!levels_.empty()) finishParentsItem();
  }

  void finishParentsItem() {
    --tabLevel;
    std::visit([](auto& level) { level.finishNested(); }, levels_.back());
  }

  SourceWriter& out_;
  std::vector<Level> levels_;
};

}  // namespace

void writeDescriptor(PIActionDescriptor descriptor, SourceWriter& out) {
  Walk(out).run<DescriptorKind>(descriptor);
}

void writeList(PIActionList list, SourceWriter& out) { Walk(out).run<ListKind>(list); }
