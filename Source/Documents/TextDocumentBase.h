#pragma once

#include <cstdint>
#include <utility>

#include "Core/ObjectBase.h"
#include "Core/Ptr.h"
#include "Documents/DocumentText.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// What all documents share: a text, and whether it is well-formed.
template <class Interface>
class TextDocumentBase : public Core::ObjectBase<Interface> {
 public:
  void SetContent(const char* text, std::uint64_t length) override {
    if (length != 0) Core::CheckArgument(text);
    content_ = MultiByteStringImpl::FromUtf8({text, static_cast<std::size_t>(length)});
    isValid_ = IsWellFormed();
  }
  Interfaces::IString* GetContent() override { return content_ ? content_.Checked() : nullptr; }
  bool IsValid() override { return isValid_; }

 protected:
  TextDocumentBase() = default;
  /// A document made by the library, whose content needs no check.
  explicit TextDocumentBase(Core::Ptr<Interfaces::IString> validContent)
      : content_(std::move(validContent)), isValid_(true) {}

  /// The check of this kind of document; what it throws counts as false.
  virtual bool Check(Interfaces::IString& content) const = 0;

  /// @throws std::runtime_error "Null pointer exception! ..." without content
  Interfaces::IString& Content() const { return *content_.Checked(); }

 private:
  bool IsWellFormed() const noexcept {
    try {
      return Check(Content());
    } catch (...) {
      return false;
    }
  }

  Core::Ptr<Interfaces::IString> content_;
  bool isValid_ = false;
};

/// Whether two documents are valid and `areEqual` says so; what it throws counts as false.
template <class Interface, class AreEqual>
bool AreValidAndEqual(Interface& left, Interface* right, AreEqual&& areEqual) noexcept {
  try {
    return left.IsValid() && Core::CheckInterface(right)->IsValid() &&
           areEqual(ContentOf(left), ContentOf(*right));
  } catch (...) {
    return false;
  }
}

}  // namespace Data::impl
