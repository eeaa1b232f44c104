#pragma once

#include <cstdint>
#include <new>
#include <string_view>
#include <utility>

#include "Core/ObjectBase.h"
#include "Core/Ptr.h"
#include "Documents/DocumentText.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// Evaluates a condition on documents. A failure counts as false, except a lack of memory, which is
/// thrown.
/// @throws std::bad_alloc
template <class Condition>
bool IsTrue(Condition&& condition) {
  try {
    return condition();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    return false;
  }
}

/// The base of all documents: a text, and whether it is well-formed.
template <class Interface>
class TextDocumentBase : public Core::ObjectBase<Interface> {
 public:
  void SetContent(const char* text, std::uint64_t length) override {
    if (length != 0) Core::CheckArgument(text);
    const std::string_view bytes(text, static_cast<std::size_t>(length));
    // Checked before it is stored: if memory runs out, the document is unchanged.
    Core::Ptr<Interfaces::IString> content = MultiByteStringImpl::FromUtf8(bytes);
    isValid_ = IsTrue([&] { return Check(Core::Utf8View(*content)); });
    content_ = std::move(content);
  }
  Interfaces::IString* GetContent() override { return content_ ? content_.Checked() : nullptr; }
  bool IsValid() override { return isValid_; }

 protected:
  TextDocumentBase() = default;
  /// A document created by the library, whose content needs no check.
  explicit TextDocumentBase(Core::Ptr<Interfaces::IString> validContent)
      : content_(std::move(validContent)), isValid_(true) {}

  /// Whether a text is well-formed. Any exception but std::bad_alloc means that it is not.
  /// @param text  followed by a zero byte
  virtual bool Check(std::string_view text) const = 0;

  /// @throws std::runtime_error "Null pointer exception! ..." without content
  Interfaces::IString& Content() const { return *content_.Checked(); }

 private:
  Core::Ptr<Interfaces::IString> content_;
  bool isValid_ = false;
};

/// Whether two documents are valid and `areEqual` holds for their contents.
/// @throws std::bad_alloc
template <class Interface, class AreEqual>
bool AreValidAndEqual(Interface& left, Interface* right, AreEqual&& areEqual) {
  return IsTrue([&] {
    // The caller's own document may release either of them while it is being called.
    const Core::Ptr<Interface> heldLeft(&left), heldRight(Core::CheckInterface(right));
    return left.IsValid() && right->IsValid() && areEqual(*ContentOf(left), *ContentOf(*right));
  });
}

}  // namespace Data::impl
