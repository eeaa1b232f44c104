#pragma once

#include <vector>

#include "Core/ObjectBase.h"
#include "Data/Interfaces/IArray.h"

namespace Data::impl {

struct ArrayImpl final : Core::ObjectBase<Interfaces::IArray> {
  void SetData(const void* source, std::uint64_t stride, std::uint64_t count) override;
  void Resize(std::uint64_t stride, std::uint64_t count) override;
  void* GetPointer(std::uint64_t offset, std::uint64_t size, Core::IErrorCode** error) override;
  void* GetData() override { return bytes_.data(); }
  const void* GetData() const override { return bytes_.data(); }
  std::uint64_t GetStride() override { return stride_; }
  std::uint64_t GetCount() override { return count_; }
  std::uint64_t GetSize() override { return stride_ * count_; }
  std::uint64_t Write(std::uint64_t offset, const void* source, std::uint64_t length) override;
  std::uint64_t Append(const void* source, std::uint64_t length) override;

 private:
  std::uint64_t stride_ = 0;
  std::uint64_t count_ = 0;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace Data::impl
