#pragma once

#include <cstring>
#include <string_view>

#include "Core/VariantConversions.h"
#include "Documents/TextDocumentBase.h"

namespace Data::impl {

/// A document that is valid when its text begins with the signature of its format.
template <class Interface>
class SignatureDocument : public TextDocumentBase<Interface> {
 public:
  /// Callers rely on the answer as it is: texts of one size are "equal" when
  /// they differ.
  bool Equals(Interface* other) override {
    return AreValidAndEqual<Interface>(
        *this, other, [](Interfaces::IString& left, Interfaces::IString& right) {
          const std::uint64_t size = left.GetSize();
          return size != 0 && size == right.GetSize() &&
                 std::memcmp(left.GetData(), right.GetData(), size) != 0;
        });
  }

 protected:
  explicit SignatureDocument(std::string_view signature) : signature_(signature) {}

  bool Check(Interfaces::IString& content) const override {
    return Core::Utf8View(content).starts_with(signature_);
  }

 private:
  std::string_view signature_;
};

}  // namespace Data::impl
