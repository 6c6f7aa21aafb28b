// Walks a descriptor or a list and everything that is nested in it.
//
// Nested containers are kept in a vector of levels instead of on the call stack, which deep nesting
// would exhaust.
#pragma once

#include <utility>
#include <variant>
#include <vector>

#include "codegen/ContainerKinds.h"
#include "codegen/ItemWalker.h"

/// `Items<Kind>` is what ItemWalker asks for. Its output has `enter` and `leave`, called before a
/// nested container is begun and after it ended. [main-thread]
template <template <class> class Items>
class ContainerWalk {
 public:
  using Output = typename Items<DescriptorKind>::Output;

  explicit ContainerWalk(Output& out) : out_(out) {}

  /// False, with nothing written, if `root` is null or the host does not report its item count.
  template <class Kind>
  bool run(typename Kind::Container root) {
    if (!enter<Kind>(root)) return false;
    while (!levels_.empty()) {
      std::visit([this](auto& level) { this->step(level); }, levels_.back());
    }
    return true;
  }

 private:
  using Level = std::variant<ItemWalker<Items<DescriptorKind>>, ItemWalker<Items<ListKind>>>;

  /// Starts a new level; false, with none started, if the container cannot be walked.
  template <class Kind>
  bool enter(typename Kind::Container container) {
    ItemWalker<Items<Kind>> items(container, out_);
    if (!items.begin()) return false;
    levels_.emplace_back(std::move(items));
    return true;
  }

  /// Writes the next item, or ends the level after the last one. May destroy `items`.
  template <class Walker>
  void step(Walker& items) {
    if (items.atEnd()) return leave();
    const NestedContainer nested = items.next();
    if (const auto* descriptor = std::get_if<PIActionDescriptor>(&nested)) {
      enterNested<DescriptorKind>(*descriptor);
    } else if (const auto* list = std::get_if<PIActionList>(&nested)) {
      enterNested<ListKind>(*list);
    }
  }

  template <class Kind>
  void enterNested(typename Kind::Container container) {
    out_.enter();
    if (!enter<Kind>(container)) finishParentsItem(false);
  }

  void leave() {
    levels_.pop_back();
    if (!levels_.empty()) finishParentsItem(true);
  }

  void finishParentsItem(bool isWritten) {
    out_.leave();
    std::visit([=](auto& level) { level.finishNested(isWritten); }, levels_.back());
  }

  Output& out_;
  std::vector<Level> levels_;
};
