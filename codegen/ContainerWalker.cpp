// What lies within one another is kept on a heap of levels instead of the stack, so that no depth
// of nesting can exhaust it.
#include "codegen/ContainerWalker.h"

#include <HostTerms.h>

#include <variant>
#include <vector>

#include "codegen/ContainerKinds.h"
#include "codegen/ItemWriter.h"

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
  /// Starts on a container; one that does not tell its count is left at once.
  template <class Kind>
  bool enter(ItemWriter<Kind> items) {
    if (!items.begin()) return false;
    levels_.emplace_back(std::move(items));
    return true;
  }

  /// Writes the next item, or leaves the container at its end. `items` may be gone afterwards.
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
