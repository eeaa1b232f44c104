#pragma once

#include "Data/Interfaces/IHtmlDocument.h"
#include "Documents/SignatureDocument.h"

namespace Data::impl {

struct HtmlDocumentImpl final : SignatureDocument<Interfaces::IHtmlDocument> {
  HtmlDocumentImpl() : SignatureDocument("<!DOCTYPE html>") {}
};

}  // namespace Data::impl
