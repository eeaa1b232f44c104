#pragma once

namespace Data::Platform {

/// The number of processors that the process may use; at least 1.
unsigned CountProcessors() noexcept;

}  // namespace Data::Platform
