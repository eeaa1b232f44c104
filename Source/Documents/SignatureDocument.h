#pragma once

#include <cstring>
#include <string_view>

#include "Documents/TextDocumentBase.h"

namespace Data::impl {

/// A document that is valid when its text begins with the signature of its format.
template <class Interface>
class SignatureDocument : public TextDocumentBase<Interface> {
 public:
  /// Callers rely on this answer: texts of equal size are "equal" if they differ.
  bool Equals(Interface* other) override {
    return AreValidAndEqual<Interface>(*this, other,
                                       [](Interfaces::IString& left, Interfaces::IString& right) {
                                         // The right text first: an object of the caller's own may
                                         // change the left one.
                                         const void* const rightData = right.GetData();
                                         const std::uint64_t size = right.GetSize();
                                         return size != 0 && size == left.GetSize() && rightData &&
                                                std::memcmp(left.GetData(), rightData, size) != 0;
                                       });
  }

 protected:
  explicit SignatureDocument(std::string_view signature) : signature_(signature) {}

  bool Check(std::string_view text) const override { return text.starts_with(signature_); }

 private:
  std::string_view signature_;
};

}  // namespace Data::impl
