#include "simulator/host/model/Values.h"

#include <algorithm>
#include <utility>

#include "simulator/base/Text.h"

namespace simulator {

namespace {

// Nested containers that the outermost destructor still has to free. Freeing them recursively could
// overflow the stack, since nesting depth is not limited.
thread_local std::vector<NestedContainer>* waiting = nullptr;

NestedContainer takeNested(Item& item) {
  if (auto* object = std::get_if<Object>(&item.value)) return std::move(object->content);
  if (auto* list = std::get_if<List>(&item.value)) return std::move(list->content);
  return nullptr;
}

void letGo(std::vector<Entry>& entries, std::vector<NestedContainer>& destination) {
  for (Entry& entry : entries) {
    if (NestedContainer content = takeNested(entry.item)) destination.push_back(std::move(content));
  }
}

void drain(std::vector<NestedContainer>& containers) {
  waiting = &containers;
  while (!containers.empty()) {
    const NestedContainer last = std::move(containers.back());
    containers.pop_back();
  }
  waiting = nullptr;
}

using Pair = std::pair<const Container*, const Container*>;

bool sameLeaf(const Value& left, const Value& right) {
  return std::visit(
      [&](const auto& value) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, Object>) {
          return value.type == std::get<Object>(right).type;
        } else if constexpr (std::is_same_v<T, List>) {
          return true;
        } else {
          return value == std::get<T>(right);
        }
      },
      left);
}

bool sameEntry(const Entry& left, const Entry& right, std::vector<Pair>& open) {
  if (left.key != right.key || left.item.type != right.item.type) return false;
  if (left.item.value.index() != right.item.value.index()) return false;
  if (!sameLeaf(left.item.value, right.item.value)) return false;
  if (const NestedContainer* inner = nested(left.item)) {
    open.emplace_back(inner->get(), nested(right.item)->get());
  }
  return true;
}

}  // namespace

Container::~Container() {
  std::vector<NestedContainer> own;
  letGo(entries, waiting ? *waiting : own);
  if (!own.empty()) drain(own);
}

// Checks the last position found and the next one first: callers that walk a descriptor look up
// keys in order, often several times each.
std::size_t Container::placeOf(DescriptorKeyID key) const {
  for (std::size_t place = lastFound_; place < std::min(lastFound_ + 2, entries.size()); ++place) {
    if (entries[place].key == key) return lastFound_ = place;
  }
  for (; indexed_ < entries.size(); ++indexed_) places_.emplace(entries[indexed_].key, indexed_);
  const auto found = places_.find(key);
  return found == places_.end() ? entries.size() : lastFound_ = found->second;
}

const Item* Container::find(DescriptorKeyID key) const {
  const std::size_t place = placeOf(key);
  return place == entries.size() ? nullptr : &entries[place].item;
}

void Container::put(DescriptorKeyID key, Item item) {
  const std::size_t place = placeOf(key);
  if (place == entries.size()) {
    entries.push_back({key, std::move(item)});
  } else {
    entries[place].item = std::move(item);
  }
}

bool Container::erase(DescriptorKeyID key) {
  const std::size_t place = placeOf(key);
  if (place == entries.size()) return false;
  entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
  places_.clear();
  indexed_ = 0;
  return true;
}

void Container::clear() {
  entries.clear();
  places_.clear();
  indexed_ = 0;
}

bool ExactUnits::operator==(const ExactUnits& other) const {
  if (units_ == nullptr || other.units_ == nullptr) return units_ == other.units_;
  return *units_ == *other.units_;
}

void SharedReference::append(Form form) {
  if (forms_.use_count() > 1) {
    *this = SharedReference(Reference(forms().begin(), forms().end()));
  }
  forms_->push_back(std::move(form));
}

SharedReference SharedReference::rest() const {
  SharedReference rest = *this;
  ++rest.first_;
  return rest;
}

Text textFrom(std::u16string_view units) {
  Text text{utf8From(units)};
  if (utf16From(text.utf8) != units) {
    text.exact = ExactUnits(std::make_shared<const std::u16string>(units));
  }
  return text;
}

std::u16string unitsOf(std::string_view utf8, const ExactUnits& exact) {
  return exact.get() != nullptr ? *exact.get() : utf16From(utf8);
}

const NestedContainer* nested(const Item& item) {
  if (const auto* object = std::get_if<Object>(&item.value)) return &object->content;
  if (const auto* list = std::get_if<List>(&item.value)) return &list->content;
  return nullptr;
}

bool equal(const Container& left, const Container& right) {
  std::vector<Pair> open = {{&left, &right}};
  while (!open.empty()) {
    const auto [a, b] = open.back();
    open.pop_back();
    if (a == b) continue;
    const bool same =
        std::equal(a->entries.begin(), a->entries.end(), b->entries.begin(), b->entries.end(),
                   [&](const Entry& x, const Entry& y) { return sameEntry(x, y, open); });
    if (!same) return false;
  }
  return true;
}

}  // namespace simulator
