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

}  // namespace

bool Data_CreateHashingInstanceMD5(IHashing** out, Core::IErrorCode** error) {
  return CreateGuarded<HashingImpl>(out, error, HashAlgorithm::Md5);
}

bool Data_CreateHashingInstanceSha1(IHashing** out, Core::IErrorCode** error) {
  return CreateGuarded<HashingImpl>(out, error, HashAlgorithm::Sha1);
}

bool Data_CreateHashingInstanceSha2(std::uint32_t variant, IHashing** out,
                                    Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    // Callers rely on an unknown variant being no failure here.
    if (const auto algorithm = FindSha2(variant))
      *out = Core::MakePtr<HashingImpl>(*algorithm).Detach();
  });
}

bool Data_CreateHashingInstanceHmacSha2(std::uint32_t variant, IArray* key, IHashing** out,
                                        Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const auto algorithm = FindSha2(variant);
    if (!algorithm) throw std::runtime_error("Hashing method is not supported!");
    auto hashing =
        key ? Core::MakePtr<HashingImpl>(*algorithm, ArrayBytes(*Core::CheckInterface(key)))
            : Core::MakePtr<HashingImpl>(*algorithm);
    *out = hashing.Detach();
  });
}
