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

/// A content in UTF-8, for a parser. The content may hold its text in another form at the moment,
/// or be an object of the caller's: then this is a copy. The content does not change.
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
