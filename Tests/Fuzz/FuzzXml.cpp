// A document equals itself exactly if it is valid, and no depth of nesting causes a crash.

#include <cstdlib>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IXmlDocument.h"

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Core::Ptr<Data::Interfaces::IXmlDocument> document;
  Data_CreateXmlDocument(document.Receive());
  document->SetContent(data, size);
  if (document->Equals(document.Get()) != document->IsValid()) std::abort();
  return 0;
}
