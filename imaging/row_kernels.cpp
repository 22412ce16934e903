#include "imaging/row_kernels.h"

namespace kestrelon {

const RowKernels& row_kernels() {
  // Asking the processor can trap to a supervisor and take microseconds.
  static const RowKernels& chosen = [&]() -> const RowKernels& {
    if (const RowKernels* kernels = avx2_row_kernels()) return *kernels;
    if (const RowKernels* kernels = sse2_row_kernels()) return *kernels;
    return plain_row_kernels();
  }();
  return chosen;
}

}  // namespace kestrelon
