#include <optional>
#include <stdexcept>

#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Text/ArrayBytes.h"
#include "Text/HashingImpl.h"

using namespace Data::Interfaces;
using namespace Data::impl;
using Data::Hashing::impl::HashingImpl;
using Data::Platform::HashAlgorithm;

namespace {

std::optional<HashAlgorithm> FindSha2(std::uint32_t variant) {
  switch (variant) {
    case 0:
      return HashAlgorithm::Sha256;
    case 1:
      return HashAlgorithm::Sha384;
    case 2:
      return HashAlgorithm::Sha512;
    default:
      return {};
  }
}

template <class... Key>
void CreateHashing(IHashing** out, HashAlgorithm algorithm, Key... key) {
  HandOut<IHashing>(Core::MakePtr<HashingImpl>(algorithm, key...), out);
}

}  // namespace

bool Data_CreateHashingInstanceMD5(IHashing** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    CreateHashing(out, HashAlgorithm::Md5);
  });
}

bool Data_CreateHashingInstanceSha1(IHashing** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    CreateHashing(out, HashAlgorithm::Sha1);
  });
}

bool Data_CreateHashingInstanceSha2(std::uint32_t variant, IHashing** out,
                                    Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    // Callers rely on an unknown variant being no failure here.
    if (const auto algorithm = FindSha2(variant)) CreateHashing(out, *algorithm);
  });
}

bool Data_CreateHashingInstanceHmacSha2(std::uint32_t variant, IArray* key, IHashing** out,
                                        Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const auto algorithm = FindSha2(variant);
    if (!algorithm) throw std::runtime_error("Hashing method is not supported!");
    if (key)
      CreateHashing(out, *algorithm, ArrayBytes(*Core::CheckInterface(key)));
    else
      CreateHashing(out, *algorithm);
  });
}
