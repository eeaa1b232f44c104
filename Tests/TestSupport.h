#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Core/IErrorCode.h"
#include "Core/Ptr.h"

namespace Data::tests {

/// The message of an error object, "" without one.
inline std::string MessageOf(const Core::Ptr<Core::IErrorCode>& error) {
  return error ? error->GetMessage() : "";
}

/// The text of what an unguarded operation throws, "" if it does not.
template <class Operation>
std::string ThrownBy(Operation&& operation) {
  try {
    operation();
    return "";
  } catch (const std::exception& exception) {
    return exception.what();
  }
}

}  // namespace Data::tests
