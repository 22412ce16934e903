# The AVX2 loops are compiled for AVX2 and run only where the processor has it. Products and sums are
# joined where the code says so, nowhere else: other sets must give the same bytes.
set(avx2_options -mavx2 -mfma -ffp-contract=off)
if(WIN32)
  # The 64-bit ABI of mingw aligns the stack to 16 bytes only; spilled 32-byte registers must not be
  # moved by instructions that demand more.
  list(APPEND avx2_options -Wa,-muse-unaligned-vector-move)
endif()
set_source_files_properties(${CMAKE_SOURCE_DIR}/imaging/row_kernels_avx2.cpp
  PROPERTIES COMPILE_OPTIONS "${avx2_options}")
