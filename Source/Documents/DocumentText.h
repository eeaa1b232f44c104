#pragma once

#include <string_view>

#include "Core/ExactCast.h"
#include "Core/Ptr.h"
#include "Core/VariantConversions.h"
#include "Data/Interfaces/IString.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// The content of any document.
/// @throws std::runtime_error "Null pointer exception! Interface is not
///         accessible: struct Data::Interfaces::IString" without content
template <class Interface>
Core::Ptr<Interfaces::IString> ContentOf(Interface& document) {
  Core::Ptr<Interfaces::IString> content(document.GetContent());
  if (!content) Core::ThrowNullInterface<Interfaces::IString>();
  return content;
}

/// A document's content in UTF-8, for a parser. If the content currently holds its text in another
/// form, or is the caller's own object, this is a copy. The content itself does not change.
class DocumentText {
 public:
  explicit DocumentText(Interfaces::IString& content) : text_(Utf8Of(content)) {}

  /// The text up to its first zero byte; that byte follows the view.
  std::string_view View() const { return text_->GetUtf8(); }

 private:
  static Core::Ptr<MultiByteStringImpl> Utf8Of(Interfaces::IString& content) {
    auto* const own = Core::ExactCast<MultiByteStringImpl>(&content);
    return own ? own->AsUtf8() : MultiByteStringImpl::FromUtf8(Core::Utf8View(content));
  }

  Core::Ptr<MultiByteStringImpl> text_;
};

}  // namespace Data::impl
