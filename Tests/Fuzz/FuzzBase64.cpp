// Bytes survive a round trip in both alphabets, and any text can be decoded.

#include <cstdlib>
#include <cstring>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IEncoding.h"

using Core::Ptr;
using namespace Data::Interfaces;

namespace {

void RoundTrip(IEncoding& encoding, IArray* bytes) {
  Ptr<IArray> text, back, decoded;
  Ptr<Core::IErrorCode> error;
  if (!encoding.Encode(bytes, text.Receive(), error.Receive()) ||
      !encoding.Decode(text.Get(), back.Receive(), error.Receive()) ||
      back->GetCount() != bytes->GetCount() ||
      (bytes->GetCount() && std::memcmp(back->GetData(), bytes->GetData(), bytes->GetCount()) != 0))
    std::abort();
  if (!encoding.Decode(bytes, decoded.Receive(), error.Receive())) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Ptr<IArray> bytes;
  Ptr<IEncoding> standard, url;
  Data_CreateArray(bytes.Receive());
  bytes->SetData(data, 1, size);
  Data_CreateEncodingInstanceBase64(standard.Receive(), nullptr);
  Data_CreateEncodingInstanceBase64Url(url.Receive(), nullptr);
  RoundTrip(*standard, bytes.Get());
  RoundTrip(*url, bytes.Get());
  return 0;
}
