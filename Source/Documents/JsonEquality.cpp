#include "Documents/JsonEquality.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace Data::impl {

namespace {

using Member = JsonValue::Member;

std::string_view NameOf(const Member& member) {
  return {member.name.GetString(), member.name.GetStringLength()};
}

/// Orders by length first, which is cheaper than comparing bytes: most names differ in length.
bool IsNameLess(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return left.size() < right.size();
  return std::memcmp(left.data(), right.data(), left.size()) < 0;
}

/// Finds the first member of an object with a given name.
class MemberIndex {
 public:
  explicit MemberIndex(const JsonValue& object)
      : begin_(&*object.MemberBegin()), end_(begin_ + object.MemberCount()) {
    if (object.MemberCount() <= kFewMembers) return;
    for (const Member* member = begin_; member != end_; ++member) sorted_.push_back(member);
    std::sort(sorted_.begin(), sorted_.end(), [](const Member* left, const Member* right) {
      const std::string_view leftName = NameOf(*left), rightName = NameOf(*right);
      return leftName == rightName ? left < right : IsNameLess(leftName, rightName);
    });
  }

  const Member* Find(std::string_view name) const {
    if (sorted_.empty()) {
      const auto* found =
          std::find_if(begin_, end_, [&](const Member& m) { return NameOf(m) == name; });
      return found == end_ ? nullptr : found;
    }
    const auto found = std::lower_bound(sorted_.begin(), sorted_.end(), name,
                                        [](const Member* member, std::string_view wanted) {
                                          return IsNameLess(NameOf(*member), wanted);
                                        });
    return found != sorted_.end() && NameOf(**found) == name ? *found : nullptr;
  }

 private:
  /// Objects of up to this size are searched linearly.
  static constexpr std::size_t kFewMembers = 12;

  const Member* begin_;
  const Member* end_;
  std::vector<const Member*> sorted_;
};

/// Compares pair by pair. Nested pairs wait in a list instead of on the stack.
class Comparison {
 public:
  bool AreEqual(const JsonValue& left, const JsonValue& right) {
    if (!Add(left, right)) return false;
    while (!pending_.empty()) {
      const auto [nextLeft, nextRight] = pending_.back();
      pending_.pop_back();
      if (!(nextLeft->IsObject() ? AddMembers(*nextLeft, *nextRight)
                                 : AddElements(*nextLeft, *nextRight)))
        return false;
    }
    return true;
  }

 private:
  /// Compares two scalars, or puts two containers on the list.
  /// @return false if the two are known to differ
  bool Add(const JsonValue& left, const JsonValue& right) {
    if (left.GetType() != right.GetType()) return false;
    if (!left.IsObject() && !left.IsArray()) return left == right;
    if (SizeOf(left) != SizeOf(right)) return false;
    if (SizeOf(left) != 0) pending_.emplace_back(&left, &right);
    return true;
  }

  static std::size_t SizeOf(const JsonValue& container) {
    return container.IsObject() ? container.MemberCount() : container.Size();
  }

  bool AddElements(const JsonValue& left, const JsonValue& right) {
    for (std::size_t i = 0; i < left.Size(); ++i)
      if (!Add(left[i], right[i])) return false;
    return true;
  }

  bool AddMembers(const JsonValue& left, const JsonValue& right) {
    const MemberIndex rightMembers(right);
    return std::all_of(left.MemberBegin(), left.MemberEnd(), [&](const Member& member) {
      const Member* const other = rightMembers.Find(NameOf(member));
      return other && Add(member.value, other->value);
    });
  }

  std::vector<std::pair<const JsonValue*, const JsonValue*>> pending_;
};

}  // namespace

bool AreEqual(const JsonValue& left, const JsonValue& right) {
  return Comparison().AreEqual(left, right);
}

}  // namespace Data::impl
