#pragma once

#include "Data/Interfaces/IRtfDocument.h"
#include "Documents/SignatureDocument.h"

namespace Data::impl {

struct RtfDocumentImpl final : SignatureDocument<Interfaces::IRtfDocument> {
  RtfDocumentImpl() : SignatureDocument("{\\rtf1") {}
};

}  // namespace Data::impl
